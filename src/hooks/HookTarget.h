#pragma once

#include "hooks/MergeStrategy.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tovrin {

// One agent's configuration file that hooks can be installed into.
struct HookTarget {
    std::string id;
    std::string displayName;
    std::string templateName;
    std::filesystem::path configPath;
    MergeStrategy strategy;
    bool isDefault = false;
    std::optional<std::string> note;
    // When present, the agent counts as absent unless this folder exists.
    std::optional<std::filesystem::path> detectionPath;

    // Targets are the same target when their ids are.
    bool operator==(const HookTarget& other) const { return id == other.id; }

    // The six targets in settings order. Pure: touches no file.
    static std::vector<HookTarget> all(const std::filesystem::path& home);
};

} // namespace tovrin
