#pragma once

#include "alerts/telegram/TelegramSettingsViewModel.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace tovrin {

class PreferencesStore;

// The Telegram section of the settings window as a conversation in a terminal: the same model and
// words, with prompts where the window has buttons. `waitForAnswer` runs the caller's event loop
// until the request just started has ended (the model's phase leaves `working`).
class TelegramSetupDialogue {
public:
    TelegramSetupDialogue(TelegramSettingsViewModel& model, PreferencesStore& preferences, std::istream& in,
                          std::ostream& out, std::function<void()> waitForAnswer);

    // Verify, link, test; the process exit code.
    int run();

private:
    bool ask(const std::string& prompt, std::string& answer);
    // Waits for the request, prints the status line; whether the request succeeded.
    bool finish();
    bool noChatYet() const;
    void printSteps();

    TelegramSettingsViewModel& m_model;
    PreferencesStore& m_preferences;
    std::istream& m_in;
    std::ostream& m_out;
    std::function<void()> m_waitForAnswer;
};

} // namespace tovrin
