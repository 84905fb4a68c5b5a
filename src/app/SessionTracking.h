#pragma once

#include "core/Clock.h"
#include "core/JsonFileDefaultsStore.h"
#include "core/MainLoop.h"
#include "core/PreferencesStore.h"
#include "sessions/SshCommand.h"
#include "sessions/CombinedSessionReader.h"
#include "sessions/SessionFileReader.h"
#include "sessions/SessionStore.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tovrin {

// The user's settings file and the preferences read from it, as every front end has them.
struct UserSettings {
    UserSettings();

    JsonFileDefaultsStore defaults;
    PreferencesStore preferences;
};

// The session pipeline as every front end runs it: the reader over this machine's status folder
// and those of the remote hosts in the settings (followed as the settings change), and the store
// with an inotify watcher on the local folder, alerting through the given channels. Each host's
// news runs a pass.
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
    void connectHosts(const std::vector<std::string>& hosts);
    bool allAnswered() const;

    MainLoop& m_loop;
    std::optional<std::filesystem::path> m_streamScript; // none: the payload is not installed
    SshCommand m_ssh;
    std::map<std::string, bool> m_answered; // by host: has it connected or failed once
    std::function<void()> m_onAllAnswered;
    Subscription m_hostsSubscription;
};

} // namespace tovrin
