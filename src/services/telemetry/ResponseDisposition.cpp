#include "services/telemetry/ResponseDisposition.h"

namespace tovrin {
namespace {

// Statuses that no retry can fix: the batch itself is wrong for the server.
const char* refusal(int status) {
    switch (status) {
    case 400:
        return "Bad Request (400)";
    case 401:
        return "Unauthorized (401)";
    case 403:
        return "Forbidden (403)";
    case 404:
        return "Not Found (404)";
    case 413:
        return "Payload Too Large (413)";
    case 422:
        return "Unprocessable Entity (422)";
    case 501:
        return "Not Implemented (501)";
    case 505:
        return "HTTP Version Not Supported (505)";
    default:
        return nullptr;
    }
}

} // namespace

ResponseDisposition ResponseDisposition::of(const HttpResult& result) {
    if (!result || !result.value().status) return {Kind::retry, {}};
    const int status = *result.value().status;
    if (status >= 200 && status <= 299) return {Kind::success, {}};
    if (const char* reason = refusal(status)) return {Kind::drop, reason};
    return {Kind::retry, {}};
}

} // namespace tovrin
