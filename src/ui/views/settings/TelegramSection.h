#pragma once

#include "ui/views/settings/SettingsGroup.h"

#include <QUrl>
#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace tovrin {

class ForgeToggle;
class GlyphCaption;
class PreferencesStore;
class ProgressSpinner;
class TelegramSettingsViewModel;
class TelegramSetupHelp;

// The Telegram group of the settings window: the switch, the set-up help, the token field, the
// verify, link and test buttons in their order of use, and the status line. What is enabled and
// what the status says come from the model; the group follows it and the store.
class TelegramSection : public SettingsGroup {
public:
    using OpenUrl = std::function<void(const QUrl&)>;

    // Links open through `openUrl`, or in the user's browser when none is given.
    TelegramSection(TelegramSettingsViewModel& model, PreferencesStore& preferences,
                    QWidget* parent = nullptr, OpenUrl openUrl = {});

    ForgeToggle* enabledToggle() const { return m_enabled; }
    TelegramSetupHelp* setupHelp() const { return m_help; }
    QLineEdit* tokenField() const { return m_token; }
    QPushButton* verifyButton() const { return m_verify; }
    QPushButton* linkButton() const { return m_link; }
    QPushButton* testButton() const { return m_test; }
    QLabel* botUsernameLabel() const { return m_botUsername; }
    QLabel* chatLabel() const { return m_chat; }
    // Shown only while the model has something to say.
    QWidget* statusLine() const { return m_statusLine; }
    QWidget* spinner() const;
    QLabel* statusText() const { return m_statusText; }

private:
    void refresh();

    TelegramSettingsViewModel& m_model;
    PreferencesStore& m_preferences;
    ForgeToggle* m_enabled;
    TelegramSetupHelp* m_help;
    QLineEdit* m_token;
    QPushButton* m_verify;
    QLabel* m_botUsername;
    QPushButton* m_link;
    QLabel* m_chat;
    QPushButton* m_test;
    QWidget* m_statusLine;
    ProgressSpinner* m_spinner;
    QLabel* m_statusText;
};

} // namespace tovrin
