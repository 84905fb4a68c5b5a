#include "services/UpdaterManager.h"

#include <cstdio>
#include <utility>

namespace tovrin {
namespace {

using Phase = UpdateStatus::Phase;

constexpr const char* skippedVersionKey = "skippedUpdateVersion";

void writeToSystemLog(const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
}

UpdateStatus told(Phase phase, std::string headline, std::string detail = {}) {
    UpdateStatus status;
    status.phase = phase;
    status.headline = std::move(headline);
    status.detail = std::move(detail);
    return status;
}

UpdateStatus offering(Phase phase, const AppcastItem& release, bool installable, std::string headline,
                      std::string detail) {
    UpdateStatus status = told(phase, std::move(headline), std::move(detail));
    status.release = release;
    status.installable = installable;
    return status;
}

std::string versionOf(const UpdateConfiguration& configuration) {
    return configuration.version + " (" + configuration.build + ")";
}

} // namespace

UpdaterManager::UpdaterManager(UpdateConfiguration configuration, Ports ports,
                               std::optional<std::filesystem::path> installation, Relaunch relaunch,
                               LogLine log)
    : m_configuration(std::move(configuration)), m_defaults(&ports.defaults),
      m_relaunch(std::move(relaunch)) {
    auto key = m_configuration.validate();
    if (!key) {
        if (key.error().kind == UpdateError::Kind::notConfigured) return;
        const LogLine& write = log ? log : LogLine(writeToSystemLog);
        write("Tovrin: updater not started — " + key.error().description());
        return;
    }
    m_feed.emplace(ports.http, std::move(ports.reader), m_configuration.feed);
    if (installation) m_installer.emplace(ports.http, std::move(*installation), key.value());
    m_started = true;
    canCheckForUpdates.set(true);
}

template <class F> auto UpdaterManager::whileAlive(F handler) {
    return [alive = std::weak_ptr<const bool>(m_alive), handler = std::move(handler)](auto result) mutable {
        if (alive.lock()) handler(std::move(result));
    };
}

void UpdaterManager::settle(UpdateStatus next) {
    const bool busy = next.phase == Phase::checking || next.phase == Phase::installing;
    if (canCheckForUpdates() != (m_started && !busy)) canCheckForUpdates.set(m_started && !busy);
    status.set(std::move(next));
}

void UpdaterManager::checkForUpdates() {
    if (!canCheckForUpdates()) return;
    settle(told(Phase::checking, "Checking for updates…"));
    const auto stored = m_defaults->object(skippedVersionKey);
    const std::string skipped = stored && stored->is_string() ? stored->get<std::string>() : std::string();
    m_feed->check(
        m_configuration.build, skipped,
        whileAlive([this](Result<std::optional<AppcastItem>, UpdateError> result) {
            if (!result) {
                return settle(
                    told(Phase::failed, "Could not check for updates.", result.error().description()));
            }
            if (!result.value()) {
                return settle(told(Phase::upToDate, std::string(upToDateText),
                                   "Version " + versionOf(m_configuration) + " is the newest version."));
            }
            const AppcastItem& release = *result.value();
            const bool installable = m_installer && m_installer->replacesItself();
            settle(offering(Phase::available, release, installable,
                            "Tovrin " + releaseName(release) + " is available.",
                            installable ? "You have version " + versionOf(m_configuration) + "."
                                        : std::string(packageManagerAdvice)));
        }));
}

void UpdaterManager::installUpdate() {
    const UpdateStatus offer = status();
    if (offer.phase != Phase::available || !offer.installable || !offer.release || !m_installer) return;
    settle(offering(Phase::installing, *offer.release, true,
                    "Installing Tovrin " + releaseName(*offer.release) + "…",
                    "Tovrin restarts when the new version is in place."));
    m_installer->install(*offer.release, whileAlive([this](Result<void, UpdateError> done) {
        if (!done) {
            return settle(told(Phase::failed, "The update was not installed.", done.error().description()));
        }
        settle({});
        if (m_relaunch) m_relaunch();
    }));
}

void UpdaterManager::skipOfferedVersion() {
    const UpdateStatus offer = status();
    if (offer.phase != Phase::available || !offer.release) return;
    m_defaults->set(skippedVersionKey, offer.release->version);
    settle({});
}

void UpdaterManager::dismiss() {
    const Phase phase = status().phase;
    if (phase == Phase::checking || phase == Phase::installing || phase == Phase::idle) return;
    settle({});
}

} // namespace tovrin
