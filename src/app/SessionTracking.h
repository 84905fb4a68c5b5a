#pragma once

#include "core/Clock.h"
#include "core/JsonFileDefaultsStore.h"
#include "core/MainLoop.h"
#include "core/PreferencesStore.h"
#include "sessions/SessionFileReader.h"
#include "sessions/SessionStore.h"

#include <memory>
#include <vector>

namespace tovrin {

// The user's settings file and the preferences read from it, as every front end has them.
struct UserSettings {
    UserSettings();

    JsonFileDefaultsStore defaults;
    PreferencesStore preferences;
};

// The session pipeline as every front end runs it: the reader over the status folder and the store
// with an inotify watcher on that folder, alerting through the given channels.
class SessionTracking {
public:
    SessionTracking(MainLoop& loop, const Clock& clock, PreferencesStore& preferences,
                    std::vector<std::shared_ptr<NotificationChannel>> channels = {});

    SessionFileReader reader;
    SessionStore store;
};

} // namespace tovrin
