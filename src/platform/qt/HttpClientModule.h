#pragma once

namespace tovrin {

class HttpClient;

// The one entry point of the HTTP module: a new client on Qt Network, owned by the caller.
using CreateHttpClient = HttpClient*();
inline constexpr const char* createHttpClientSymbol = "tovrin_create_http_client";

} // namespace tovrin
