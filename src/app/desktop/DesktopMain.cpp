#include "app/desktop/DesktopApplication.h"
#include "app/desktop/DesktopEnvironment.h"
#include "platform/dbus/WindowRequests.h"

#include <QCoreApplication>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <unistd.h>

namespace {

// "--show=<window>": the window to bring forward once running (`tovrin settings`).
std::string requestedWindow(int argc, char** argv) {
    constexpr std::string_view option = "--show=";
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], option.data(), option.size()) == 0) return argv[i] + option.size();
    }
    return {};
}

} // namespace

int main(int argc, char** argv) {
    using namespace tovrin;
    const auto window = requestedWindow(argc, argv);
    const auto lock =
        DesktopEnvironment::InstanceLock::acquire(DesktopEnvironment::InstanceLock::defaultFile());
    if (!lock) {
        if (window.empty()) {
            std::fputs("Tovrin is already running.\n", stderr);
            return 0;
        }
        // The running copy may have started a moment ago and not be on the bus yet.
        QCoreApplication bus(argc, argv);
        if (WindowRequests::request(window, std::chrono::seconds(10)) == WindowRequests::Outcome::shown)
            return 0;
        std::fprintf(stderr, "Tovrin is already running, but did not answer the request for its %s window.\n",
                     window.c_str());
        return 1;
    }
    std::optional<std::filesystem::path> relaunch;
    int status = 0;
    {
        DesktopApplication application(argc, argv);
        application.launch();
        if (!window.empty()) application.shell().show(window);
        status = application.exec();
        relaunch = application.coordinator().relaunchExecutable();
    }
    // After an update: the new version takes over this process once the old one has shut down; the
    // instance lock closes on exec, so it finds the lock free.
    if (relaunch) {
        ::execl(relaunch->c_str(), relaunch->c_str(), static_cast<char*>(nullptr));
        std::fprintf(stderr, "Tovrin: cannot start %s: %s\n", relaunch->c_str(), std::strerror(errno));
        return 1;
    }
    return status;
}
