#include "app/SessionTracking.h"

#include "core/UserPaths.h"
#include "platform/linux/StatusDirectoryWatcher.h"

namespace tovrin {
namespace {

constexpr Seconds watcherDebounce{0.2};

} // namespace

UserSettings::UserSettings() : defaults(UserPaths::defaultsFile()), preferences(defaults) {}

SessionTracking::SessionTracking(MainLoop& loop, const Clock& clock, PreferencesStore& preferences,
                                 std::vector<std::shared_ptr<NotificationChannel>> channels)
    : reader(UserPaths::statusDirectory()),
      store(
          reader, preferences, std::move(channels),
          [directory = reader.directory()](std::function<void()> onChange) {
              return std::make_unique<StatusDirectoryWatcher>(directory, watcherDebounce,
                                                              std::move(onChange));
          },
          loop, clock) {}

} // namespace tovrin
