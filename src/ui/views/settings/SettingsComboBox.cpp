#include "ui/views/settings/SettingsComboBox.h"

#include "ui/theme/ForgeTheme.h"
#include "ui/theme/Symbols.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace tovrin {

namespace {

constexpr int textPadding = 10;
constexpr int chevronSide = 11;
constexpr int fieldHeight = 26;
constexpr double disabledOpacity = 0.45;

} // namespace

SettingsComboBox::SettingsComboBox(QWidget* parent) : QComboBox(parent) {
    setFont(ForgeStyle::systemFont(13));
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    setCursor(Qt::PointingHandCursor);
}

QSize SettingsComboBox::sizeHint() const {
    int widest = 0;
    const QFontMetrics metrics(font());
    for (int index = 0; index < count(); ++index)
        widest = std::max(widest, metrics.horizontalAdvance(itemText(index)));
    return QSize(widest + 3 * textPadding + chevronSide, fieldHeight);
}

QSize SettingsComboBox::minimumSizeHint() const {
    return QSize(3 * textPadding + chevronSide + 40, fieldHeight);
}

void SettingsComboBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : disabledOpacity);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath outline;
    outline.addRoundedRect(frame, 5, 5);
    painter.fillPath(outline, ForgeStyle::qColor(ForgeTheme::edge, 0.55));
    const bool focused = hasFocus();
    painter.setPen(QPen(ForgeStyle::qColor(focused ? ForgeTheme::ember : ForgeTheme::edge), 1));
    painter.drawPath(outline);

    const QRectF chevron(width() - textPadding - chevronSide, (rect().height() - chevronSide) / 2.0,
                         chevronSide, chevronSide);
    Symbols::paint(painter, "chevron.down", chevron, ForgeStyle::qColor(ForgeTheme::bronzeDim));

    painter.setPen(ForgeStyle::qColor(ForgeTheme::ash));
    painter.setFont(font());
    const QRect textBox(textPadding, 0, static_cast<int>(chevron.left()) - 2 * textPadding, rect().height());
    painter.drawText(textBox, Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(font()).elidedText(currentText(), Qt::ElideRight, textBox.width()));
}

} // namespace tovrin
