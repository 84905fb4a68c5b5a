#include "ui/views/settings/TelegramSection.h"

#include "alerts/telegram/TelegramSettingsViewModel.h"
#include "core/PreferencesStore.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/views/ChangeRelay.h"
#include "ui/views/settings/ProgressSpinner.h"
#include "ui/views/settings/SettingsRows.h"
#include "ui/views/settings/TelegramSetupHelp.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace tovrin {

namespace {

using SettingsRows::qText;

constexpr double bodySize = 13;
constexpr double captionSize = 11;
constexpr int spinnerSide = 11;

QColor colorOf(TelegramTone tone) {
    switch (tone) {
    case TelegramTone::ember:
        return ForgeStyle::qColor(ForgeTheme::ember);
    case TelegramTone::waitingRed:
        return ForgeStyle::qColor(ForgeTheme::waitingRed);
    case TelegramTone::ashDim:
        break;
    }
    return ForgeStyle::qColor(ForgeTheme::ashDim);
}

void setTextColor(QLabel* label, const QColor& color) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
}

QLabel* dimLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setFont(ForgeStyle::systemFont(bodySize));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    setTextColor(label, ForgeStyle::qColor(ForgeTheme::ashDim));
    return label;
}

// A button at the left of its row with what it produced to its right.
QHBoxLayout* buttonRow(QPushButton* button, QLabel* beside) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(button);
    if (beside) row->addWidget(beside);
    row->addStretch(1);
    return row;
}

void showIfPresent(QLabel* label, const std::optional<std::string>& text) {
    label->setText(text ? QString::fromStdString(*text) : QString());
    label->setVisible(text && !text->empty());
}

} // namespace

TelegramSection::TelegramSection(TelegramSettingsViewModel& model, PreferencesStore& preferences,
                                 QWidget* parent, OpenUrl openUrl)
    : SettingsGroup(QStringLiteral("Telegram"), parent), m_model(model), m_preferences(preferences) {
    if (!openUrl) openUrl = [](const QUrl& url) { QDesktopServices::openUrl(url); };

    m_enabled = SettingsRows::toggle(TelegramSettingsText::toggle,
                                     [this](bool on) { m_preferences.telegramEnabled.set(on); });
    addRow(m_enabled);

    m_help = new TelegramSetupHelp(std::move(openUrl));
    addRow(m_help);

    m_token = new QLineEdit;
    m_token->setEchoMode(QLineEdit::Password);
    m_token->setPlaceholderText(qText(TelegramSettingsText::tokenField));
    m_token->setAccessibleName(m_token->placeholderText());
    m_token->setFont(ForgeStyle::systemFont(bodySize));
    // Typing only: the field shows what the model holds without writing it back.
    connect(m_token, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_model.botToken.set(text.toStdString()); });
    addRow(m_token);

    // The model's operations answer later on the main loop; the phase tells when.
    m_verify = SettingsRows::actionButton(
        TelegramSettingsText::verifyButton, [this] { m_model.verify(); }, this);
    m_botUsername = dimLabel(this);
    addRow(buttonRow(m_verify, m_botUsername));

    m_link = SettingsRows::actionButton(
        TelegramSettingsText::linkButton, [this] { m_model.linkChat(); }, this);
    m_chat = dimLabel(this);
    addRow(buttonRow(m_link, m_chat));

    m_test = SettingsRows::actionButton(
        TelegramSettingsText::testButton, [this] { m_model.sendTest(); }, this);
    addRow(buttonRow(m_test, nullptr));

    m_statusLine = new QWidget;
    m_spinner = new ProgressSpinner(ForgeStyle::qColor(ForgeTheme::ashDim), spinnerSide, m_statusLine);
    m_statusText = new QLabel(m_statusLine);
    m_statusText->setFont(ForgeStyle::systemFont(captionSize));
    m_statusText->setWordWrap(true);
    m_statusText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* status = new QHBoxLayout(m_statusLine);
    status->setContentsMargins(0, 0, 0, 0);
    status->setSpacing(6);
    status->addWidget(m_spinner, 0, Qt::AlignVCenter);
    status->addWidget(m_statusText, 1);
    addRow(m_statusLine);

    new ChangeRelay(
        model.objectWillChange, [this] { refresh(); }, this);
    new ChangeRelay(
        preferences.objectWillChange, [this] { refresh(); }, this);
    refresh();
}

QWidget* TelegramSection::spinner() const {
    return m_spinner;
}

void TelegramSection::refresh() {
    m_enabled->setChecked(m_preferences.telegramEnabled());

    const QString token = QString::fromStdString(m_model.botToken());
    if (m_token->text() != token) m_token->setText(token);
    m_token->setEnabled(m_model.tokenFieldEnabled());

    m_verify->setEnabled(m_model.verifyEnabled());
    showIfPresent(m_botUsername, m_model.botUsername());
    m_link->setEnabled(m_model.linkChatEnabled());
    showIfPresent(m_chat, m_model.linkedChatLabel());
    m_test->setEnabled(m_model.sendTestEnabled());

    const auto line = m_model.statusLine();
    m_statusLine->setVisible(line.has_value());
    if (!line) return;
    m_spinner->setVisible(line->spinner);
    m_statusText->setText(QString::fromStdString(line->text));
    setTextColor(m_statusText, colorOf(line->tone));
}

} // namespace tovrin
