#include "app/desktop/DesktopApplication.h"
#include "app/desktop/DesktopEnvironment.h"
#include "platform/dbus/WindowRequests.h"

#include <QCoreApplication>
#include <cstdio>
#include <cstring>
#include <string>

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
    DesktopApplication application(argc, argv);
    application.launch();
    if (!window.empty()) application.shell().show(window);
    return application.exec();
}
