#include "app/cli/TelegramCommand.h"

#include "alerts/telegram/TelegramError.h"
#include "alerts/telegram/TelegramSettingsViewModel.h"
#include "app/AlertServices.h"
#include "core/JsonFileDefaultsStore.h"
#include "core/UserPaths.h"
#include "platform/linux/InstallationPaths.h"
#include "platform/qt/QtMainLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <array>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>

namespace tovrin {
namespace {

using Phase = TelegramSettingsViewModel::Phase;

bool readLine(const char* prompt, std::string& line) {
    std::printf("%s", prompt);
    std::fflush(stdout);
    return static_cast<bool>(std::getline(std::cin, line));
}

// The window asks to message the bot and press its button again; here the prompt comes back.
bool noChatYet(const TelegramSettingsViewModel& model) {
    return model.phase() == Phase::failed(TelegramError::noChat().description());
}

// Runs the main loop until the action that was just started has ended, then prints the
// section's status line. Returns whether the action succeeded.
bool finish(TelegramSettingsViewModel& model) {
    if (model.phase().kind == Phase::Kind::working) {
        QEventLoop wait;
        auto watching = model.phase.observe([&](const Phase& phase) {
            if (phase.kind != Phase::Kind::working) wait.quit();
        });
        wait.exec();
    }
    if (const auto status = model.statusLine())
        std::printf("%s\n",
                    noChatYet(model) ? "No message to your bot has arrived yet." : status->text.c_str());
    return model.phase().kind != Phase::Kind::failed;
}

void printSteps() {
    std::printf("%s\n", std::string(TelegramSettingsText::setupDisclosure).c_str());
    // The window's last two steps name its buttons; here the prompts below take their place.
    const std::array<std::string_view, 5> steps{
        TelegramSettingsText::setupSteps[0], TelegramSettingsText::setupSteps[1],
        TelegramSettingsText::setupSteps[2], "Paste the token at the prompt below.",
        "Message your new bot once; this command then links the chat and sends a test."};
    int n = 1;
    for (const auto step : steps)
        std::printf("  %d. %s\n", n++, std::string(step).c_str());
    std::printf("  %s: %s\n\n", std::string(TelegramSettingsText::botFatherLink).c_str(),
                std::string(TelegramSettingsText::botFatherUrl).c_str());
}

} // namespace

int runTelegramCommand(int argc, char** argv) {
    if (argc != 3 || std::string(argv[2]) != "setup") {
        std::fputs("Usage: tovrin telegram setup\n", stderr);
        return 2;
    }
    QCoreApplication app(argc, argv);
    QtMainLoop loop;
    SystemClock clock;
    JsonFileDefaultsStore defaults(UserPaths::defaultsFile());
    PreferencesStore preferences(defaults);
    AlertServices alerts(loop, clock, preferences, UserPaths::home(), InstallationPaths::shareDir());
    TelegramSettingsViewModel model(alerts.messenger(), alerts.secrets(), preferences);
    model.load();
    if (alerts.secretStore().usesFallback()) std::printf("%s\n\n", alerts.secretStore().notice().c_str());
    printSteps();

    std::string answer;
    if (!readLine((std::string(TelegramSettingsText::toggle) + "? [Y/n] ").c_str(), answer)) return 1;
    preferences.telegramEnabled.set(answer.empty() || answer[0] == 'y' || answer[0] == 'Y');
    if (!preferences.telegramEnabled()) return 0;

    const bool stored = !model.botToken().empty();
    if (!readLine(stored ? "Bot token (Enter keeps the stored one): " : "Bot token: ", answer)) return 1;
    if (!answer.empty()) model.botToken.set(answer);
    if (!model.verifyEnabled()) return 1;
    model.verify();
    if (!finish(model)) return 1;
    if (model.botUsername()) std::printf("%s\n", model.botUsername()->c_str());

    do {
        if (!readLine("Message your bot once in Telegram, then press Enter to link the chat. ", answer))
            return 1;
        model.linkChat();
    } while (!finish(model) && noChatYet(model));
    if (model.phase().kind == Phase::Kind::failed) return 1;
    if (model.linkedChatLabel()) std::printf("%s\n", model.linkedChatLabel()->c_str());

    if (!readLine("Press Enter to send a test message. ", answer)) return 1;
    model.sendTest();
    return finish(model) ? 0 : 1;
}

} // namespace tovrin
