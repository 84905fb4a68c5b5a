#pragma once

#include "core/Clock.h"
#include "core/Result.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tovrin {

struct HttpRequest {
    std::string method = "GET";
    std::string url;
    std::vector<std::pair<std::string, std::string>> headers;
    // Absent: no body at all. Present but empty is still a body (a POST with Content-Length 0).
    std::optional<std::string> body;
    Seconds timeout{60};
};

struct HttpResponse {
    // Absent when the reply did not come over HTTP (no status line).
    std::optional<int> status;
    std::string body;
};

// Why no response came. Every HTTP status, 4xx and 5xx included, is a response, not an error.
struct TransportError {
    enum class Kind { timeout, cannotConnect, other };
    Kind kind = Kind::other;
    // The transport's own words for `other`; the kinds above have fixed texts.
    std::string text;

    std::string description() const {
        switch (kind) {
        case Kind::timeout:
            return "The request timed out.";
        case Kind::cannotConnect:
            return "Could not connect to the server.";
        case Kind::other:
            break;
        }
        return text;
    }
};

using HttpResult = Result<HttpResponse, TransportError>;

// Sends one request. The completion always comes later, on the main loop, exactly once, unless
// the client is destroyed first, in which case it never comes. Main loop only.
class HttpClient {
public:
    using Completion = std::function<void(HttpResult)>;

    virtual ~HttpClient() = default;
    virtual void send(HttpRequest request, Completion completion) = 0;
};

} // namespace tovrin
