#include "ui/views/settings/TelegramSetupHelp.h"

#include "alerts/telegram/TelegramSettingsViewModel.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/Symbols.h"
#include "ui/views/settings/SettingsRows.h"
#include "ui/views/settings/SettingsStyle.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace tovrin {

namespace {

using SettingsRows::qText;

constexpr double bodySize = 13;
constexpr double captionSize = 11;
constexpr int chevronSide = 11;

// The disclosure's own line: its title at the left and a chevron at the right that points down
// when open. The whole line takes the click.
class DisclosureButton : public QAbstractButton {
public:
    DisclosureButton(const QString& title, QWidget* parent) : QAbstractButton(parent) {
        setText(title);
        setAccessibleName(title);
        setCheckable(true);
        setFont(ForgeStyle::systemFont(bodySize));
        setCursor(Qt::PointingHandCursor);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override {
        const QFontMetrics metrics(font());
        return {metrics.horizontalAdvance(text()) + 8 + chevronSide, metrics.height() + 6};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QColor bronze = ForgeStyle::qColor(ForgeTheme::bronze);
        painter.setPen(bronze);
        painter.setFont(font());
        painter.drawText(rect().adjusted(0, 0, -(chevronSide + 8), 0), Qt::AlignLeft | Qt::AlignVCenter,
                         text());
        const QRectF chevron(width() - chevronSide - 2, (height() - chevronSide) / 2.0, chevronSide,
                             chevronSide);
        painter.translate(chevron.center());
        if (!isChecked()) painter.rotate(-90);
        painter.translate(-chevron.center());
        Symbols::paint(painter, "chevron.down", chevron, bronze);
        if (hasFocus()) {
            painter.resetTransform();
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(ForgeStyle::qColor(ForgeTheme::ember, 0.5), 1));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
        }
    }
};

QLabel* captionLabel(const QString& text, const Color& color, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setFont(ForgeStyle::systemFont(captionSize));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, ForgeStyle::qColor(color));
    label->setPalette(palette);
    return label;
}

QWidget* stepList(QWidget* parent) {
    auto* steps = new QWidget(parent);
    auto* column = new QVBoxLayout(steps);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    int number = 0;
    for (const std::string_view step : TelegramSettingsText::setupSteps) {
        QLabel* numeral =
            captionLabel(QString::number(++number) + QLatin1Char('.'), ForgeTheme::bronzeDim, steps);
        QLabel* text = captionLabel(qText(step), ForgeTheme::ash, steps);
        text->setWordWrap(true);
        // Both lines share one font size, so aligning their tops aligns their first baselines.
        auto* row = new QHBoxLayout;
        row->setSpacing(8);
        row->addWidget(numeral, 0, Qt::AlignTop);
        row->addWidget(text, 1, Qt::AlignTop);
        column->addLayout(row);
    }
    return steps;
}

QPushButton* botFatherLink(QWidget* parent) {
    const QString label = qText(TelegramSettingsText::botFatherLink);
    auto* link = new QPushButton(label, parent);
    link->setAccessibleName(label);
    link->setFont(ForgeStyle::systemFont(captionSize));
    link->setCursor(Qt::PointingHandCursor);
    const QColor bronze = ForgeStyle::qColor(ForgeTheme::bronze);
    link->setIcon(Symbols::pixmap(TelegramSettingsText::botFatherLinkGlyph, bronze, captionSize + 1,
                                  parent->devicePixelRatioF()));
    link->setIconSize(QSize(static_cast<int>(captionSize) + 1, static_cast<int>(captionSize) + 1));
    const QString color = SettingsStyle::cssColor(ForgeTheme::bronze);
    link->setStyleSheet(QStringLiteral("QPushButton { color: %1; background: transparent; border: none;"
                                       " padding: 0; text-align: left; }"
                                       "QPushButton:hover, QPushButton:focus { text-decoration: underline; }")
                            .arg(color));
    return link;
}

} // namespace

TelegramSetupHelp::TelegramSetupHelp(OpenUrl openUrl, QWidget* parent)
    : QWidget(parent), m_disclosure(new DisclosureButton(qText(TelegramSettingsText::setupDisclosure), this)),
      m_steps(new QWidget(this)), m_link(botFatherLink(m_steps)) {
    auto* content = new QVBoxLayout(m_steps);
    content->setContentsMargins(0, 4, 0, 4);
    content->setSpacing(2);
    content->addWidget(stepList(m_steps));
    content->addWidget(m_link, 0, Qt::AlignLeft);
    m_steps->hide();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(m_disclosure);
    column->addWidget(m_steps);

    connect(m_disclosure, &QAbstractButton::toggled, m_steps, &QWidget::setVisible);
    const QUrl address(qText(TelegramSettingsText::botFatherUrl));
    connect(m_link, &QPushButton::clicked, this,
            [openUrl = std::move(openUrl), address] { openUrl(address); });
}

} // namespace tovrin
