// Ten remote hosts of 100 sessions each, all served by one private sshd on 127.0.0.1:
//  - from an atomic write that turns one remote session to waiting, to the first channel's
//    notifyWaiting, through the real links, combined reader and store on the Qt main loop;
//  - the resident set of that pipeline after the first full snapshots, against 1,000 local
//    files read by SessionFileReader (measured in a child process, so neither taints the other).
// Both cases start from the same folder contents and the same store; the local folder is empty
// in the remote case.

#include "BenchStatusFile.h"
#include "core/Iso8601.h"
#include "core/PreferencesStore.h"
#include "hooks/AdapterResources.h"
#include "platform/linux/StatusDirectoryWatcher.h"
#include "platform/qt/QtMainLoop.h"
#include "platform/ssh/SshHostLink.h"
#include "sessions/CombinedSessionReader.h"
#include "sessions/SessionFileReader.h"
#include "sessions/SessionStore.h"
#include "support/ChildProcesses.h"
#include "support/LocalSshd.h"
#include "support/MemoryDefaultsStore.h"
#include "support/TempDir.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace tovrin {
namespace {

namespace fs = std::filesystem;
using Steady = std::chrono::steady_clock;
constexpr int kHosts = 10;
constexpr int kSessionsPerHost = 100;
constexpr int kSessions = kHosts * kSessionsPerHost;
constexpr int kWrites = 30;
constexpr double kDebounce = 0.2;

// Notes when it is first told of new waiting sessions, and wakes the waiting event loop.
class TimingChannel final : public NotificationChannel {
public:
    void notifyWaiting(const std::vector<AgentSession>& newlyWaiting,
                       const std::vector<AgentSession>&) override {
        notifiedAt = Steady::now();
        lastId = newlyWaiting.empty() ? "" : newlyWaiting.front().id();
        if (wake) wake();
    }
    void remindWaiting(const std::vector<AgentSession>&) override {}

    Steady::time_point notifiedAt;
    std::string lastId;
    std::function<void()> wake;
};

std::string statusFile(int index, const char* state) {
    return bench::statusFile(index, "claude-code", state, std::chrono::system_clock::now());
}

std::string fileName(int index) {
    return "session-" + std::to_string(index) + ".json";
}

// As the status writer does: a hidden temporary file in the same folder, then a rename.
void writeAtomically(const fs::path& dir, int index, const char* state) {
    const auto temp = dir / (".session-" + std::to_string(index) + "." + std::to_string(::getpid()) + ".tmp");
    std::ofstream(temp, std::ios::binary) << statusFile(index, state) << '\n';
    fs::rename(temp, dir / fileName(index));
}

// A figure in kB of a /proc file such as "status" (VmRSS) or "smaps_rollup" (Pss), in bytes;
// 0 if the process is gone.
long procBytes(const std::string& file, const char* key) {
    std::ifstream in("/proc/" + file);
    for (std::string line; std::getline(in, line);)
        if (line.starts_with(key) && line[std::strlen(key)] == ':')
            return std::stol(line.substr(line.find(':') + 1)) * 1024;
    return 0;
}

std::string hostName(int index) {
    std::string name = "host-";
    return name += std::to_string(index);
}

double percentile(std::vector<double> values, double p) {
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(p * static_cast<double>(values.size() - 1))];
}

std::unique_ptr<SessionStore> makeStore(SessionReading& reader, PreferencesStore& preferences,
                                        std::shared_ptr<NotificationChannel> channel,
                                        const fs::path& localDir, MainLoop& loop, const Clock& clock) {
    return std::make_unique<SessionStore>(
        reader, preferences, std::vector<std::shared_ptr<NotificationChannel>>{std::move(channel)},
        [localDir](std::function<void()> onChange) {
            return std::make_unique<StatusDirectoryWatcher>(localDir, Seconds(kDebounce),
                                                            std::move(onChange));
        },
        loop, clock);
}

// Runs the event loop until `done` holds or `limit` passes; whether it held.
bool pumpUntil(const std::function<bool()>& done, std::chrono::milliseconds limit) {
    const auto deadline = Steady::now() + limit;
    while (!done()) {
        if (Steady::now() > deadline) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

// The child process of the local-only case: prints "<resident before> <resident after>".
int localMemory() {
    test::TempDir local;
    for (int i = 0; i < kSessions; ++i)
        local.write(fileName(i), statusFile(i, "working"));
    QtMainLoop loop;
    SystemClock clock;
    MemoryDefaultsStore defaults;
    PreferencesStore preferences(defaults);
    const long before = procBytes("self/status", "VmRSS");
    SessionFileReader reader(local.path());
    auto store = makeStore(reader, preferences, std::make_shared<TimingChannel>(), local.path(), loop, clock);
    store->start();
    if (store->sessions().size() != kSessions) return 1;
    std::printf("%ld %ld\n", before, procBytes("self/status", "VmRSS"));
    return 0;
}

} // namespace
} // namespace tovrin

int main(int argc, char** argv) {
    using namespace tovrin;
    QCoreApplication app(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "--local-memory") == 0) return localMemory();
    if (!test::LocalSshd::available()) {
        std::printf("remote hosts: skipped, sshd or ssh-keygen is not installed\n");
        return 0;
    }
    const auto resources =
        AdapterResources::locate(fs::path(TOVRIN_BUILD_SHARE_DIR), [](const char*) { return std::nullopt; });
    if (!resources) {
        std::fprintf(stderr, "the payload is missing from %s\n", TOVRIN_BUILD_SHARE_DIR);
        return 1;
    }

    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {"--local-memory"});
    long localBefore = 0, localAfter = 0;
    if (!child.waitForFinished(120000) || child.exitCode() != 0 ||
        std::sscanf(child.readAllStandardOutput().constData(), "%ld %ld", &localBefore, &localAfter) != 2) {
        std::fprintf(stderr, "the local-only case failed\n");
        return 1;
    }

    test::LocalSshd sshd;
    test::TempDir remote, local;
    for (int h = 0; h < kHosts; ++h)
        for (int i = 0; i < kSessionsPerHost; ++i)
            remote.write((fs::path(std::to_string(h)) / fileName(i)).string(), statusFile(i, "working"));

    QtMainLoop loop;
    SystemClock clock;
    MemoryDefaultsStore defaults;
    PreferencesStore preferences(defaults);
    auto channel = std::make_shared<TimingChannel>();
    const long remoteBefore = procBytes("self/status", "VmRSS");
    SessionFileReader localReader(local.path());
    CombinedSessionReader reader(localReader);
    auto store = makeStore(reader, preferences, channel, local.path(), loop, clock);
    store->start();
    std::vector<double> passesMs;
    std::vector<SshHostLink*> links;
    const auto connectStart = Steady::now();
    for (int h = 0; h < kHosts; ++h) {
        auto link = std::make_unique<SshHostLink>(
            loop, test::LocalSshd::host, (remote.path() / std::to_string(h)).string(),
            resources->remoteStreamScript(), SshCommand{"ssh", {"-F", sshd.config().string()}});
        links.push_back(link.get());
        reader.addHost(std::make_unique<RemoteHostSessions>(hostName(h), std::move(link)));
    }
    // As SessionTracking wires them: each host's news runs a pass.
    for (auto* link : links)
        link->start([&] {
            const auto start = Steady::now();
            store->refresh();
            passesMs.push_back(std::chrono::duration<double, std::milli>(Steady::now() - start).count());
        });
    if (!pumpUntil([&] { return store->sessions().size() == kSessions; }, std::chrono::minutes(3))) {
        std::fprintf(stderr, "only %zu of %d remote sessions arrived\n", store->sessions().size(), kSessions);
        return 1;
    }
    const double connectS = std::chrono::duration<double>(Steady::now() - connectStart).count();
    const long remoteAfter = procBytes("self/status", "VmRSS");
    long sshResident = 0, sshProportional = 0;
    int sshCount = 0;
    for (const auto& process : test::childProcesses())
        if (process.name == "ssh") {
            sshResident += procBytes(std::to_string(process.pid) + "/status", "VmRSS");
            sshProportional += procBytes(std::to_string(process.pid) + "/smaps_rollup", "Pss");
            ++sshCount;
        }

    std::vector<double> latenciesMs;
    passesMs.clear();
    for (int i = 0; i < kWrites; ++i) {
        const int host = i % kHosts, session = i / kHosts;
        const std::string expected = hostName(host) + ":";
        QEventLoop wait;
        channel->wake = [&] { wait.quit(); };
        QTimer::singleShot(15000, &wait, &QEventLoop::quit);
        const auto before = channel->notifiedAt;
        const auto written = Steady::now();
        writeAtomically(remote.path() / std::to_string(host), session, "waiting");
        wait.exec();
        if (channel->notifiedAt == before || !channel->lastId.starts_with(expected)) {
            std::fprintf(stderr, "write %d: no alert for %s within 15 s\n", i, expected.c_str());
            return 1;
        }
        latenciesMs.push_back(
            std::chrono::duration<double, std::milli>(channel->notifiedAt - written).count());
        // Lets the host go back to waiting for changes, so that writes do not overlap.
        pumpUntil([] { return false; }, std::chrono::milliseconds(300));
    }

    const auto mib = [](long bytes) { return static_cast<double>(bytes) / (1024.0 * 1024.0); };
    std::printf("remote hosts: %d hosts x %d sessions over one local sshd\n", kHosts, kSessionsPerHost);
    std::printf("  first full snapshots after %.1f s\n", connectS);
    std::printf("  remote write -> notifyWaiting over %d writes: p50 %.0f ms, p95 %.0f ms, max %.0f ms\n",
                kWrites, percentile(latenciesMs, 0.5), percentile(latenciesMs, 0.95),
                percentile(latenciesMs, 1.0));
    std::printf("  pass per host snapshot (%d sessions): p50 %.1f ms\n", kSessions,
                percentile(passesMs, 0.5));
    std::printf("  resident: remote %.1f MiB (+%.1f MiB, %ld B/session); local-only %.1f MiB (+%.1f MiB, "
                "%ld B/session)\n",
                mib(remoteAfter), mib(remoteAfter - remoteBefore), (remoteAfter - remoteBefore) / kSessions,
                mib(localAfter), mib(localAfter - localBefore), (localAfter - localBefore) / kSessions);
    std::printf("  and %d ssh clients: %.1f MiB resident together, %.1f MiB proportional\n", sshCount,
                mib(sshResident), mib(sshProportional));
    return 0;
}
