#include "focus/FocusManager.h"

#include "support/FakeFocusPorts.h"
#include "support/FakeWindowSystem.h"

#include <future>
#include <gtest/gtest.h>
#include <thread>

// Locators name only the fields a case sets; the others are meant to stay empty.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace tovrin {
namespace {

using namespace std::chrono_literals;

class FocusManagerTest : public ::testing::Test {
protected:
    FocusManagerTest() {
        raiser.editors = {{"cursor-ide", Editor{"cursor", "Cursor"}},
                          {"copilot-vscode", Editor{"vscode", "Visual Studio Code"}}};
    }

    static AgentSession session(std::string tool, std::optional<Locator> locator = std::nullopt) {
        AgentSession value;
        value.tool = std::move(tool);
        value.cwd = "/w/proj/sub";
        value.locator = std::move(locator);
        return value;
    }

    // What the manager did for the requests so far: a reveal queued behind them marks their end.
    std::vector<std::string> settle() {
        AgentSession marker;
        marker.cwd = "/end";
        manager.revealInFileManager(marker);
        EXPECT_TRUE(log.waitFor("reveal /end"));
        auto entries = log.entries();
        entries.pop_back();
        log.clear();
        return entries;
    }

    test::FocusLog log;
    test::FakeProcessRunner processes{log};
    test::RecordingShell shell{processes, log, {"/usr/bin/tmux"}};
    test::FakeWindowSystem windows;
    test::FakeAppActivator activator{log};
    test::FakeEditorRaiser raiser{log};
    test::FakeFolderRevealer revealer{log};
    FocusManager manager{shell, windows, activator, raiser, revealer};
};

struct FocusCase {
    const char* what;
    AgentSession session;
    bool raises; // whether the editor's window rises
    std::vector<std::string> log;
};

TEST_F(FocusManagerTest, TriesTerminalThenEditorThenAppThenFolder) {
    AgentSession withRoot = session("claude-code");
    withRoot.root = "/w/proj";
    const std::string pane = "start /usr/bin/tmux select-pane -t %3",
                      window = "start /usr/bin/tmux select-window -t %3",
                      clients = "read /usr/bin/tmux list-clients -t %3 -F #{client_activity} #{client_pid}";
    const Locator tmux{.tmuxPane = "%3"}, someApp{.app = "SomeApp"};
    const std::vector<FocusCase> cases{
        {"tmux with its app ends it",
         session("cursor-ide", Locator{.tmuxPane = "%3", .app = "Konsole"}),
         true,
         {pane, window, "activate Konsole"}},
        {"tmux without a terminal window goes on",
         session("cursor-ide", tmux),
         true,
         {pane, window, clients, "raise Cursor /w/proj/sub"}},
        {"a terminal device goes on to the app",
         session("claude-code", Locator{.tty = "/dev/pts/1", .app = "Terminal"}),
         true,
         {"activate Terminal"}},
        {"an editor whose window rises", session("cursor-ide"), true, {"raise Cursor /w/proj/sub"}},
        {"an editor without a matching window comes forward whole",
         session("copilot-vscode"),
         false,
         {"raise Visual Studio Code /w/proj/sub", "activate Visual Studio Code"}},
        {"the editor goes before the app",
         session("cursor-ide", someApp),
         false,
         {"raise Cursor /w/proj/sub", "activate Cursor"}},
        {"an app alone", session("claude-code", someApp), true, {"activate SomeApp"}},
        {"an empty app is no app", session("claude-code", Locator{.app = ""}), true, {"reveal /w/proj/sub"}},
        {"nothing else: the working directory", session("claude-code"), true, {"reveal /w/proj/sub"}},
        {"nothing else: the root before it", withRoot, true, {"reveal /w/proj"}},
    };
    for (const FocusCase& c : cases) {
        SCOPED_TRACE(c.what);
        raiser.raises = c.raises;
        manager.focus(c.session);
        EXPECT_EQ(settle(), c.log);
    }
}

TEST_F(FocusManagerTest, RequestsRunInOrderOffTheCallingThreadWithoutHoldingItUp) {
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    std::promise<std::thread::id> worker;
    bool first = true;
    revealer.onReveal = [&] {
        if (!first) return;
        first = false;
        worker.set_value(std::this_thread::get_id());
        released.wait_for(5s);
    };

    manager.focus(session("claude-code"));               // blocks in the revealer
    manager.focus(session("cursor-ide"));                // waits behind it
    manager.revealInFileManager(session("claude-code")); // and so does a reveal
    manager.focus(session("claude-code", Locator{.app = "SomeApp"}));

    auto workerId = worker.get_future();
    ASSERT_EQ(workerId.wait_for(5s), std::future_status::ready);
    EXPECT_NE(workerId.get(), std::this_thread::get_id());
    EXPECT_EQ(log.entries(), std::vector<std::string>{}) << "later requests ran before the first ended";

    release.set_value();
    EXPECT_EQ(settle(), (std::vector<std::string>{"reveal /w/proj/sub", "raise Cursor /w/proj/sub",
                                                  "reveal /w/proj/sub", "activate SomeApp"}));
}

} // namespace
} // namespace tovrin
