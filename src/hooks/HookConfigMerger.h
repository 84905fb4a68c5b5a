#pragma once

#include "core/Result.h"
#include "hooks/HookOwnership.h"
#include "hooks/MergeStrategy.h"

#include <nlohmann/json.hpp>

// Puts our hook entries into another program's configuration document and takes them out
// again, leaving everything else as it was. Pure: documents in, documents out.
//
// For every document that merge accepts, remove gives it back: what is not ours is never
// reshaped, moved or dropped. Remove tidies only what it emptied itself (a group or an event
// that held nothing but our entries, a "hooks" left empty) — which takes with it an event list or
// a "hooks" that the user had left empty, since after a merge the two can't be told apart (the
// kept original has it) — and a flat file keeps the "version" that merge may have added.
namespace tovrin::HookConfigMerger {

// Fails, with a clause naming the key, when a value of the user's has a shape that can't take
// our entries (a "hooks" that is not an object, an event of ours that is not a list), or when a
// file of our own holds entries of someone else's.
Result<nlohmann::json> merge(const nlohmann::json& ours, nlohmann::json into, const MergeStrategy& strategy,
                             const HookOwnership& ownership);
// A dedicated file comes back empty only when it held our entries and nothing else.
nlohmann::json remove(nlohmann::json from, const MergeStrategy& strategy, const HookOwnership& ownership);
bool isInstalled(const nlohmann::json& document, const MergeStrategy& strategy,
                 const HookOwnership& ownership);
// Deep search of every string value (not keys) for a command of ours.
bool containsOurCommand(const nlohmann::json& value, const HookOwnership& ownership);

} // namespace tovrin::HookConfigMerger
