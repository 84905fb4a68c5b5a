#include "app/AlertServices.h"

#include "alerts/AutoFocusChannel.h"
#include "alerts/LocalChannel.h"
#include "alerts/telegram/TelegramChannel.h"

namespace tovrin {

AlertServices::AlertServices(MainLoop& loop, const Clock& clock, PreferencesStore& preferences,
                             const std::filesystem::path& home,
                             const std::optional<std::filesystem::path>& shareDir)
    : m_preferences(preferences), m_customSounds(home / ".tovrin" / "sounds"),
      m_catalog(shareDir.value_or(std::filesystem::path()) / "Sounds", m_customSounds, m_player),
      m_soundManager(clock, m_catalog, m_player),
      m_banner(std::make_shared<NotificationBannerChannel>(preferences, m_notifier)),
      m_secrets(chooseSecretStore()), m_http(loop), m_messenger(m_http, loop) {}

std::vector<std::shared_ptr<NotificationChannel>> AlertServices::channels(SessionFocusing* focuser) {
    std::vector<std::shared_ptr<NotificationChannel>> list;
    list.push_back(std::make_shared<LocalChannel>(m_soundManager, m_preferences));
    if (focuser) list.push_back(std::make_shared<AutoFocusChannel>(*focuser, m_preferences));
    list.push_back(m_banner);
    list.push_back(std::make_shared<TelegramChannel>(m_messenger, *m_secrets.store, m_preferences));
    return list;
}

} // namespace tovrin
