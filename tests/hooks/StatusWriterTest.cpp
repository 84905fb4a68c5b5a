// The shipped status writer, run for real: /bin/sh and jq as child processes, payloads shaped
// like the agents' own, and the result read back by the real status file reader.

#include "core/Iso8601.h"
#include "sessions/SessionFileReader.h"
#include "support/TempDir.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kWriter = fs::path(TOVRIN_SOURCE_ADAPTERS_DIR) / "agent-status.sh";
const fs::path kPayloads = fs::path(TOVRIN_TEST_DATA_DIR) / "agent-payloads";

json payload(const std::string& agent, const std::string& key) {
    return json::parse(test::readText(kPayloads / (agent + ".json"))).at(key);
}

// The writer's process tree, as an agent would build it: a process named `agent` (a shell
// under another name, so that it counts as the agent) runs the writer, directly or through
// "sh -c"; optionally below a process named `host`, and in a session whose controlling
// terminal is `tty`.
struct Tree {
    std::string agent = "fake-agent";
    bool viaShell = false;
    std::string host;
    std::string tty;
};

struct Outcome {
    int status = -1;
    std::string out, err;
    long agentPid = 0;
};

// One writer invocation, started at once and collected by finish().
class Invocation {
public:
    Invocation(const fs::path& scratch, const std::vector<std::string>& args,
               const std::vector<std::string>& env, const std::string& input, const Tree& tree)
        : m_dir(scratch / std::to_string(s_counter++)) {
        fs::create_directories(m_dir);
        std::ofstream(m_dir / "in", std::ios::binary) << input;
        const auto bin = m_dir / "bin";
        fs::create_directories(bin);
        fs::create_symlink("/bin/sh", bin / tree.agent);
        const std::string agentScript =
            tree.viaShell ? R"(echo $$ >"$1"; shift; /bin/sh -c '"$@"; exit $?' sh "$@"; exit $?)"
                          : R"(echo $$ >"$1"; shift; "$@"; exit $?)";
        std::vector<std::string> argv = {(bin / tree.agent).string(),
                                         "-c",
                                         agentScript,
                                         tree.agent,
                                         (m_dir / "pid").string(),
                                         kWriter.string()};
        argv.insert(argv.end(), args.begin(), args.end());
        if (!tree.host.empty()) {
            fs::create_symlink("/bin/sh", bin / tree.host);
            argv.insert(argv.begin(), {(bin / tree.host).string(), "-c", R"("$@"; exit $?)", tree.host});
        }
        start(argv, env, tree.tty);
    }

    Outcome finish() {
        Outcome outcome;
        int status = 0;
        if (::waitpid(m_pid, &status, 0) == m_pid && WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
        outcome.out = test::readText(m_dir / "out");
        outcome.err = test::readText(m_dir / "err");
        const auto pid = test::readText(m_dir / "pid");
        if (!pid.empty()) outcome.agentPid = std::stol(pid);
        return outcome;
    }

private:
    void start(const std::vector<std::string>& argv, const std::vector<std::string>& env,
               const std::string& tty) {
        // Everything the child needs is prepared before fork: it may only make system calls.
        std::vector<char*> cargv, cenv;
        for (const auto& a : argv)
            cargv.push_back(const_cast<char*>(a.c_str()));
        for (const auto& e : env)
            cenv.push_back(const_cast<char*>(e.c_str()));
        cargv.push_back(nullptr);
        cenv.push_back(nullptr);
        const auto in = (m_dir / "in").string(), out = (m_dir / "out").string(),
                   err = (m_dir / "err").string();
        m_pid = ::fork();
        if (m_pid != 0) return;
        // A session of its own, so that the agent has exactly the terminal asked for, if any: a new
        // session takes the first terminal it opens as its controlling one.
        ::setsid();
        if (!tty.empty()) {
            const int fd = ::open(tty.c_str(), O_RDWR);
            if (fd >= 0) ::close(fd);
        }
        ::dup2(::open(in.c_str(), O_RDONLY), 0);
        ::dup2(::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        ::execve(cargv[0], cargv.data(), cenv.data());
        ::_exit(127);
    }

    static inline int s_counter = 0;
    fs::path m_dir;
    pid_t m_pid = -1;
};

// A pseudo terminal whose slave side can become a controlling terminal.
class PseudoTerminal {
public:
    PseudoTerminal() : m_master(::posix_openpt(O_RDWR | O_NOCTTY)) {
        if (m_master >= 0 && ::grantpt(m_master) == 0 && ::unlockpt(m_master) == 0)
            m_name = ::ptsname(m_master);
    }
    ~PseudoTerminal() {
        if (m_master >= 0) ::close(m_master);
    }
    const std::string& name() const { return m_name; }

private:
    int m_master;
    std::string m_name;
};

class StatusWriterTest : public ::testing::Test {
protected:
    fs::path statusDir() const { return m_root.path() / "status"; }

    // The environment of a hook: nothing inherited, the status folder, and `extra`.
    std::vector<std::string> environment(const std::vector<std::string>& extra = {}) const {
        std::vector<std::string> env = {"PATH=/usr/bin:/bin", "HOME=" + (m_root.path() / "home").string(),
                                        "AGENT_STATUS_DIR=" + statusDir().string()};
        env.insert(env.end(), extra.begin(), extra.end());
        return env;
    }

    Outcome run(const std::string& tool, const std::string& event, const std::string& input,
                const std::vector<std::string>& extraEnv = {}, const Tree& tree = {}) {
        return Invocation(m_root.path() / "runs", {tool, event}, environment(extraEnv), input, tree).finish();
    }

    std::vector<AgentSession> sessions() const { return SessionFileReader(statusDir()).readAll(); }

    // Names in the status folder that the reader would look at.
    std::vector<std::string> visibleFiles() const {
        std::vector<std::string> names;
        if (!fs::exists(statusDir())) return names;
        for (const auto& name : test::entriesOf(statusDir()))
            if (name.front() != '.') names.push_back(name);
        return names;
    }

    test::TempDir m_root;
};

void expectQuiet(const Outcome& outcome, const std::string& expectedOut = "") {
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, expectedOut);
    EXPECT_EQ(outcome.err, "");
}

// --- Every event that each agent's template registers ----------------------------------------

struct EventCase {
    std::string agent; // payload file
    std::string key;   // sample within it
    std::string toolArg, eventArg;
    std::string tool; // the tool recorded, "" when no file must remain
    SessionState state = SessionState::idle;
    std::string reason = "";
    std::string title = "";
};

const char* kClaudeId = "session_id";

std::string idKey(const std::string& agent) {
    if (agent == "copilot-cli" || agent == "vscode") return "sessionId";
    if (agent == "cursor") return "conversation_id";
    if (agent == "antigravity") return "conversationId";
    return kClaudeId;
}

bool editorHosted(const std::string& tool) {
    return tool == "copilot-vscode" || tool == "cursor-ide" || tool == "antigravity-ide";
}

using S = SessionState;
const std::vector<EventCase> kEventCases = {
    {"claude-code", "SessionStart", "claude-code", "SessionStart", "claude-code", S::idle, "", "shop"},
    {"claude-code", "UserPromptSubmit", "claude-code", "UserPromptSubmit", "claude-code", S::working, "",
     "Fix the failing checkout test"},
    {"claude-code", "PreToolUse", "claude-code", "PreToolUse", "claude-code", S::working},
    {"claude-code", "PreToolUse/AskUserQuestion", "claude-code", "PreToolUse", "claude-code", S::waiting,
     "Which database should the cache use?"},
    {"claude-code", "PreToolUse/ExitPlanMode", "claude-code", "PreToolUse", "claude-code", S::waiting,
     "Plan ready for review"},
    {"claude-code", "PermissionRequest", "claude-code", "PermissionRequest", "claude-code", S::waiting,
     "Needs permission to use Bash: rm -rf build"},
    {"claude-code", "PostToolUse", "claude-code", "PostToolUse", "claude-code", S::working},
    {"claude-code", "PostToolUseFailure", "claude-code", "PostToolUseFailure", "claude-code", S::working},
    {"claude-code", "Notification/permission_prompt", "claude-code", "Notification", "claude-code",
     S::waiting, "Claude needs your permission to use Bash"},
    {"claude-code", "Notification/idle_prompt", "claude-code", "Notification", "claude-code", S::idle},
    {"claude-code", "Notification/auth_success", "claude-code", "Notification", ""},
    {"claude-code", "Stop", "claude-code", "Stop", "claude-code", S::idle},
    {"claude-code", "StopFailure", "claude-code", "StopFailure", "claude-code", S::idle},
    {"claude-code", "SessionEnd", "claude-code", "SessionEnd", ""},
    {"codex", "SessionStart", "codex-cli", "SessionStart", "codex-cli", S::idle},
    {"codex", "UserPromptSubmit", "codex-cli", "UserPromptSubmit", "codex-cli", S::working, "",
     "Add a retry to the uploader"},
    {"codex", "PreToolUse", "codex-cli", "PreToolUse", "codex-cli", S::working},
    {"codex", "PermissionRequest", "codex-cli", "PermissionRequest", "codex-cli", S::waiting,
     "Needs permission to use Bash: git push --force"},
    {"codex", "PostToolUse", "codex-cli", "PostToolUse", "codex-cli", S::working},
    {"codex", "Stop", "codex-cli", "Stop", "codex-cli", S::idle},
    {"codex", "Interrupt", "codex-cli", "Interrupt", "codex-cli", S::idle},
    {"codex", "SessionEnd", "codex-cli", "SessionEnd", ""},
    {"copilot-cli", "sessionStart", "copilot-cli", "sessionStart", "copilot-cli", S::idle, "",
     "Summarise the open issues"},
    {"copilot-cli", "userPromptSubmitted", "copilot-cli", "userPromptSubmitted", "copilot-cli", S::working},
    {"copilot-cli", "preToolUse", "copilot-cli", "preToolUse", "copilot-cli", S::working},
    {"copilot-cli", "preToolUse/ask_user", "copilot-cli", "preToolUse", "copilot-cli", S::waiting,
     "Include closed issues?"},
    {"copilot-cli", "postToolUse", "copilot-cli", "postToolUse", "copilot-cli", S::working},
    {"copilot-cli", "notification/permission_prompt", "copilot-cli", "notification", "copilot-cli",
     S::waiting, "Copilot needs permission to run gh"},
    {"copilot-cli", "notification/shell_completed", "copilot-cli", "notification", ""},
    {"copilot-cli", "permissionRequest", "copilot-cli", "permissionRequest", ""},
    {"copilot-cli", "agentStop", "copilot-cli", "agentStop", "copilot-cli", S::idle},
    {"copilot-cli", "sessionEnd", "copilot-cli", "sessionEnd", ""},
    {"copilot-cli", "sessionEnd/complete", "copilot-cli", "sessionEnd", "copilot-cli", S::idle},
    {"vscode", "SessionStart", "copilot-vscode", "SessionStart", "copilot-vscode", S::idle},
    {"vscode", "UserPromptSubmit", "copilot-vscode", "UserPromptSubmit", "copilot-vscode", S::working, "",
     "Explain the build failure"},
    {"vscode", "PreToolUse", "copilot-vscode", "PreToolUse", "copilot-vscode", S::working},
    {"vscode", "PostToolUse", "copilot-vscode", "PostToolUse", "copilot-vscode", S::working},
    {"vscode", "Stop", "copilot-vscode", "Stop", "copilot-vscode", S::idle},
    {"cursor", "sessionStart", "cursor-cli", "sessionStart", "cursor-cli", S::idle},
    {"cursor", "beforeSubmitPrompt", "cursor-cli", "beforeSubmitPrompt", "cursor-cli", S::working, "",
     "Rename the config loader"},
    {"cursor", "preToolUse", "cursor-cli", "preToolUse", "cursor-cli", S::working},
    {"cursor", "postToolUse", "cursor-cli", "postToolUse", "cursor-cli", S::working},
    {"cursor", "stop", "cursor-cli", "stop", "cursor-cli", S::idle},
    {"cursor", "sessionEnd", "cursor-cli", "sessionEnd", ""},
    {"antigravity", "SessionStart", "antigravity-cli", "SessionStart", "antigravity-cli", S::idle},
    {"antigravity", "PreInvocation", "antigravity-cli", "PreInvocation", "antigravity-cli", S::working},
    {"antigravity", "PreToolUse", "antigravity-cli", "PreToolUse", "antigravity-cli", S::working},
    {"antigravity", "PreToolUse/ask_permission", "antigravity-cli", "PreToolUse", "antigravity-cli",
     S::waiting, "Needs permission"},
    {"antigravity", "PostToolUse", "antigravity-cli", "PostToolUse", "antigravity-cli", S::working},
    {"antigravity", "Stop", "antigravity-cli", "Stop", "antigravity-cli", S::idle},
    // Claude's hook file, run by other agents.
    {"vscode", "UserPromptSubmit", "claude-code", "UserPromptSubmit", "copilot-vscode", S::working},
    {"cursor", "beforeSubmitPrompt", "claude-code", "UserPromptSubmit", "cursor-ide", S::working},
};

TEST_F(StatusWriterTest, EachAgentEventLeavesTheRecordTheReaderExpects) {
    const PseudoTerminal terminal;
    ASSERT_FALSE(terminal.name().empty());
    for (const auto& c : kEventCases) {
        SCOPED_TRACE(c.agent + " " + c.key + " via " + c.toolArg);
        fs::remove_all(statusDir());
        const json sample = payload(c.agent, c.key);
        // Claude's own hooks carry its markers; the terminal agents run in a terminal.
        std::vector<std::string> env = {"TMUX_PANE=%7", "TERM_PROGRAM=TestTerm"};
        if (c.toolArg == "claude-code" && c.agent == "claude-code") env.push_back("CLAUDECODE=1");
        Tree tree;
        if (!editorHosted(c.tool)) tree.tty = terminal.name();

        const auto outcome = run(c.toolArg, c.eventArg, sample.dump(), env, tree);
        expectQuiet(outcome, c.toolArg == "antigravity-cli" && c.eventArg == "PreToolUse" ? "{}\n" : "");

        const auto found = sessions();
        if (c.tool.empty()) {
            EXPECT_TRUE(visibleFiles().empty());
            continue;
        }
        ASSERT_EQ(found.size(), 1u);
        const auto& s = found[0];
        EXPECT_EQ(s.tool, c.tool);
        EXPECT_EQ(s.sessionId, sample.at(idKey(c.agent)).get<std::string>());
        EXPECT_EQ(s.state, c.state);
        EXPECT_EQ(s.reason.value_or(""), c.reason);
        EXPECT_EQ(s.cwd, "/home/dev/shop");
        if (!c.title.empty()) {
            EXPECT_EQ(s.title, c.title);
        }
        for (const char* key : {"transcript_path", "transcriptPath"}) {
            if (sample.contains(key) && sample[key].is_string()) {
                EXPECT_EQ(s.transcriptPath, sample[key].get<std::string>());
            }
        }
        ASSERT_TRUE(s.locator.has_value());
        if (editorHosted(c.tool)) {
            // An editor's agent is found through the editor, whatever terminal it was started from.
            EXPECT_FALSE(s.pid.has_value());
            Locator editor;
            editor.app = c.tool == "copilot-vscode" ? "VS Code" : "Cursor";
            EXPECT_EQ(*s.locator, editor);
        } else {
            EXPECT_EQ(s.pid, outcome.agentPid);
            EXPECT_EQ(s.locator->tmuxPane, "%7");
            EXPECT_EQ(s.locator->termProgram, "TestTerm");
            EXPECT_EQ(s.locator->tty, terminal.name());
        }
    }
}

// --- One session over time -----------------------------------------------------------------

TEST_F(StatusWriterTest, ASessionKeepsItsStartAndTitleAndGoesAwayForGoodAtItsEnd) {
    const std::vector<std::string> claude = {"CLAUDECODE=1"};
    auto send = [&](const std::string& key, const std::string& event) {
        expectQuiet(run("claude-code", event, payload("claude-code", key).dump(), claude));
    };
    send("SessionStart", "SessionStart");
    send("UserPromptSubmit", "UserPromptSubmit");
    ASSERT_EQ(visibleFiles().size(), 1u);

    // Age the record's start; later events must keep it.
    const auto file = statusDir() / visibleFiles()[0];
    json record = json::parse(test::readText(file));
    record["startedAt"] = "2020-01-01T00:00:00Z";
    std::ofstream(file) << record.dump();

    send("PermissionRequest", "PermissionRequest");
    ASSERT_EQ(sessions().size(), 1u);
    EXPECT_EQ(sessions()[0].state, SessionState::waiting);
    send("PostToolUse", "PostToolUse"); // approved: the tool ran
    auto s = sessions().at(0);
    EXPECT_EQ(s.state, SessionState::working);
    EXPECT_FALSE(s.reason.has_value());
    EXPECT_EQ(s.title, "Fix the failing checkout test");
    EXPECT_EQ(json::parse(test::readText(file)).at("startedAt"), "2020-01-01T00:00:00Z");
    EXPECT_GE(s.updatedAt, *parseIso8601("2026-01-01T00:00:00Z"));

    send("SessionEnd", "SessionEnd");
    EXPECT_TRUE(visibleFiles().empty());
    send("Stop", "Stop"); // late, after the end
    EXPECT_TRUE(visibleFiles().empty());
    send("SessionEnd", "SessionEnd"); // again
    EXPECT_TRUE(visibleFiles().empty());
    send("SessionStart", "SessionStart"); // resumed under the same id
    EXPECT_EQ(sessions().size(), 1u);
}

TEST_F(StatusWriterTest, ConcurrentEventsOfOneSessionLeaveOneWholeRecord) {
    const char* keys[] = {"PreToolUse", "PostToolUse", "PermissionRequest", "Stop", "UserPromptSubmit"};
    std::vector<std::unique_ptr<Invocation>> runs;
    for (int i = 0; i < 50; ++i) {
        const std::string key = keys[i % 5];
        runs.push_back(std::make_unique<Invocation>(
            m_root.path() / "runs", std::vector<std::string>{"claude-code", key},
            environment({"CLAUDECODE=1"}), payload("claude-code", key).dump(), Tree{}));
    }
    for (auto& r : runs)
        expectQuiet(r->finish());
    EXPECT_EQ(sessions().size(), 1u);
    EXPECT_EQ(test::entriesOf(statusDir()).size(), 1u) << "no temporary file is left behind";
}

// --- Hostile input -------------------------------------------------------------------------

TEST_F(StatusWriterTest, AnySessionIdGetsItsOwnFileInsideTheFolder) {
    const std::vector<std::string> ids = {"../../escape",
                                          "a/b",
                                          "a_b",
                                          "a?b",
                                          "..",
                                          ".hidden",
                                          "quo\"te's",
                                          "new\nline",
                                          "über-λ",
                                          "a.b.json",
                                          std::string(300, 'x'),
                                          std::string(300, 'x') + "y",
                                          "tab\there",
                                          "end\\"};
    for (const auto& id : ids)
        expectQuiet(run("codex-cli", "Stop", json{{"session_id", id}, {"cwd", "/w"}}.dump()));

    std::vector<std::string> recorded;
    for (const auto& s : sessions())
        recorded.push_back(s.sessionId);
    std::sort(recorded.begin(), recorded.end());
    auto expected = ids;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(recorded, expected);
    EXPECT_EQ(test::entriesOf(m_root.path()), (std::vector<std::string>{"runs", "status"}))
        << "nothing is written beside the status folder";
}

TEST_F(StatusWriterTest, TextFromThePayloadAlwaysMakesValidJson) {
    const std::string awkward =
        "\"quoted\" \\ back\tslash\r\n\xe2\x80\xa8 \xc3\xa9t\xc3\xa9 \xf0\x9f\x94\xa5 \x01";
    const std::string invalidUtf8 = "bad \xff\xfe bytes";
    const json sample = {{"session_id", "s1"},
                         {"cwd", "/tmp/" + awkward},
                         {"transcript_path", "/t/" + awkward},
                         {"tool_name", "Bash"},
                         {"tool_input", {{"command", awkward}}}};
    expectQuiet(run("claude-code", "PermissionRequest", sample.dump(), {"CLAUDECODE=1"}));
    expectQuiet(run("claude-code", "UserPromptSubmit",
                    R"({"session_id":"s2","cwd":"/w","prompt":"  )" + invalidUtf8 + R"(\n2nd"})",
                    {"CLAUDECODE=1"}));
    expectQuiet(run("claude-code", "UserPromptSubmit",
                    json{{"session_id", "s3"}, {"cwd", "/w"}, {"prompt", std::string(500, 'z')}}.dump(),
                    {"CLAUDECODE=1"}));

    auto found = sessions();
    ASSERT_EQ(found.size(), 3u);
    std::sort(found.begin(), found.end(),
              [](const auto& a, const auto& b) { return a.sessionId < b.sessionId; });
    EXPECT_EQ(found[0].cwd, "/tmp/" + awkward);
    EXPECT_EQ(found[0].transcriptPath, "/t/" + awkward);
    EXPECT_EQ(found[0].state, SessionState::waiting);
    EXPECT_EQ(found[0].reason->find('\n'), std::string::npos) << "a reason is one line";
    EXPECT_EQ(found[1].title, "bad \xef\xbf\xbd\xef\xbf\xbd bytes") << "invalid bytes become U+FFFD";
    EXPECT_EQ(found[2].title, std::string(79, 'z') + "\u2026");
}

TEST_F(StatusWriterTest, HugePayloadsKeepOnlyWhatTheRecordNeeds) {
    const std::string blank(4 << 20, '\n');
    const auto lines = [](const std::string& line, int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += line + '\n';
        return text;
    };
    const struct {
        std::string event;
        json payload;
        std::string title, reason; // no title: nothing is recorded
        std::size_t trailingBlanks = 0;
    } cases[] = {
        {"UserPromptSubmit", {{"prompt", blank}}, "w", ""},
        {"UserPromptSubmit", {{"prompt", lines(" ", 20) + "  Real text\n" + blank}}, "Real text", ""},
        {"PermissionRequest",
         {{"tool_name", "Bash"}, {"tool_input", {{"command", lines("make -k", 500000)}}}},
         "w",
         "Needs permission to use Bash: make -k"},
        {"Stop", {{"session_id", std::string(4096, 'i')}}, "", ""},
        // Past the read cap even a payload that parses, cut or not, records nothing.
        {"Stop", json::object(), "", "", 17 << 20},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.event + " " + c.title);
        fs::remove_all(statusDir());
        json sample = {{"session_id", "big"}, {"cwd", "/w"}};
        sample.update(c.payload);
        expectQuiet(run("codex-cli", c.event, sample.dump() + std::string(c.trailingBlanks, ' ')));
        const auto found = sessions();
        if (c.title.empty()) {
            EXPECT_TRUE(visibleFiles().empty());
            continue;
        }
        ASSERT_EQ(found.size(), 1u);
        EXPECT_EQ(found[0].title, c.title);
        EXPECT_EQ(found[0].reason.value_or(""), c.reason);
    }
}

TEST_F(StatusWriterTest, NeverSpeaksAndAlwaysSucceeds) {
    const std::string good = payload("claude-code", "Stop").dump();
    const struct {
        std::vector<std::string> args;
        std::string input;
        std::string out;
    } cases[] = {
        {{"claude-code", "Stop"}, "not json at all", ""},
        {{"claude-code", "Stop"}, "", ""},
        {{"claude-code", "Stop"}, "[1,2,3]", ""},
        {{"claude-code", "Stop"}, "{\"session_id\": 42", ""},
        {{"claude-code", "Stop"}, R"({"cwd":"/w"})", ""}, // no session id
        {{"claude-code", "NoSuchEvent"}, good, ""},
        {{"no-such-tool", "Stop"}, good, ""},
        {{"claude-code", "Stop; rm -rf x"}, good, ""},
        {{}, good, ""},
        {{"antigravity-cli", "PreToolUse"}, "garbage", "{}\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.input);
        expectQuiet(Invocation(m_root.path() / "runs", c.args, environment(), c.input, Tree{}).finish(),
                    c.out);
    }
    EXPECT_TRUE(visibleFiles().empty());

    auto unwritable = environment();
    unwritable[2] = "AGENT_STATUS_DIR=/dev/null/status";
    expectQuiet(
        Invocation(m_root.path() / "runs", {"claude-code", "Stop"}, unwritable, good, Tree{}).finish());
}

TEST_F(StatusWriterTest, WithoutJqNothingIsRecorded) {
    const std::string stop = payload("claude-code", "Stop").dump();
    expectQuiet(run("claude-code", "Stop", stop, {"TOVRIN_JQ=/nonexistent/jq"}));
    expectQuiet(run("antigravity-cli", "PreToolUse", payload("antigravity", "PreToolUse").dump(),
                    {"TOVRIN_JQ=/nonexistent/jq"}),
                "{}\n");
    EXPECT_TRUE(visibleFiles().empty());
    // The same variable naming a real jq records: the override is what took jq away.
    expectQuiet(run("claude-code", "Stop", stop, {"TOVRIN_JQ=/usr/bin/jq"}));
    EXPECT_EQ(sessions().size(), 1u);
}

TEST_F(StatusWriterTest, KeepsSecretsOfTheEnvironmentOutOfTheRecord) {
    expectQuiet(run("antigravity-cli", "Stop", payload("antigravity", "Stop").dump(),
                    {"GEMINI_API_KEY=sk-do-not-record", "SOME_TOKEN=tok-do-not-record"}));
    ASSERT_EQ(visibleFiles().size(), 1u);
    const auto text = test::readText(statusDir() / visibleFiles()[0]);
    EXPECT_EQ(text.find("do-not-record"), std::string::npos) << text;
}

TEST_F(StatusWriterTest, TheStatusFolderComesFromTheEnvironmentWithTheTildeExpanded) {
    const auto home = m_root.path() / "home";
    auto env = environment();
    env[2] = "AGENT_STATUS_DIR=~/custom status";
    expectQuiet(Invocation(m_root.path() / "runs", {"codex-cli", "Stop"}, env,
                           R"({"session_id":"a","cwd":"/w"})", Tree{})
                    .finish());
    EXPECT_EQ(SessionFileReader(home / "custom status").readAll().size(), 1u);

    env.pop_back(); // unset: the default folder in the home folder
    expectQuiet(Invocation(m_root.path() / "runs", {"codex-cli", "Stop"}, env,
                           R"({"session_id":"b","cwd":"/w"})", Tree{})
                    .finish());
    EXPECT_EQ(SessionFileReader(home / ".agent-status").readAll().size(), 1u);
}

// --- Where the agent runs --------------------------------------------------------------------

TEST_F(StatusWriterTest, FindsTheAgentAndItsHostInTheProcessTree) {
    const std::string sample = R"({"session_id":"p1","cwd":"/w"})";
    auto recorded = [&] { return sessions().at(0); };

    // Through the agent's shell wrapper, below a terminal emulator.
    Tree underTerminal;
    underTerminal.viaShell = true;
    underTerminal.host = "kitty";
    auto outcome = run("codex-cli", "Stop", sample, {}, underTerminal);
    expectQuiet(outcome);
    EXPECT_EQ(recorded().pid, outcome.agentPid);
    EXPECT_EQ(recorded().locator.value_or(Locator{}).app, "kitty");

    // Claude names its own process, which needn't be the hook's parent.
    fs::remove_all(statusDir());
    expectQuiet(
        run("claude-code", "Stop", sample, {"CLAUDECODE=1", "CLAUDE_PID=" + std::to_string(::getpid())}));
    EXPECT_EQ(recorded().pid, ::getpid());

    // Cursor's and Antigravity's editors run the same hook files as their command-line agents.
    const PseudoTerminal terminal;
    for (const auto& [agent, tool] :
         {std::pair{"cursor", "cursor-ide"}, std::pair{"antigravity", "antigravity-ide"}}) {
        SCOPED_TRACE(agent);
        fs::remove_all(statusDir());
        const auto toolArg = std::string(agent) + "-cli";
        Tree editor; // the editor's own process runs the hook, and it was started from a terminal
        editor.agent = agent;
        editor.tty = terminal.name();
        expectQuiet(run(toolArg, "Stop", R"({"conversation_id":"c1","cwd":"/w"})", {"TMUX_PANE=%1"}, editor),
                    "");
        EXPECT_EQ(recorded().tool, tool);
        EXPECT_FALSE(recorded().pid.has_value());
        EXPECT_FALSE(recorded().locator->tmuxPane.has_value());
    }

    // Codex may run hooks in a background app server that its sessions share and that outlives
    // them: neither its pid nor its terminal belongs to the session.
    fs::remove_all(statusDir());
    Tree appServer;
    appServer.agent = "codex-app-server";
    appServer.tty = terminal.name();
    expectQuiet(run("codex-cli", "Stop", sample, {"TMUX_PANE=%4"}, appServer));
    EXPECT_EQ(recorded().tool, "codex-cli");
    EXPECT_FALSE(recorded().pid.has_value());
    EXPECT_FALSE(recorded().locator.value_or(Locator{}).tty.has_value());
    EXPECT_FALSE(recorded().locator.value_or(Locator{}).tmuxPane.has_value());
}

} // namespace
} // namespace tovrin
