#include "services/telemetry/TelemetryClientFactory.h"

#include "core/JsonFileDefaultsStore.h"
#include "core/UserPaths.h"
#include "services/telemetry/TelemetryManager.h"

#include <utility>

namespace tovrin {
namespace {

// The client as its holder sees it, while the factory keeps a weak hold for the end of the run.
class SharedTelemetryClient final : public TelemetrySignaling {
public:
    explicit SharedTelemetryClient(std::shared_ptr<TelemetryManager> manager)
        : m_manager(std::move(manager)) {}
    void signal(const std::string& name, const SignalParameters& parameters) override {
        m_manager->signal(name, parameters);
    }

private:
    std::shared_ptr<TelemetryManager> m_manager;
};

} // namespace

TelemetryClientFactory::TelemetryClientFactory(MainLoop& loop, HttpClient& http, const Clock& clock,
                                               DisplayFactsProvider displayFacts)
    : m_loop(loop), m_http(http), m_clock(clock), m_displayFacts(std::move(displayFacts)) {}

std::filesystem::path TelemetryClientFactory::storeFile(const std::string& appID) {
    return UserPaths::stateHome() / "tovrin" / (TelemetryManagerConfiguration::suiteName(appID) + ".json");
}

std::unique_ptr<TelemetrySignaling> TelemetryClientFactory::make(const std::string& appID) {
    auto manager = std::make_shared<TelemetryManager>(
        TelemetryManagerConfiguration(appID),
        TelemetryServices{.loop = m_loop,
                          .http = m_http,
                          .clock = m_clock,
                          .store = std::make_unique<JsonFileDefaultsStore>(storeFile(appID)),
                          .displayFacts = m_displayFacts});
    m_built = manager;
    return std::make_unique<SharedTelemetryClient>(std::move(manager));
}

void TelemetryClientFactory::terminate() {
    if (const auto manager = m_built.lock()) manager->terminate();
}

} // namespace tovrin
