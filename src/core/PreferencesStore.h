#pragma once

#include "core/AutoFocusMode.h"
#include "core/DefaultsStore.h"
#include "core/Property.h"
#include "core/Signal.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace tovrin {

// The one holder of user settings. Each setting is loaded once, observable, and written back
// to the defaults store under its own name on every assignment. Main loop only.
class PreferencesStore {
public:
    explicit PreferencesStore(DefaultsStore& defaults);
    PreferencesStore(const PreferencesStore&) = delete;
    PreferencesStore& operator=(const PreferencesStore&) = delete;

    // Fires before any setting takes a new value.
    Signal<> objectWillChange;

    Property<std::int64_t> ttlSeconds;
    Property<bool> soundEnabled;
    Property<std::string> alertSound;
    Property<bool> notificationBannerEnabled;
    Property<AutoFocusMode> autoFocusMode;
    Property<bool> repeatReminderEnabled;
    Property<std::int64_t> repeatReminderSeconds;
    Property<bool> showFloatingChip;
    Property<bool> chipOnlyWhenWaiting;
    Property<double> chipOpacity;
    Property<bool> flagSilentWorking;
    Property<bool> usageAnalyticsEnabled;
    Property<bool> telegramEnabled;
    Property<std::set<std::string>> disabledTools;
    // ssh destinations whose status folders are watched too, in the order they were added.
    Property<std::vector<std::string>> remoteHosts;

    // Enables or disables one tool id; the whole set is written even when it did not change.
    void setTool(const std::string& id, bool enabled);
    bool isToolEnabled(const std::string& id) const { return !disabledTools().contains(id); }

    DefaultsStore& defaults() const { return m_defaults; }

private:
    DefaultsStore& m_defaults;
};

} // namespace tovrin
