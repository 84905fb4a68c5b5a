#include "ui/views/SymbolButton.h"

#include "ui/theme/Symbols.h"

#include <QPainter>
#include <cmath>
#include <utility>

namespace tovrin {
namespace {

// The symbol with a little room around it for the pointer.
QSize boxFor(double symbolSide) {
    const int side = static_cast<int>(std::ceil(symbolSide)) + 6;
    return {side, side};
}

} // namespace

SymbolButton::SymbolButton(std::string symbol, double symbolSide, const QColor& color, QWidget* parent)
    : QAbstractButton(parent), m_symbol(std::move(symbol)), m_symbolSide(symbolSide), m_color(color) {
    setCursor(Qt::PointingHandCursor);
    setFixedSize(boxFor(m_symbolSide));
}

QSize SymbolButton::sizeHint() const {
    return boxFor(m_symbolSide);
}

void SymbolButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void SymbolButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

void SymbolButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = underMouse() ? m_color.lighter(isDown() ? 110 : 135) : m_color;
    const QRectF box((width() - m_symbolSide) / 2, (height() - m_symbolSide) / 2, m_symbolSide, m_symbolSide);
    Symbols::paint(painter, m_symbol, box, color);
}

} // namespace tovrin
