#pragma once

#include "core/HttpClient.h"
#include "core/MainLoop.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace tovrin {

// HTTP through the client of the HTTP module (Qt Network and what it links: Kerberos, proxy
// discovery, TLS), which is loaded at the first request. Most runs never send one, as only
// Telegram alerts do, and they are spared loading it all.
class LoadableHttpClient final : public HttpClient {
public:
    // `module` defaults to the installation's (see InstallationPaths::httpModule).
    explicit LoadableHttpClient(MainLoop& loop, std::optional<std::filesystem::path> module = std::nullopt);
    ~LoadableHttpClient() override;
    LoadableHttpClient(const LoadableHttpClient&) = delete;
    LoadableHttpClient& operator=(const LoadableHttpClient&) = delete;

    // Without the module, every request fails with a transport error, on the main loop.
    void send(HttpRequest request, Completion completion) override;

private:
    MainLoop& m_loop;
    std::optional<std::filesystem::path> m_module;
    bool m_loaded = false;
    std::unique_ptr<HttpClient> m_client;
    // Failures are answered later, and not at all once the client is gone.
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace tovrin
