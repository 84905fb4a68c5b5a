#include "ui/views/PanelButton.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/Symbols.h"

#include <QFocusEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <utility>

namespace tovrin {
namespace {

constexpr int symbolSide = 15;
constexpr int symbolGap = 7;

} // namespace

PanelButton::PanelButton(const QString& text, std::string symbol, QWidget* parent)
    : QAbstractButton(parent), m_symbol(std::move(symbol)) {
    setText(text);
    setFont(ForgeStyle::systemFont(13));
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

void PanelButton::setLabel(const QString& text, std::string symbol) {
    m_symbol = std::move(symbol);
    setText(text);
    updateGeometry();
    update();
}

QSize PanelButton::sizeHint() const {
    const QFontMetrics metrics(font());
    const QMargins m = contentsMargins();
    const int content = symbolSide + symbolGap + metrics.horizontalAdvance(text());
    return {content + m.left() + m.right(), std::max(symbolSide, metrics.height()) + m.top() + m.bottom()};
}

QSize PanelButton::minimumSizeHint() const {
    return {contentsMargins().left() + contentsMargins().right() + symbolSide, sizeHint().height()};
}

void PanelButton::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void PanelButton::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

void PanelButton::keyPressEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat()) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

void PanelButton::focusInEvent(QFocusEvent* event) {
    QAbstractButton::focusInEvent(event);
    // Only focus the user moved here lights the button; a panel that just opened lights nothing.
    m_keyboardFocus = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    update();
}

void PanelButton::focusOutEvent(QFocusEvent* event) {
    QAbstractButton::focusOutEvent(event);
    m_keyboardFocus = false;
    update();
}

void PanelButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const bool hot = underMouse() || m_keyboardFocus;
    if (hot) {
        // The same ember-to-clear wash a hovered session row gets, a little fainter.
        QLinearGradient wash(0, 0, width(), 0);
        wash.setColorAt(0, ForgeStyle::qColor(ForgeTheme::ember, isDown() ? 0.14 : 0.07));
        wash.setColorAt(1, ForgeStyle::qColor(ForgeTheme::ember, 0));
        painter.fillRect(rect(), wash);
    }

    const QRect box = contentsRect();
    const QRectF symbolBox(box.left(), box.center().y() - symbolSide / 2.0 + 0.5, symbolSide, symbolSide);
    Symbols::paint(painter, m_symbol, symbolBox,
                   ForgeStyle::qColor(hot ? ForgeTheme::ember : ForgeTheme::ash));

    const QRect textBox = box.adjusted(symbolSide + symbolGap, 0, 0, 0);
    painter.setPen(ForgeStyle::qColor(hot ? ForgeTheme::bronze : ForgeTheme::ash));
    painter.drawText(textBox, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font()).elidedText(text(), Qt::ElideRight, textBox.width()));
}

} // namespace tovrin
