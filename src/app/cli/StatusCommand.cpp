#include "app/cli/StatusCommand.h"

#include "app/SessionTracking.h"
#include "app/cli/TerminalText.h"
#include "platform/qt/QtMainLoop.h"
#include "ui/viewmodels/StatusReport.h"

#include <QCoreApplication>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace tovrin {
namespace {

enum class Mode { text, json, follow };

void write(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

std::string followScreen(const std::vector<AgentSession>& sessions, TimePoint now, bool terminal) {
    std::string screen = terminal ? "\x1b[H\x1b[2J" : "\n";
    screen += "Tovrin \u00B7 " + std::to_string(sessions.size()) + " session" +
              (sessions.size() == 1 ? "" : "s") + " \u00B7 refreshed at " + localClockTime(now) +
              " \u00B7 Ctrl-C to quit\n\n";
    return screen + StatusReport::text(sessions, now);
}

} // namespace

int runStatusCommand(int argc, char** argv) {
    Mode mode = Mode::text;
    for (int i = 2; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--json")
            mode = Mode::json;
        else if (arg == "--follow")
            mode = Mode::follow;
        else {
            std::fprintf(stderr,
                         "tovrin status: unknown option %s\nUsage: tovrin status [--json | --follow]\n",
                         arg.c_str());
            return 2;
        }
    }

    QCoreApplication app(argc, argv);
    QtMainLoop loop;
    SystemClock clock;
    UserSettings settings;
    SessionTracking tracking(loop, clock, settings.preferences);

    if (mode != Mode::follow) {
        // A host's ssh gives up after its connect timeout; one that answers takes a second or two.
        tracking.awaitHosts(std::chrono::seconds(15));
        tracking.store.refresh();
        const auto& sessions = tracking.store.sessions();
        const auto unreachable = StatusReport::unreachable(tracking.store.unreachableHosts());
        if (mode == Mode::json) {
            write(StatusReport::json(sessions));
            std::fputs(unreachable.c_str(), stderr);
        } else {
            write(StatusReport::text(sessions, clock.now()) + unreachable);
        }
        return 0;
    }

    const bool terminal = ::isatty(STDOUT_FILENO) == 1;
    // Each publication carries the new list; draw it as it arrives.
    auto redraw = tracking.store.sessions.observe([&](const std::vector<AgentSession>& sessions) {
        write(followScreen(sessions, clock.now(), terminal) +
              StatusReport::unreachable(tracking.store.unreachableHosts()));
    });
    tracking.store.start();
    return QCoreApplication::exec();
}

} // namespace tovrin
