#include "ui/views/TrayIcon.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/Symbols.h"
#include "ui/viewmodels/TrayViewModel.h"
#include "ui/views/ChangeRelay.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <utility>

namespace tovrin {
namespace {

void paintBadge(QPainter& painter, const QString& count, int side) {
    const double height = side * 0.56;
    QFont font = ForgeStyle::systemFont(height * 0.78, QFont::Bold);
    // Long counts shrink rather than spill out of the icon.
    double width = 0;
    for (;;) {
        width = std::max(height, QFontMetricsF(font).horizontalAdvance(count) + height * 0.45);
        if (width <= side || font.pixelSize() <= 6) break;
        font.setPixelSize(font.pixelSize() - 1);
    }
    width = std::min<double>(width, side);
    const QRectF badge(side - width, side - height, width, height);

    QPainterPath pill;
    pill.addRoundedRect(badge, height / 2, height / 2);
    // A dark rim keeps the badge apart from the glyph beneath it on any panel colour.
    painter.setPen(QPen(QColor(20, 12, 14, 230), std::max(1.0, side / 22.0)));
    painter.setBrush(ForgeStyle::qColor(TrayIconColors::red));
    painter.drawPath(pill);

    painter.setPen(Qt::white);
    painter.setFont(font);
    painter.drawText(badge, Qt::AlignCenter, count);
}

} // namespace

TrayIcon::TrayIcon(TrayViewModel& model, Apply apply, QObject* parent)
    : QObject(parent), m_model(model), m_apply(std::move(apply)) {
    new ChangeRelay(
        model.objectWillChange, [this] { follow(TrayIconLook::of(m_model.aggregate())); }, this);
    follow(TrayIconLook::of(model.aggregate()));
}

void TrayIcon::follow(const TrayIconLook& look) {
    // The model changes on every store pass; the icon only when the roll-up does.
    if (m_applied && look == m_look) return;
    m_look = look;
    m_applied = true;
    m_apply(icon(m_look), QString::fromStdString(m_look.toolTip));
}

QIcon TrayIcon::icon(const TrayIconLook& look) {
    QIcon icon;
    for (const int side : sides)
        icon.addPixmap(pixmap(look, side));
    return icon;
}

QPixmap TrayIcon::pixmap(const TrayIconLook& look, int side) {
    QPixmap image(side, side);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QColor color = ForgeStyle::qColor(look.color);
    if (!look.count) {
        Symbols::paint(painter, look.symbol, QRectF(0, 0, side, side), color);
        return image;
    }
    // The eye is wide and low; lifted to the top edge it stays in sight above the badge.
    Symbols::paint(painter, look.symbol, QRectF(0, -side * 0.2, side, side), color);
    paintBadge(painter, QString::fromStdString(*look.count), side);
    return image;
}

} // namespace tovrin
