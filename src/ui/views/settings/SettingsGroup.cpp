#include "ui/views/settings/SettingsGroup.h"

#include "ui/theme/ForgeTheme.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>
#include <optional>

namespace tovrin {

namespace {

constexpr double headingSize = 11;
constexpr double headingTracking = 1.6;
constexpr double captionSize = 11;
constexpr int cardRadius = 8;

// The card behind the rows, with a faint line between neighbouring rows as a grouped form has.
class GroupCard : public QWidget {
public:
    explicit GroupCard(QWidget* parent) : QWidget(parent) {}

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        QPainterPath outline;
        outline.addRoundedRect(frame, cardRadius, cardRadius);
        painter.fillPath(outline, ForgeStyle::qColor(ForgeTheme::ironBottom, 0.55));
        painter.setPen(QPen(ForgeStyle::qColor(ForgeTheme::edge), 1));
        painter.drawPath(outline);

        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(QPen(ForgeStyle::qColor(ForgeTheme::edge, 0.6), 1));
        const QLayout* rows = layout();
        const QMargins margins = rows->contentsMargins();
        std::optional<QRect> above;
        for (int index = 0; index < rows->count(); ++index) {
            const QLayoutItem* item = rows->itemAt(index);
            if (item->isEmpty()) continue;
            const QRect geometry = item->geometry();
            if (above) {
                const int y = (above->bottom() + geometry.top() + 1) / 2;
                painter.drawLine(margins.left(), y, width() - margins.right(), y);
            }
            above = geometry;
        }
    }
};

} // namespace

SettingsGroup::SettingsGroup(const QString& title, QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);

    auto* heading = new QLabel(title.toUpper(), this);
    QFont font = ForgeStyle::engraved(headingSize, QFont::DemiBold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, headingTracking);
    heading->setFont(font);
    QPalette headingPalette = heading->palette();
    headingPalette.setColor(QPalette::WindowText, ForgeStyle::qColor(ForgeTheme::bronzeDim));
    heading->setPalette(headingPalette);
    heading->setContentsMargins(10, 0, 0, 0);
    column->addWidget(heading);

    auto* card = new GroupCard(this);
    m_rows = new QVBoxLayout(card);
    m_rows->setContentsMargins(12, 8, 12, 8);
    m_rows->setSpacing(12);
    column->addWidget(card);
}

void SettingsGroup::addRow(QWidget* row) {
    m_rows->addWidget(row);
}

void SettingsGroup::addRow(QLayout* row) {
    m_rows->addLayout(row);
}

QLabel* SettingsGroup::addCaption(const QString& text) {
    auto* caption = new QLabel(text);
    caption->setWordWrap(true);
    caption->setFont(ForgeStyle::systemFont(captionSize));
    QPalette palette = caption->palette();
    palette.setColor(QPalette::WindowText, ForgeStyle::qColor(ForgeTheme::ashDim));
    caption->setPalette(palette);
    m_rows->addWidget(caption);
    return caption;
}

} // namespace tovrin
