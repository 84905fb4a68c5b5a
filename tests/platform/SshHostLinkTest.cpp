#include "platform/ssh/SshHostLink.h"

#include "hooks/AdapterResources.h"
#include "platform/qt/QtMainLoop.h"
#include "sessions/SessionFileReader.h"
#include "support/ChildProcesses.h"
#include "support/LocalSshd.h"
#include "support/QtEventLoopTest.h"
#include "support/TempDir.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using State = RemoteHostLinking::State;

// The script as the build's payload holds it.
fs::path streamScript() {
    const auto resources =
        AdapterResources::locate(fs::path(TOVRIN_BUILD_SHARE_DIR), [](const char*) { return std::nullopt; });
    return resources ? resources->remoteStreamScript() : fs::path();
}

std::string statusNaming(std::int64_t pid) {
    return "{\n  \"pid\": " + std::to_string(pid) + ",\n  \"state\": \"working\"\n}\n";
}

// The pids of this process's children that still run.
std::set<int> runningChildren() {
    std::set<int> pids;
    for (const auto& child : test::childProcesses())
        if (!child.ended) pids.insert(child.pid);
    return pids;
}

// What the link shows each time it says it changed.
struct Observer {
    RemoteHostLinking& link;
    RemoteSnapshot seen;
    void start() {
        link.start([this] { seen = link.snapshot(); });
    }
};

class SshHostLinkTest : public test::QtEventLoopTest {
protected:
    void SetUp() override {
        if (!test::LocalSshd::available()) GTEST_SKIP() << "sshd or ssh-keygen is not installed";
        sshd = std::make_unique<test::LocalSshd>();
    }
    std::unique_ptr<SshHostLink> linkTo(const fs::path& folder) {
        return std::make_unique<SshHostLink>(loop, test::LocalSshd::host, folder.string(), streamScript(),
                                             SshCommand{"ssh", {"-F", sshd->config().string()}});
    }

    QtMainLoop loop;
    test::TempDir remote;
    std::unique_ptr<test::LocalSshd> sshd;
};

TEST_F(SshHostLinkTest, FollowsTheRemoteFolderFromBeforeItExistsWithTheLivenessOfItsPids) {
    const auto folder = remote.path() / "it's remote";
    auto link = linkTo(folder);
    Observer observer{*link, {}};
    observer.start();
    EXPECT_EQ(link->state(), State::connecting);
    ASSERT_TRUE(pumpUntil([&] { return link->state() == State::connected; }, 20s)) << link->problem();
    EXPECT_EQ(link->snapshot(), RemoteSnapshot{});

    const pid_t self = ::getpid();
    const pid_t sleeper = test::spawnQuietly({"sleep", "60"});
    const pid_t dead = test::spawnQuietly({"true"});
    test::exitStatusOf(dead);
    fs::create_directory(folder);
    remote.write("it's remote/self.json", statusNaming(self));
    remote.write("it's remote/sleeper.json", statusNaming(sleeper));
    remote.write("it's remote/dead.json", statusNaming(dead));
    remote.write("it's remote/.hidden.json", statusNaming(self));
    remote.write("it's remote/notes.txt", "{}");
    remote.write("it's remote/big.json", std::string(SessionFileReader::maxFileSize + 1, ' '));
    fs::create_symlink(folder / "self.json", folder / "link.json");
    const std::map<std::string, std::string> files = {{"self.json", statusNaming(self)},
                                                      {"sleeper.json", statusNaming(sleeper)},
                                                      {"dead.json", statusNaming(dead)}};
    ASSERT_TRUE(pumpUntil([&] { return observer.seen == RemoteSnapshot{files, {self, sleeper}}; }, 10s));

    // No file changes when a session's process ends.
    ::kill(sleeper, SIGKILL);
    test::exitStatusOf(sleeper);
    ASSERT_TRUE(pumpUntil([&] { return observer.seen == RemoteSnapshot{files, {self}}; }, 10s));

    // Rewritten as the status writer does, renamed into place, even at the same size.
    auto waiting = files.at("dead.json");
    waiting.replace(waiting.find("working"), 7, "waiting");
    remote.write("it's remote/next.tmp", waiting);
    fs::rename(folder / "next.tmp", folder / "dead.json");
    ASSERT_TRUE(pumpUntil([&] { return observer.seen.files["dead.json"] == waiting; }, 10s));

    fs::remove(folder / "self.json");
    ASSERT_TRUE(pumpUntil([&] { return observer.seen.files.size() == 2; }, 10s));
    EXPECT_EQ(link->state(), State::connected);
    EXPECT_EQ(link->problem(), "");
}

TEST_F(SshHostLinkTest, AVanishedHostIsUnreachableWithItsLastSnapshotUntilItIsBack) {
    remote.write("a.json", statusNaming(::getpid()));
    auto link = linkTo(remote.path());
    Observer observer{*link, {}};
    observer.start();
    ASSERT_TRUE(pumpUntil([&] { return observer.seen.files.size() == 1; }, 20s)) << link->problem();
    const RemoteSnapshot last = link->snapshot();

    sshd->kill();
    ASSERT_TRUE(pumpUntil([&] { return link->state() == State::unreachable; }, 20s));
    EXPECT_NE(link->problem(), "");
    EXPECT_EQ(link->snapshot(), last);

    sshd->start();
    ASSERT_TRUE(pumpUntil([&] { return link->state() == State::connected; }, 30s)) << link->problem();
    EXPECT_EQ(link->problem(), "");
    EXPECT_EQ(link->snapshot(), last);
}

TEST_F(SshHostLinkTest, TwentyHostsAtOnceFollowTheirOwnFoldersAndOneVanishingDisturbsNone) {
    constexpr int hosts = 20;
    const std::string self = statusNaming(::getpid());
    std::vector<std::unique_ptr<SshHostLink>> links;
    int drops = 0;
    for (int i = 0; i < hosts; ++i) {
        remote.write(std::to_string(i) + "/a.json", self);
        links.push_back(linkTo(remote.path() / std::to_string(i)));
        links.back()->start([&, i] { drops += links[i]->state() != State::connected; });
    }
    test::LocalSshd other;
    SshHostLink gone(loop, test::LocalSshd::host, remote.path().string(), streamScript(),
                     SshCommand{"ssh", {"-F", other.config().string()}});
    gone.start([] {});
    const auto all = [&](auto&& holds) { return std::all_of(links.begin(), links.end(), holds); };
    ASSERT_TRUE(pumpUntil(
        [&] {
            return gone.state() == State::connected &&
                   all([](const auto& link) { return link->state() == State::connected; });
        },
        20s));
    for (const auto& link : links)
        EXPECT_EQ(link->snapshot(), (RemoteSnapshot{{{"a.json", self}}, {::getpid()}}));

    other.kill();
    for (int i = 0; i < hosts; ++i)
        remote.write(std::to_string(i) + "/b.json", statusNaming(i + 1));
    EXPECT_TRUE(pumpUntil(
        [&] { return all([](const auto& link) { return link->snapshot().files.size() == 2; }); }, 10s));
    EXPECT_EQ(gone.state(), State::unreachable);
    EXPECT_EQ(drops, 0);
}

// Stand-ins for ssh: shell scripts that answer in their own way.
class SshHostLinkStandInTest : public test::QtEventLoopTest {
protected:
    fs::path standIn(const std::string& body) {
        const auto path = dir.write("ssh-" + std::to_string(++count), "#!/bin/sh\n" + body + "\n");
        fs::permissions(path, fs::perms::owner_all);
        return path;
    }

    QtMainLoop loop;
    test::TempDir dir;
    int count = 0;
};

TEST_F(SshHostLinkStandInTest, AHostThatSendsJunkOrFailsIsUnreachableWithWhyAndLeavesNoProcess) {
    const struct {
        const char* what;
        std::string body;
        std::string problem;
    } cases[] = {
        {"endless junk", "while :; do echo 'junk junk junk'; done", "the host does not send a status stream"},
        {"an endless header",
         "printf 'tovrin-status-stream 1\\nF 2 '; while :; do printf aaaaaaaaaaaaaaaa; done",
         "a line of the status stream is over 512 bytes"},
        {"a file longer than its count, then silence",
         "printf 'tovrin-status-stream 1\\nF 2 a.json\\n{}}'; exec sleep 60",
         "the file a.json is longer than its byte count"},
        {"ssh's own failure",
         "echo 'Permission denied' >&2; echo 'ssh: connect to host h: No route' >&2; exit 255",
         "ssh: connect to host h: No route"},
    };
    for (const auto& c : cases) {
        const auto before = runningChildren();
        SshHostLink link(loop, "h", "", streamScript(), SshCommand{standIn(c.body).string(), {}});
        link.start([] {});
        ASSERT_TRUE(pumpUntil([&] { return link.state() == State::unreachable; }, 10s)) << c.what;
        EXPECT_EQ(link.problem(), c.problem) << c.what;
        EXPECT_TRUE(pumpUntil([&] { return runningChildren() == before; })) << c.what;
    }
}

TEST_F(SshHostLinkStandInTest, ADestinationThatReadsAsAnOptionNeverReachesSsh) {
    const auto before = runningChildren();
    SshHostLink link(loop, "-oProxyCommand=touch x", "", streamScript(),
                     SshCommand{standIn("sleep 60").string(), {}});
    link.start([] {});
    EXPECT_EQ(link.state(), State::unreachable);
    EXPECT_NE(link.problem(), "");
    EXPECT_EQ(runningChildren(), before); // QProcess forks before start() returns
}

TEST_F(SshHostLinkStandInTest, ASlowOrSilentHostNeverBlocksTheLoopNorShowsHalfASnapshot) {
    // A first snapshot at once, then a second in pieces: the first piece, then the rest after "go".
    const std::string body =
        "cd \"$(dirname \"$0\")\"\n"
        "printf 'tovrin-status-stream 1\\nF 2 a.json\\n{}\\nP\\nE\\nF 2 a.json\\n{}\\nF 2 b'; touch part\n"
        "while [ ! -e go ]; do sleep 0.05; done\n"
        "for piece in '.json\\n{' '}\\n' 'P 1' '\\nE\\n'; do printf \"$piece\"; sleep 0.1; done\n"
        "exec sleep 60";
    SshHostLink slow(loop, "h", "", streamScript(), SshCommand{standIn(body).string(), {}});
    SshHostLink silent(loop, "h", "", streamScript(), SshCommand{standIn("exec sleep 60").string(), {}});
    std::vector<RemoteSnapshot> shown;
    slow.start([&] { shown.push_back(slow.snapshot()); });
    silent.start([] {});
    const RemoteSnapshot first{{{"a.json", "{}"}}, {}};
    const RemoteSnapshot second{{{"a.json", "{}"}, {"b.json", "{}"}}, {1}};

    ASSERT_TRUE(pumpUntil([&] { return fs::exists(dir.path() / "part"); }));
    bool ran = false;
    loop.post([&] { ran = true; });
    EXPECT_TRUE(pumpUntil([&] { return ran; }, 1s));
    pumpFor(100ms);
    EXPECT_EQ(shown, std::vector{first});

    dir.write("go", "");
    ASSERT_TRUE(pumpUntil([&] { return shown.size() == 2; }));
    EXPECT_EQ(shown, (std::vector{first, second}));
    EXPECT_EQ(silent.state(), State::connecting);
    EXPECT_EQ(silent.snapshot(), RemoteSnapshot{});
}

} // namespace
} // namespace tovrin
