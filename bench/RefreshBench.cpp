// One full refresh pass over a real status folder, against the floor of listing the folder and
// reading every file whole without parsing. The pass should stay within twice the floor.

#include "BenchStatusFile.h"
#include "core/Clock.h"
#include "core/Iso8601.h"
#include "core/MainLoop.h"
#include "core/PreferencesStore.h"
#include "sessions/SessionFileReader.h"
#include "sessions/SessionStore.h"
#include "support/MemoryDefaultsStore.h"

#include <benchmark/benchmark.h>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace tovrin {
namespace {

// The store needs a loop for its timers and posted passes; the bench calls refresh() itself.
class IdleLoop final : public MainLoop {
public:
    void post(std::function<void()>) override {}
    TimerHandle repeat(Seconds, std::function<void()>) override { return TimerHandle{}; }
    TimerHandle once(Seconds, std::function<void()>) override { return TimerHandle{}; }
};

// Tools and states in turn, the newest stamps spread over the last 40 seconds.
std::string statusFile(int index, TimePoint now) {
    static const char* const tools[] = {"claude-code", "codex-cli", "cursor-cli", "copilot-cli"};
    static const char* const states[] = {"working", "waiting", "idle"};
    return bench::statusFile(index, tools[index % 4], states[index % 3], addSeconds(now, -(index % 40)));
}

// A temporary status folder with `count` files, removed at destruction.
class StatusFolder {
public:
    explicit StatusFolder(int count) {
        std::string pattern = (std::filesystem::temp_directory_path() / "tovrin-bench-XXXXXX").string();
        if (!::mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
        m_path = pattern;
        const TimePoint now = std::chrono::system_clock::now();
        for (int i = 0; i < count; ++i) {
            std::ofstream out(m_path / ("session-" + std::to_string(i) + ".json"), std::ios::binary);
            out << statusFile(i, now);
            if (!out) throw std::runtime_error("could not write a status file");
        }
    }
    ~StatusFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    StatusFolder(const StatusFolder&) = delete;
    StatusFolder& operator=(const StatusFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

std::map<int, std::unique_ptr<StatusFolder>>& folders() {
    static std::map<int, std::unique_ptr<StatusFolder>> all;
    return all;
}

const StatusFolder& folderOf(int count) {
    auto& slot = folders()[count];
    if (!slot) slot = std::make_unique<StatusFolder>(count);
    return *slot;
}

void BM_RefreshPass(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    MemoryDefaultsStore defaults;
    PreferencesStore preferences(defaults);
    SessionFileReader reader(folderOf(count).path());
    IdleLoop loop;
    SystemClock clock;
    SessionStore store(reader, preferences, {}, {}, loop, clock);

    store.refresh();
    if (store.sessions().size() != static_cast<std::size_t>(count)) {
        state.SkipWithError("not every status file survived the pass");
        return;
    }
    for (auto _ : state) {
        store.refresh();
        benchmark::DoNotOptimize(store.sessions().data());
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["files"] = count;
}

// The reader's share of the pass: listing, reading and decoding, without the store's steps.
void BM_ReadAll(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    SessionFileReader reader(folderOf(count).path());
    for (auto _ : state) {
        auto sessions = reader.readAll();
        benchmark::DoNotOptimize(sessions.data());
        if (sessions.size() != static_cast<std::size_t>(count)) {
            state.SkipWithError("not every status file decoded");
            return;
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["files"] = count;
}

// What any pass must pay: list the folder and read each file whole, no parsing.
void BM_ReadFloor(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const std::string path = folderOf(count).path().string();
    std::vector<char> buffer(64 * 1024);
    std::size_t bytes = 0;
    for (auto _ : state) {
        int files = 0;
        DIR* dir = ::opendir(path.c_str());
        if (!dir) {
            state.SkipWithError("opendir failed");
            return;
        }
        const int dirFd = ::dirfd(dir);
        while (const dirent* entry = ::readdir(dir)) {
            if (entry->d_name[0] == '.') continue;
            const int fd = ::openat(dirFd, entry->d_name, O_RDONLY | O_CLOEXEC);
            if (fd < 0) continue;
            ssize_t n = 0;
            while ((n = ::read(fd, buffer.data(), buffer.size())) > 0)
                bytes += static_cast<std::size_t>(n);
            ::close(fd);
            ++files;
        }
        ::closedir(dir);
        benchmark::DoNotOptimize(bytes);
        if (files != count) {
            state.SkipWithError("unexpected number of files");
            return;
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["files"] = count;
}

BENCHMARK(BM_RefreshPass)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReadAll)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReadFloor)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);

// Keeps the best wall time per benchmark and folder size, for the summary table.
class SummaryReporter final : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const auto& run : runs) {
            // Single runs, or the medians when only aggregates are reported.
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (run.error_occurred || (run.run_type != Run::RT_Iteration && !median)) continue;
            const auto files = run.counters.find("files");
            if (files == run.counters.end()) continue;
            const double seconds =
                run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
            auto& best = m_best[run.run_name.function_name][static_cast<int>(files->second.value)];
            if (best == 0 || seconds < best) best = seconds;
        }
    }

    void printSummary() const {
        const auto pass = m_best.find("BM_RefreshPass");
        const auto read = m_best.find("BM_ReadAll");
        const auto floor = m_best.find("BM_ReadFloor");
        if (pass == m_best.end() || floor == m_best.end()) return;
        std::printf("\n%8s %12s %12s %12s %8s %14s\n", "files", "pass (us)", "readAll (us)", "floor (us)",
                    "pass/fl", "pass/file (us)");
        for (const auto& [files, passSeconds] : pass->second) {
            const auto f = floor->second.find(files);
            if (f == floor->second.end()) continue;
            double readSeconds = 0;
            if (read != m_best.end() && read->second.contains(files)) readSeconds = read->second.at(files);
            std::printf("%8d %12.1f %12.1f %12.1f %8.2f %14.2f\n", files, passSeconds * 1e6,
                        readSeconds * 1e6, f->second * 1e6, passSeconds / f->second,
                        passSeconds * 1e6 / files);
        }
    }

private:
    std::map<std::string, std::map<int, double>> m_best;
};

} // namespace
} // namespace tovrin

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    tovrin::SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printSummary();
    tovrin::folders().clear();
    benchmark::Shutdown();
    return 0;
}
