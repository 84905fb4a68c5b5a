#include "hooks/AdapterResources.h"

#include "core/BuildInfo.h"
#include "core/UserPaths.h"

#include <cstdlib>

namespace tovrin {
namespace {

std::filesystem::path expandTilde(const std::string& path, const AdapterResources::Environment& environment) {
    if (path != "~" && !path.starts_with("~/")) return path;
    std::filesystem::path home;
    if (auto h = environment("HOME"); h && !h->empty())
        home = *h;
    else
        home = UserPaths::home();
    return path == "~" ? home : home / path.substr(2);
}

} // namespace

std::optional<AdapterResources> AdapterResources::locate(const std::optional<std::filesystem::path>& shareDir,
                                                         const Environment& environment) {
    if (auto dir = environment("TOVRIN_ADAPTERS_DIR"); dir && !dir->empty())
        return AdapterResources{expandTilde(*dir, environment)};
    if (!shareDir) return std::nullopt;
    auto root = *shareDir / "Adapters";
    std::error_code error;
    if (!std::filesystem::exists(root, error)) return std::nullopt;
    return AdapterResources{std::move(root)};
}

AdapterResources::Environment AdapterResources::processEnvironment() {
    return [](const char* name) -> std::optional<std::string> {
        if (const char* value = std::getenv(name)) return std::string(value);
        return std::nullopt;
    };
}

std::string AdapterResources::payloadMissingMessage() {
    return "Tovrin's hook files are missing from the installation. Reinstall Tovrin from " +
           std::string(BuildInfo::website) + ".";
}

} // namespace tovrin
