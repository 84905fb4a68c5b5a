#include "services/UpdaterManager.h"

#include "core/BuildInfo.h"

#include <cstdio>
#include <utility>

namespace tovrin {

namespace {

bool isWebAddress(std::string_view address) {
    for (std::string_view scheme : {"https://", "http://"}) {
        if (address.starts_with(scheme) && address.size() > scheme.size()) return true;
    }
    return false;
}

void writeToSystemLog(const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
}

} // namespace

UpdaterManager::UpdaterManager(std::string feed, std::string_view publicKey, OpenAddress openAddress,
                               LogLine log)
    : m_feed(std::move(feed)), m_openAddress(std::move(openAddress)) {
    if (!isConfigured(publicKey) || m_feed.empty()) return;
    if (!isWebAddress(m_feed)) {
        const LogLine& write = log ? log : LogLine(writeToSystemLog);
        write("Tovrin: updater not started — the update address \"" + m_feed + "\" is not a web address");
        return;
    }
    canCheckForUpdates.set(true);
}

UpdaterManager::UpdaterManager(OpenAddress openAddress)
    : UpdaterManager(std::string(BuildInfo::updateFeed), BuildInfo::updateKey, std::move(openAddress)) {}

bool UpdaterManager::isConfigured(std::string_view publicKey) {
    return !publicKey.empty() && !publicKey.starts_with("PUT-YOUR");
}

void UpdaterManager::checkForUpdates() {
    if (canCheckForUpdates() && m_openAddress) m_openAddress(m_feed);
}

} // namespace tovrin
