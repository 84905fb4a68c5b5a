#pragma once

#include "core/HttpClient.h"
#include "core/Result.h"
#include "services/update/AppcastItem.h"
#include "services/update/AppcastReading.h"
#include "services/update/UpdateError.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tovrin {

// Fetches the update feed and picks the release to offer from it.
class UpdateFeed {
public:
    // The release on offer, or none when the running build is up to date.
    using Completion = std::function<void(Result<std::optional<AppcastItem>, UpdateError>)>;

    UpdateFeed(HttpClient& http, std::shared_ptr<const AppcastReading> reader, std::string url);

    // The newest release above `currentBuild` and above `skippedVersion` (empty: none skipped). The
    // completion comes later on the main loop, like the HTTP client's.
    void check(const std::string& currentBuild, const std::string& skippedVersion, Completion completion);

private:
    HttpClient& m_http;
    std::shared_ptr<const AppcastReading> m_reader;
    std::string m_url;
};

} // namespace tovrin
