#include "services/update/UpdateFeed.h"

#include "services/update/UpdateChoice.h"

#include <utility>

namespace tovrin {

UpdateFeed::UpdateFeed(HttpClient& http, std::shared_ptr<const AppcastReading> reader, std::string url)
    : m_http(http), m_reader(std::move(reader)), m_url(std::move(url)) {}

void UpdateFeed::check(const std::string& currentBuild, const std::string& skippedVersion,
                       Completion completion) {
    using R = Result<std::optional<AppcastItem>, UpdateError>;
    HttpRequest request;
    request.url = m_url;
    request.headers = {{"Accept", "application/rss+xml, application/xml, text/xml"}};
    request.timeout = Seconds(30);
    // The answer may come after this object is gone: it keeps what it needs.
    m_http.send(std::move(request), [reader = m_reader, currentBuild, skippedVersion,
                                     completion = std::move(completion)](HttpResult result) {
        if (!result)
            return completion(R::failure({UpdateError::Kind::feedUnreachable, result.error().description()}));
        const HttpResponse& response = result.value();
        if (!response.status)
            return completion(R::failure({UpdateError::Kind::feedUnreachable, "the answer was not HTTP."}));
        if (*response.status != 200)
            return completion(R::failure({UpdateError::Kind::feedRefused, std::to_string(*response.status)}));
        auto items = reader->read(response.body);
        if (!items) return completion(R::failure({UpdateError::Kind::feedUnreadable, items.error()}));
        completion(newestApplicable(items.value(), currentBuild, skippedVersion));
    });
}

} // namespace tovrin
