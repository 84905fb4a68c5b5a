#pragma once

#include "hooks/HookFileStoring.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin {

// Copilot in VS Code reads hooks from the files listed in one user setting. This points that
// setting of every installed editor of the family at our hook file, through the careful store;
// a settings file the store refuses (comments, say) is reported, never touched.
class VSCodeHookRegistrar {
public:
    // One settings file that could not be changed, and the user-facing reason.
    struct SkippedSettings {
        std::filesystem::path url;
        std::string reason;
        bool operator==(const SkippedSettings&) const = default;
    };

    static constexpr std::string_view settingKey = "chat.hookFilesLocations";
    static constexpr std::string_view ourLocation = "~/.tovrin/vscode-hooks.json";
    // Turned off on register, so that an editor that also reads Claude's hooks does not run them twice.
    static constexpr std::string_view claudeLocation = "~/.claude/settings.json";

    VSCodeHookRegistrar(std::filesystem::path home, std::shared_ptr<HookFileStoring> store);

    // VS Code, VS Code Insiders, VSCodium, in this order. Does not look at the disk.
    static std::vector<std::filesystem::path> userSettingsURLs(const std::filesystem::path& home);

    // Whether any editor's User folder exists (its settings file need not).
    bool isVSCodeInstalled() const;
    // Whether any readable settings file has our location set to true.
    bool isRegistered() const;
    // `register` is a keyword: sets our location to true and Claude's to false.
    std::vector<SkippedSettings> registerHooks() const;
    // Removes both locations, and the setting when nothing else is left in it.
    std::vector<SkippedSettings> deregister() const;

    const std::filesystem::path& home() const { return m_home; }

private:
    std::vector<SkippedSettings> update(const std::function<void(nlohmann::json&)>& change) const;

    std::filesystem::path m_home;
    std::shared_ptr<HookFileStoring> m_store;
};

} // namespace tovrin
