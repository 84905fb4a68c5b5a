#pragma once

#include "core/Property.h"
#include "core/Signal.h"

#include <functional>
#include <string>
#include <string_view>

namespace tovrin {

// Tells the About window whether a user-started update check can run, and runs it. On Linux a check
// opens the update address (the download page) in the browser. Whether it can run is settled once,
// at construction: not configured, failed to start, or running.
class UpdaterManager {
public:
    using OpenAddress = std::function<void(const std::string& address)>;
    using LogLine = std::function<void(const std::string& line)>;

    // A build without a real signing key, or without an update address, never starts the updater.
    UpdaterManager(std::string feed, std::string_view publicKey, OpenAddress openAddress, LogLine log = {});
    // The updater as this build was configured.
    explicit UpdaterManager(OpenAddress openAddress);

    // A key is real when it isn't empty and isn't the template's placeholder ("PUT-YOUR…").
    static bool isConfigured(std::string_view publicKey);

    void checkForUpdates();

    Signal<> willChange;
    Property<bool> canCheckForUpdates{willChange, false};

private:
    std::string m_feed;
    OpenAddress m_openAddress;
};

} // namespace tovrin
