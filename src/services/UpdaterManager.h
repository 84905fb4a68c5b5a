#pragma once

#include "core/DefaultsStore.h"
#include "core/HttpClient.h"
#include "core/Property.h"
#include "core/Signal.h"
#include "services/update/AppcastReading.h"
#include "services/update/UpdateConfiguration.h"
#include "services/update/UpdateFeed.h"
#include "services/update/UpdateInstaller.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tovrin {

// Where a user-started update stands, and the words the update dialog shows for it.
struct UpdateStatus {
    enum class Phase { idle, checking, available, upToDate, installing, failed };
    Phase phase = Phase::idle;
    // The release on offer (available, installing).
    std::optional<AppcastItem> release;
    // Available: whether this installation can replace itself, or belongs to a package manager.
    bool installable = false;
    std::string headline;
    std::string detail;

    bool operator==(const UpdateStatus&) const = default;
};

// The tray application's updater: tells the About window whether a user-started check can run,
// runs it, and installs, skips or puts off the release it found. Whether it can run at all is
// settled once, at construction: not configured, failed to start, or running.
class UpdaterManager {
public:
    using LogLine = std::function<void(const std::string& line)>;
    // After an installed update: start the new version in place of this one.
    using Relaunch = std::function<void()>;

    struct Ports {
        HttpClient& http;
        std::shared_ptr<const AppcastReading> reader;
        // Keeps the version the user chose to skip.
        DefaultsStore& defaults;
    };

    // Without a real signing key or a feed the updater never starts, without a word; unusable
    // settings leave one log line. `installation` is absent when it can't be told, and then no
    // release is installed here.
    UpdaterManager(UpdateConfiguration configuration, Ports ports,
                   std::optional<std::filesystem::path> installation, Relaunch relaunch, LogLine log = {});

    static bool isConfigured(std::string_view publicKey) {
        return UpdateConfiguration::hasRealKey(publicKey);
    }

    void checkForUpdates();
    // The buttons of the offer: install it, never offer this version again, or close for now.
    void installUpdate();
    void skipOfferedVersion();
    void dismiss();

    Signal<> willChange;
    Property<bool> canCheckForUpdates{willChange, false};
    Property<UpdateStatus> status{willChange, {}};

private:
    void settle(UpdateStatus next);
    template <class F> auto whileAlive(F handler);

    UpdateConfiguration m_configuration;
    DefaultsStore* m_defaults = nullptr;
    std::optional<UpdateFeed> m_feed;
    std::optional<UpdateInstaller> m_installer;
    Relaunch m_relaunch;
    bool m_started = false;
    // Answers that come after the updater is gone are dropped.
    std::shared_ptr<const bool> m_alive = std::make_shared<const bool>(true);
};

} // namespace tovrin
