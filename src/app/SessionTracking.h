#pragma once

#include "core/Clock.h"
#include "core/JsonFileDefaultsStore.h"
#include "core/MainLoop.h"
#include "core/PreferencesStore.h"
#include "sessions/SessionFileReader.h"
#include "sessions/SessionStore.h"

#include <functional>
#include <memory>
#include <vector>

namespace tovrin {

// The session pipeline as every front end runs it: the user's settings, the reader over the
// status folder, and the store with an inotify watcher on that folder.
class SessionTracking {
public:
    using ChannelFactory =
        std::function<std::vector<std::shared_ptr<NotificationChannel>>(PreferencesStore&)>;

    SessionTracking(MainLoop& loop, const Clock& clock, const ChannelFactory& makeChannels = {});

    JsonFileDefaultsStore defaults;
    PreferencesStore preferences;
    SessionFileReader reader;
    SessionStore store;
};

} // namespace tovrin
