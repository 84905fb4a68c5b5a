#include "hooks/HookConfigMerger.h"

#include <string>

// Foreign values that do not have the expected shape are not ours, so they are kept wherever that
// is possible:
// - a group that is not an object, or whose "hooks" is not an array, stays as it is;
// - an event that is not an array stays as it is, unless our template installs into that event:
//   then it becomes the first element of the event's array, before our entries, is read as one
//   group (or entry) from then on, and stays there, in its array, after remove;
// - a top-level "hooks" that is not an object cannot hold our events: install replaces it (the
//   file's backup keeps the old value) and remove leaves it alone.
// Cleaning also tidies: an event or a two-level group left without entries disappears.

namespace tovrin::HookConfigMerger {
namespace {

using nlohmann::json;
using Kind = MergeStrategy::Kind;

bool isOurEntry(const json& entry) {
    if (!entry.is_object()) return false;
    for (const char* key : {"command", "bash"}) {
        const auto it = entry.find(key);
        if (it != entry.end() && it->is_string())
            return it->get_ref<const std::string&>().find(ownershipMarker) != std::string::npos;
    }
    return false;
}

json withoutOurEntries(const json& entries) {
    json kept = json::array();
    for (const auto& entry : entries) {
        if (!isOurEntry(entry)) kept.push_back(entry);
    }
    return kept;
}

json cleanGroups(const json& groups) {
    json kept = json::array();
    for (const auto& group : groups) {
        if (!group.is_object()) {
            kept.push_back(group);
            continue;
        }
        const auto entries = group.find("hooks");
        if (entries != group.end() && !entries->is_array()) {
            kept.push_back(group);
            continue;
        }
        json left = entries == group.end() ? json::array() : withoutOurEntries(*entries);
        if (left.empty()) continue;
        json copy = group;
        copy["hooks"] = std::move(left);
        kept.push_back(std::move(copy));
    }
    return kept;
}

// cleanTwoLevel and cleanFlat: the hooks object without our entries and without empty events.
json clean(const json& hooks, Kind kind) {
    json result = json::object();
    for (const auto& [event, value] : hooks.items()) {
        if (!value.is_array()) {
            result[event] = value;
            continue;
        }
        json kept = kind == Kind::twoLevel ? cleanGroups(value) : withoutOurEntries(value);
        if (!kept.empty()) result[event] = std::move(kept);
    }
    return result;
}

json mergeUnderHooksKey(const json& ours, json into, Kind kind) {
    if (kind == Kind::flat && !into.contains("version")) {
        const auto version = ours.find("version");
        into["version"] = version != ours.end() ? *version : json(1);
    }

    const auto oursHooks = ours.find("hooks");
    const json ourEvents = oursHooks != ours.end() && oursHooks->is_object() ? *oursHooks : json::object();
    const auto present = into.find("hooks");
    json hooks = present != into.end() && present->is_object() ? *present : json::object();

    // Wrapping before cleaning keeps a second install equal to the first.
    for (const auto& [event, entries] : ourEvents.items()) {
        const auto it = hooks.find(event);
        if (!entries.is_array() || it == hooks.end() || it->is_array()) continue;
        json wrapped = json::array();
        wrapped.push_back(std::move(*it));
        *it = std::move(wrapped);
    }

    json result = clean(hooks, kind);
    for (const auto& [event, entries] : ourEvents.items()) {
        if (!entries.is_array()) continue;
        json& slot = result[event];
        if (!slot.is_array()) slot = json::array();
        slot.insert(slot.end(), entries.begin(), entries.end());
    }
    into["hooks"] = std::move(result);
    return into;
}

} // namespace

json merge(const json& ours, json into, const MergeStrategy& strategy) {
    static const json noTemplate = json::object();
    const json& ourTemplate = ours.is_object() ? ours : noTemplate;
    if (!into.is_object()) into = json::object();
    switch (strategy.kind) {
    case Kind::twoLevel:
    case Kind::flat:
        return mergeUnderHooksKey(ourTemplate, std::move(into), strategy.kind);
    case Kind::dedicatedFile:
        return ours;
    case Kind::namedBlock:
        for (const auto& [key, value] : ourTemplate.items())
            into[key] = value;
        return into;
    }
    return into;
}

json remove(json from, const MergeStrategy& strategy) {
    if (!from.is_object()) return from;
    switch (strategy.kind) {
    case Kind::dedicatedFile:
        return json::object();
    case Kind::namedBlock: {
        const auto it = from.find(strategy.key);
        if (it != from.end() && containsOurCommand(*it)) from.erase(it);
        return from;
    }
    case Kind::twoLevel:
    case Kind::flat: {
        const auto it = from.find("hooks");
        if (it == from.end() || !it->is_object()) return from;
        json cleaned = clean(*it, strategy.kind);
        if (cleaned.empty()) {
            from.erase(it);
        } else {
            *it = std::move(cleaned);
        }
        return from;
    }
    }
    return from;
}

bool isInstalled(const json& document, const MergeStrategy& strategy) {
    if (!document.is_object()) return false;
    switch (strategy.kind) {
    case Kind::twoLevel:
    case Kind::flat: {
        const auto it = document.find("hooks");
        return it != document.end() && it->is_object() && containsOurCommand(*it);
    }
    case Kind::namedBlock: {
        const auto it = document.find(strategy.key);
        return it != document.end() && containsOurCommand(*it);
    }
    case Kind::dedicatedFile:
        return containsOurCommand(document);
    }
    return false;
}

bool containsOurCommand(const json& value) {
    if (value.is_string())
        return value.get_ref<const std::string&>().find(ownershipMarker) != std::string::npos;
    if (value.is_array() || value.is_object()) {
        for (const auto& element : value) {
            if (containsOurCommand(element)) return true;
        }
    }
    return false;
}

} // namespace tovrin::HookConfigMerger
