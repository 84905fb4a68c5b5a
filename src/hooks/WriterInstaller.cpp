#include "hooks/WriterInstaller.h"

#include "core/AtomicFile.h"
#include "core/BuildInfo.h"
#include "core/Utf8.h"

namespace tovrin {
namespace fs = std::filesystem;
namespace {

bool isValidUtf8(std::string_view text) {
    return Utf8::sanitized(text) == text;
}

} // namespace

WriterInstaller WriterInstaller::forHome(const fs::path& home, AdapterResources resources,
                                         std::shared_ptr<WriterFiles> files) {
    WriterInstaller installer{home / ".tovrin" / "agent-status.sh", std::move(resources),
                              home / ".tovrin" / ".writer-version"};
    if (files) installer.files = std::move(files);
    return installer;
}

std::string WriterInstaller::currentAppVersion() {
    const std::string_view version = BuildInfo::version.empty() ? "0" : BuildInfo::version;
    const std::string_view build = BuildInfo::buildNumber.empty() ? "0" : BuildInfo::buildNumber;
    return std::string(version) + " (" + std::string(build) + ")";
}

bool WriterInstaller::isStale(std::string_view appVersion) const {
    if (!files->exists(destination)) return true;
    const auto content = files->read(stamp);
    if (!content || !isValidUtf8(*content)) return true;
    return Utf8::trim(*content, Utf8::isWhitespace) != appVersion;
}

Result<fs::path> WriterInstaller::ensureInstalled(std::string_view appVersion) const {
    using R = Result<fs::path>;
    const auto source = resources.writerSource();
    std::error_code error;
    if (!fs::exists(source, error)) return R::failure(AdapterResources::payloadMissingMessage());
    if (!isStale(appVersion)) return destination;

    // Written beside the destination under a name of this process's own and renamed over it, so
    // that an agent running its hook now gets the old writer or the new one, whole, and installs
    // running side by side don't trip over each other's copies.
    auto content = readWholeFile(source);
    if (!content) return R::failure(content.error());
    if (auto written = files->replace(destination, content.value(), 0755); !written)
        return R::failure(written.error());

    // A stamp that is not written only makes the next install copy the writer again.
    (void)files->replace(stamp, appVersion, 0644);
    return destination;
}

Result<void> WriterInstaller::removeInstalled() const {
    (void)files->erase(stamp);
    return files->erase(destination);
}

} // namespace tovrin
