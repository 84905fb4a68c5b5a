#include "hooks/VSCodeHookRegistrar.h"

#include "core/AtomicFile.h"

namespace tovrin {
namespace fs = std::filesystem;
VSCodeHookRegistrar::VSCodeHookRegistrar(fs::path home, std::shared_ptr<HookFileStoring> store)
    : m_home(std::move(home)), m_store(std::move(store)) {}

std::vector<fs::path> VSCodeHookRegistrar::userSettingsURLs(const fs::path& home) {
    const auto config = home / ".config";
    return {config / "Code/User/settings.json", config / "Code - Insiders/User/settings.json",
            config / "VSCodium/User/settings.json"};
}

bool VSCodeHookRegistrar::isVSCodeInstalled() const {
    for (const auto& url : userSettingsURLs(m_home)) {
        if (existsAt(url.parent_path())) return true;
    }
    return false;
}

bool VSCodeHookRegistrar::isRegistered() const {
    for (const auto& url : userSettingsURLs(m_home)) {
        if (!m_store->fileExists(url)) continue;
        auto document = m_store->readObject(url);
        if (!document) continue;
        const auto setting = document.value().find(std::string(settingKey));
        if (setting == document.value().end() || !setting->is_object()) continue;
        const auto ours = setting->find(std::string(ourLocation));
        if (ours != setting->end() && ours->is_boolean() && ours->get<bool>()) return true;
    }
    return false;
}

std::vector<VSCodeHookRegistrar::SkippedSettings> VSCodeHookRegistrar::registerHooks() const {
    return update([](nlohmann::json& locations) {
        locations[std::string(ourLocation)] = true;
        locations[std::string(claudeLocation)] = false;
    });
}

std::vector<VSCodeHookRegistrar::SkippedSettings> VSCodeHookRegistrar::deregister() const {
    return update([](nlohmann::json& locations) {
        locations.erase(std::string(ourLocation));
        locations.erase(std::string(claudeLocation));
    });
}

std::vector<VSCodeHookRegistrar::SkippedSettings>
VSCodeHookRegistrar::update(const std::function<void(nlohmann::json&)>& change) const {
    std::vector<SkippedSettings> skipped;
    for (const auto& url : userSettingsURLs(m_home)) {
        // No User folder: that editor is not installed, and nothing is created for it.
        if (!existsAt(url.parent_path())) continue;
        auto read = m_store->readObject(url);
        if (!read) {
            skipped.push_back({url, read.error()});
            continue;
        }
        nlohmann::json document = std::move(read).value();
        const std::string key(settingKey);
        nlohmann::json locations = document.contains(key) ? document[key] : nlohmann::json::object();
        // The setting is the editor's; a shape we don't know is left for the user to mend.
        if (!locations.is_object()) {
            skipped.push_back({url, "its " + key + " setting is not an object"});
            continue;
        }
        // Until our location is in it, the file is the user's own and is kept before the first write.
        const bool isUsersOwn = !locations.contains(std::string(ourLocation));
        change(locations);
        if (locations.empty())
            document.erase(key);
        else
            document[key] = std::move(locations);
        if (auto written = m_store->write(document, url, isUsersOwn); !written)
            skipped.push_back({url, written.error()});
    }
    return skipped;
}

} // namespace tovrin
