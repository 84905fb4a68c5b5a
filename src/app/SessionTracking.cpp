#include "app/SessionTracking.h"

#include "core/UserPaths.h"
#include "platform/linux/StatusDirectoryWatcher.h"

namespace tovrin {
namespace {

constexpr Seconds watcherDebounce{0.2};

} // namespace

SessionTracking::SessionTracking(MainLoop& loop, const Clock& clock, const ChannelFactory& makeChannels)
    : defaults(UserPaths::defaultsFile()), preferences(defaults), reader(UserPaths::statusDirectory()),
      store(
          reader, preferences,
          makeChannels ? makeChannels(preferences) : std::vector<std::shared_ptr<NotificationChannel>>{},
          [directory = reader.directory()](std::function<void()> onChange) {
              return std::make_unique<StatusDirectoryWatcher>(directory, watcherDebounce,
                                                              std::move(onChange));
          },
          loop, clock) {}

} // namespace tovrin
