#pragma once

#include "alerts/CustomSoundManager.h"
#include "alerts/NotificationBannerChannel.h"
#include "alerts/SoundCatalog.h"
#include "alerts/SoundManager.h"
#include "alerts/telegram/TelegramAPIClient.h"
#include "core/Clock.h"
#include "core/MainLoop.h"
#include "core/PreferencesStore.h"
#include "focus/SessionFocusing.h"
#include "platform/audio/LinuxSoundPlayer.h"
#include "platform/dbus/DBusDesktopNotifier.h"
#include "platform/qt/LoadableHttpClient.h"
#include "platform/secrets/SecretStoreFactory.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace tovrin {

// The alert outputs and what they stand on, built once for the life of the program.
class AlertServices {
public:
    AlertServices(MainLoop& loop, const Clock& clock, PreferencesStore& preferences,
                  const std::filesystem::path& home, const std::optional<std::filesystem::path>& shareDir);
    AlertServices(const AlertServices&) = delete;
    AlertServices& operator=(const AlertServices&) = delete;

    // Every alert goes through the channels in this order: sound, auto-focus (when there is a
    // focuser), desktop notification, Telegram.
    std::vector<std::shared_ptr<NotificationChannel>> channels(SessionFocusing* focuser);

    NotificationBannerChannel& banner() { return *m_banner; }
    DesktopNotifier& notifier() { return m_notifier; }
    SecretStoring& secrets() { return *m_secrets.store; }
    const ChosenSecretStore& secretStore() const { return m_secrets; }
    TelegramMessaging& messenger() { return m_messenger; }
    // The application's one HTTP client.
    HttpClient& http() { return m_http; }
    const SoundCatalog& soundCatalog() const { return m_catalog; }
    SoundPlayer& player() { return m_player; }

private:
    PreferencesStore& m_preferences;
    // Each sound plays in a child process, so this one never maps the sound server's libraries.
    LinuxSoundPlayer m_player;
    CustomSoundManager m_customSounds;
    SoundCatalog m_catalog;
    SoundManager m_soundManager;
    DBusDesktopNotifier m_notifier;
    std::shared_ptr<NotificationBannerChannel> m_banner;
    ChosenSecretStore m_secrets;
    LoadableHttpClient m_http;
    TelegramAPIClient m_messenger;
};

} // namespace tovrin
