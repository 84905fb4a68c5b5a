#include "platform/qt/LoadableHttpClient.h"

#include "platform/linux/InstallationPaths.h"
#include "platform/linux/SharedLibrary.h"
#include "platform/qt/HttpClientModule.h"

#include <utility>

namespace tovrin {

LoadableHttpClient::LoadableHttpClient(MainLoop& loop, std::optional<std::filesystem::path> module)
    : m_loop(loop), m_module(module ? std::move(module) : InstallationPaths::httpModule()) {}

LoadableHttpClient::~LoadableHttpClient() = default;

void LoadableHttpClient::send(HttpRequest request, Completion completion) {
    if (!m_loaded) {
        m_loaded = true; // one attempt: a module that failed to load won't load on a retry either
        const auto library = m_module ? SharedLibrary::load(m_module->c_str()) : std::nullopt;
        CreateHttpClient* create = nullptr;
        if (library && library->resolve(createHttpClientSymbol, create)) m_client.reset(create());
    }
    if (m_client) {
        m_client->send(std::move(request), std::move(completion));
        return;
    }
    const std::string where = m_module ? m_module->string() : std::string("the installation");
    m_loop.post([alive = std::weak_ptr(m_alive), completion = std::move(completion), where] {
        if (alive.expired()) return;
        completion(HttpResult::failure(
            {TransportError::Kind::other, "HTTP support is missing: " + where + " could not be loaded."}));
    });
}

} // namespace tovrin
