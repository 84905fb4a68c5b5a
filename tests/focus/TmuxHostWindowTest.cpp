#include "focus/TmuxHostWindow.h"

#include "support/FakeFocusPorts.h"
#include "support/FakeWindowSystem.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace tovrin {
namespace {

TEST(TmuxHostWindowTest, ClientsComeMostRecentlyActiveFirst) {
    const std::vector<std::pair<std::string, std::vector<std::int64_t>>> cases{
        {"", {}},
        {"5 50\n9 60\n", {60, 50}},
        {"5 50\n5 60", {50, 60}},
        {"x 50\n5\n5 -3\n5 0\n5 50 \n7 70\n", {70}},
    };
    for (const auto& [listing, pids] : cases)
        EXPECT_EQ(TmuxHostWindow::clientsByActivity(listing), pids) << listing;
}

struct HostCase {
    const char* what;
    std::optional<std::string> clients;
    bool available = true;
    bool expected = false;
    std::vector<std::uint64_t> activated;
};

TEST(TmuxHostWindowTest, FollowsEachClientUpToAWindowOwner) {
    // 50 runs under a shell 51 in terminal 40; 60 under 61 in terminal 41; 70 (over ssh) and
    // 80 (a loop in a changing process table) reach no window.
    const std::map<std::int64_t, std::int64_t> parents{{50, 51}, {51, 40}, {40, 1},  {60, 61},
                                                       {61, 41}, {70, 2},  {80, 81}, {81, 80}};
    const std::vector<HostCase> cases{
        {"the most recent client wins", "5 50\n9 60\n", true, true, {11}},
        {"a client without a window gives way to the next", "9 70\n5 50\n", true, true, {10}},
        {"no client leads to a window", "9 70\n8 80\n", true, false, {}},
        {"no answer from tmux", std::nullopt, true, false, {}},
        {"no window system", "5 50", false, false, {}},
    };
    for (const HostCase& c : cases) {
        SCOPED_TRACE(c.what);
        test::FocusLog log;
        test::FakeProcessRunner processes(log);
        if (c.clients)
            processes.outputs["/usr/bin/tmux list-clients -t %3 -F #{client_activity} #{client_pid}"] =
                *c.clients;
        test::RecordingShell shell(processes, log, {"/usr/bin/tmux"});
        test::FakeWindowSystem windows;
        windows.isAvailable = c.available;
        windows.windows = {{9, "", "", "", std::nullopt}, {10, "", "", "", 40}, {11, "", "", "", 41}};

        TmuxHostWindow host(shell, windows, [&](std::int64_t pid) -> std::optional<std::int64_t> {
            const auto it = parents.find(pid);
            return it == parents.end() ? std::nullopt : std::optional(it->second);
        });
        EXPECT_EQ(host.raise("%3"), c.expected);
        EXPECT_EQ(windows.activated, c.activated);
    }
}

TEST(TmuxHostWindowTest, ParentsComeFromTheProcessTable) {
    EXPECT_EQ(parentProcess(::getpid()), ::getppid());
    EXPECT_EQ(parentProcess(-1), std::nullopt);
}

} // namespace
} // namespace tovrin
