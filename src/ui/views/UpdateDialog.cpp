#include "ui/views/UpdateDialog.h"

#include "services/UpdaterManager.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/QtText.h"
#include "ui/views/SmallWindow.h"
#include "ui/views/settings/SettingsStyle.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace tovrin {
namespace {

using Phase = UpdateStatus::Phase;

constexpr int contentWidth = 420;
constexpr int notesHeight = 220;

QLabel* textLine(const QFont& font, const Color& color, QWidget* parent) {
    QLabel* label = SmallWindow::textLine({}, font, color, parent, Qt::AlignLeft);
    label->setWordWrap(true);
    label->setFixedWidth(contentWidth);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QPushButton* button(const QString& text, const Color& tint, QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setFont(ForgeStyle::systemFont(13));
    button->setStyleSheet(SmallWindow::borderedButtonStyle(tint));
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

} // namespace

UpdateDialog::UpdateDialog(UpdaterManager& updater, QWidget* parent)
    : QWidget(parent, Qt::Window), m_updater(updater) {
    setWindowTitle(QStringLiteral("Tovrin Update"));
    setObjectName(QStringLiteral("update"));
    setAttribute(Qt::WA_DeleteOnClose);

    SmallWindow::useForgePalette(*this);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(28, 24, 28, 22);
    column->setSpacing(12);
    column->setSizeConstraint(QLayout::SetFixedSize);

    m_headline = textLine(ForgeStyle::engraved(17, QFont::DemiBold), ForgeTheme::bronze, this);
    column->addWidget(m_headline);
    m_detail = textLine(ForgeStyle::systemFont(12), ForgeTheme::ash, this);
    column->addWidget(m_detail);

    m_notes = new QTextBrowser(this);
    m_notes->setAccessibleName(QStringLiteral("Release notes"));
    m_notes->setOpenExternalLinks(true);
    m_notes->setFixedSize(contentWidth, notesHeight);
    m_notes->setFont(ForgeStyle::systemFont(12));
    m_notes->setStyleSheet(QStringLiteral("QTextBrowser { color: %1; background: %2; border: 1px solid %3;"
                                          " border-radius: 6px; padding: 6px; }")
                               .arg(SettingsStyle::cssColor(ForgeTheme::ash),
                                    SettingsStyle::cssColor(ForgeTheme::ironBottom),
                                    SettingsStyle::cssColor(ForgeTheme::edge)));
    column->addWidget(m_notes);

    auto* buttons = new QHBoxLayout();
    buttons->setSpacing(8);
    m_skip = button(QStringLiteral("Skip This Version"), ForgeTheme::ash, this);
    m_later = button(QStringLiteral("Later"), ForgeTheme::ash, this);
    m_install = button(QStringLiteral("Install and Relaunch"), ForgeTheme::ember, this);
    m_done = button(QStringLiteral("OK"), ForgeTheme::ember, this);
    buttons->addWidget(m_skip);
    buttons->addStretch(1);
    buttons->addWidget(m_later);
    buttons->addWidget(m_install);
    buttons->addWidget(m_done);
    column->addLayout(buttons);

    connect(m_install, &QPushButton::clicked, this, [this] { m_updater.installUpdate(); });
    connect(m_skip, &QPushButton::clicked, this, [this] { m_updater.skipOfferedVersion(); });
    connect(m_later, &QPushButton::clicked, this, &QWidget::close);
    connect(m_done, &QPushButton::clicked, this, &QWidget::close);

    followUpdater();
    new ChangeRelay(
        m_updater.willChange, [this] { followUpdater(); }, this);
}

void UpdateDialog::followUpdater() {
    const UpdateStatus& status = m_updater.status();
    if (status.phase == Phase::idle) {
        if (isVisible()) close();
        return;
    }
    m_headline->setText(qText(status.headline));
    m_detail->setText(qText(status.detail));
    m_detail->setVisible(!status.detail.empty());

    const bool offer = status.phase == Phase::available || status.phase == Phase::installing;
    const bool choosing = status.phase == Phase::available;
    const std::string notes = offer && status.release ? status.release->notes : std::string();
    m_notes->setHtml(qText(notes));
    m_notes->setVisible(!notes.empty());
    m_install->setVisible(offer && status.installable);
    m_later->setVisible(offer);
    m_skip->setVisible(offer);
    for (QPushButton* choice : {m_install, m_later, m_skip})
        choice->setEnabled(choosing);
    m_done->setVisible(status.phase == Phase::upToDate || status.phase == Phase::failed);

    if (!m_install->isHidden() && m_install->isEnabled())
        m_install->setFocus();
    else if (!m_done->isHidden())
        m_done->setFocus();
    adjustSize();
}

void UpdateDialog::present() {
    SmallWindow::presentCentred(*this);
}

void UpdateDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void UpdateDialog::closeEvent(QCloseEvent* event) {
    // Closing the window puts the offer off, as Later does; a check or an install goes on.
    m_updater.dismiss();
    QWidget::closeEvent(event);
}

void UpdateDialog::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ForgeStyle::ironGradient(height()));
}

} // namespace tovrin
