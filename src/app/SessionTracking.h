#pragma once

#include "core/Clock.h"
#include "core/JsonFileDefaultsStore.h"
#include "core/MainLoop.h"
#include "core/PreferencesStore.h"
#include "sessions/CombinedSessionReader.h"
#include "sessions/SessionFileReader.h"
#include "sessions/SessionStore.h"

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace tovrin {

// The user's settings file and the preferences read from it, as every front end has them.
struct UserSettings {
    UserSettings();

    JsonFileDefaultsStore defaults;
    PreferencesStore preferences;
};

// The session pipeline as every front end runs it: the reader over this machine's status folder
// and those of the remote hosts in the settings, and the store with an inotify watcher on the
// local folder, alerting through the given channels. Each host's news runs a pass.
class SessionTracking {
public:
    SessionTracking(MainLoop& loop, const Clock& clock, PreferencesStore& preferences,
                    std::vector<std::shared_ptr<NotificationChannel>> channels = {});

    // Runs the event loop until every remote host has answered or failed once, at most `limit`:
    // for a one-off look that should include them.
    void awaitHosts(std::chrono::milliseconds limit);

    SessionFileReader localReader;
    CombinedSessionReader reader;
    SessionStore store;

private:
    bool allAnswered() const;

    std::vector<bool> m_answered;
    std::function<void()> m_onAllAnswered;
};

} // namespace tovrin
