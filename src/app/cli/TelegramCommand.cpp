#include "app/cli/TelegramCommand.h"

#include "alerts/telegram/TelegramSettingsViewModel.h"
#include "alerts/telegram/TelegramSetupDialogue.h"
#include "app/AlertServices.h"
#include "core/JsonFileDefaultsStore.h"
#include "core/UserPaths.h"
#include "platform/linux/InstallationPaths.h"
#include "platform/qt/QtMainLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <cstdio>
#include <iostream>
#include <string>

namespace tovrin {

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
    if (alerts.secretStore().usesFallback()) std::cout << alerts.secretStore().notice() << "\n\n";
    const auto waitForAnswer = [&model] {
        QEventLoop wait;
        auto watching = model.phase.observe([&](const TelegramSettingsViewModel::Phase& phase) {
            if (phase.kind != TelegramSettingsViewModel::Phase::Kind::working) wait.quit();
        });
        wait.exec();
    };
    return TelegramSetupDialogue(model, preferences, std::cin, std::cout, waitForAnswer).run();
}

} // namespace tovrin
