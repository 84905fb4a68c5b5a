#include "alerts/telegram/TelegramSetupDialogue.h"

#include "alerts/telegram/TelegramError.h"
#include "core/PreferencesStore.h"

#include <array>
#include <istream>
#include <ostream>

namespace tovrin {

using Phase = TelegramSettingsViewModel::Phase;

TelegramSetupDialogue::TelegramSetupDialogue(TelegramSettingsViewModel& model, PreferencesStore& preferences,
                                             std::istream& in, std::ostream& out,
                                             std::function<void()> waitForAnswer)
    : m_model(model), m_preferences(preferences), m_in(in), m_out(out),
      m_waitForAnswer(std::move(waitForAnswer)) {}

int TelegramSetupDialogue::run() {
    printSteps();
    std::string answer;
    if (!ask(std::string(TelegramSettingsText::toggle) + "? [Y/n] ", answer)) return 1;
    m_preferences.telegramEnabled.set(answer.empty() || answer[0] == 'y' || answer[0] == 'Y');
    if (!m_preferences.telegramEnabled()) return 0;

    const bool stored = !m_model.botToken().empty();
    if (!ask(stored ? "Bot token (Enter keeps the stored one): " : "Bot token: ", answer)) return 1;
    if (!answer.empty()) m_model.botToken.set(answer);
    if (!m_model.verifyEnabled()) return 1;
    m_model.verify();
    if (!finish()) return 1;
    if (m_model.botUsername()) m_out << *m_model.botUsername() << '\n';

    do {
        if (!ask("Message your bot once in Telegram, then press Enter to link the chat. ", answer)) return 1;
        m_model.linkChat();
    } while (!finish() && noChatYet());
    if (m_model.phase().kind == Phase::Kind::failed) return 1;
    if (m_model.linkedChatLabel()) m_out << *m_model.linkedChatLabel() << '\n';

    if (!ask("Press Enter to send a test message. ", answer)) return 1;
    m_model.sendTest();
    return finish() ? 0 : 1;
}

bool TelegramSetupDialogue::ask(const std::string& prompt, std::string& answer) {
    m_out << prompt << std::flush;
    return static_cast<bool>(std::getline(m_in, answer));
}

bool TelegramSetupDialogue::finish() {
    if (m_model.phase().kind == Phase::Kind::working) m_waitForAnswer();
    if (const auto status = m_model.statusLine())
        m_out << (noChatYet() ? "No message to your bot has arrived yet." : status->text) << '\n';
    return m_model.phase().kind != Phase::Kind::failed;
}

// The window asks to message the bot and press its button again; here the prompt comes back.
bool TelegramSetupDialogue::noChatYet() const {
    return m_model.phase() == Phase::failed(TelegramError::noChat().description());
}

void TelegramSetupDialogue::printSteps() {
    m_out << TelegramSettingsText::setupDisclosure << '\n';
    // The window's last two steps name its buttons; here the prompts take their place.
    const std::array<std::string_view, 5> steps{
        TelegramSettingsText::setupSteps[0], TelegramSettingsText::setupSteps[1],
        TelegramSettingsText::setupSteps[2], "Paste the token at the prompt below.",
        "Message your new bot once; this command then links the chat and sends a test."};
    int n = 1;
    for (const auto step : steps)
        m_out << "  " << n++ << ". " << step << '\n';
    m_out << "  " << TelegramSettingsText::botFatherLink << ": " << TelegramSettingsText::botFatherUrl
          << "\n\n";
}

} // namespace tovrin
