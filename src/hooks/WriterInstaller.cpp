#include "hooks/WriterInstaller.h"

#include "core/AtomicFile.h"
#include "core/BuildInfo.h"
#include "core/Utf8.h"

namespace tovrin {
namespace fs = std::filesystem;
namespace {

std::string describe(const std::string& step, const std::error_code& error) {
    return step + ": " + error.message();
}

bool isValidUtf8(std::string_view text) {
    return Utf8::sanitized(text) == text;
}

} // namespace

WriterInstaller WriterInstaller::forHome(const fs::path& home, AdapterResources resources) {
    return {home / ".tovrin" / "agent-status.sh", std::move(resources), home / ".tovrin" / ".writer-version"};
}

std::string WriterInstaller::currentAppVersion() {
    const std::string_view version = BuildInfo::version.empty() ? "0" : BuildInfo::version;
    const std::string_view build = BuildInfo::buildNumber.empty() ? "0" : BuildInfo::buildNumber;
    return std::string(version) + " (" + std::string(build) + ")";
}

bool WriterInstaller::isStale(std::string_view appVersion) const {
    std::error_code ignored;
    if (!fs::exists(destination, ignored)) return true;
    auto content = readWholeFile(stamp);
    if (!content || !isValidUtf8(content.value())) return true;
    return Utf8::trim(content.value(), Utf8::isWhitespace) != appVersion;
}

Result<fs::path> WriterInstaller::ensureInstalled(std::string_view appVersion) const {
    using R = Result<fs::path>;
    const auto source = resources.writerSource();
    std::error_code error;
    if (!fs::exists(source, error)) return R::failure(AdapterResources::payloadMissingMessage());
    if (!isStale(appVersion)) return destination;

    fs::create_directories(destination.parent_path(), error);
    if (error) return R::failure(describe("Could not create " + destination.parent_path().string(), error));

    // Written beside the destination under a name of this process's own and renamed over it, so
    // that an agent running its hook now gets the old writer or the new one, whole, and installs
    // running side by side don't trip over each other's copies.
    auto content = readWholeFile(source);
    if (!content) return R::failure(content.error());
    if (auto written = writeFileAtomically(destination, content.value(), 0755); !written)
        return R::failure(written.error());

    // A stamp that is not written only makes the next install copy the writer again.
    (void)writeFileAtomically(stamp, appVersion);
    return destination;
}

Result<void> WriterInstaller::removeInstalled() const {
    std::error_code error;
    fs::remove(stamp, error);
    if (!existsAt(destination)) return {};
    fs::remove(destination, error);
    if (error) return Result<void>::failure(describe("Could not remove " + destination.string(), error));
    return {};
}

} // namespace tovrin
