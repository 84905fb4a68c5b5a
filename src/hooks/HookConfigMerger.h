#pragma once

#include "hooks/MergeStrategy.h"

#include <nlohmann/json.hpp>
#include <string_view>

// Puts our hook entries into another program's configuration document and takes them out
// again, leaving everything else as it was. Pure: documents in, documents out.
namespace tovrin::HookConfigMerger {

// An entry is ours when its command contains this; nothing else marks it.
inline constexpr std::string_view ownershipMarker = "agent-status.sh";

nlohmann::json merge(const nlohmann::json& ours, nlohmann::json into, const MergeStrategy& strategy);
nlohmann::json remove(nlohmann::json from, const MergeStrategy& strategy);
bool isInstalled(const nlohmann::json& document, const MergeStrategy& strategy);
// Deep search of every string value (not keys) for the marker.
bool containsOurCommand(const nlohmann::json& value);

} // namespace tovrin::HookConfigMerger
