#include "hooks/HookConfigMerger.h"

#include "hooks/ForeignJson.h"

#include <string>

namespace tovrin::HookConfigMerger {
namespace {

using nlohmann::json;
using Kind = MergeStrategy::Kind;

constexpr const char* noPlace = ", so there is no place for Tovrin's hooks";

bool isOurEntry(const json& entry, const HookOwnership& ownership) {
    if (!entry.is_object()) return false;
    for (const char* key : {"command", "bash"}) {
        const auto it = entry.find(key);
        if (it != entry.end() && it->is_string())
            return ownership.isOurCommand(it->get_ref<const std::string&>());
    }
    return false;
}

// The list without our entries; `removed` is set when there were any.
json withoutOurEntries(const json& entries, const HookOwnership& ownership, bool& removed) {
    json kept = json::array();
    for (const auto& entry : entries) {
        if (isOurEntry(entry, ownership))
            removed = true;
        else
            kept.push_back(entry);
    }
    return kept;
}

// Only groups that held our entries change; one left with nothing goes.
json withoutOurGroups(const json& groups, const HookOwnership& ownership, bool& removed) {
    json kept = json::array();
    for (const auto& group : groups) {
        const auto entries = group.is_object() ? group.find("hooks") : group.end();
        bool took = false;
        json left = group.is_object() && entries != group.end() && entries->is_array()
                        ? withoutOurEntries(*entries, ownership, took)
                        : json();
        if (!took) {
            kept.push_back(group);
            continue;
        }
        removed = true;
        if (left.empty()) continue;
        json copy = group;
        copy["hooks"] = std::move(left);
        kept.push_back(std::move(copy));
    }
    return kept;
}

// The hooks object without our entries; an event they alone filled goes with them.
json clean(const json& hooks, Kind kind, const HookOwnership& ownership, bool& removed) {
    json result = json::object();
    for (const auto& [event, value] : hooks.items()) {
        bool took = false;
        json kept = !value.is_array()        ? value
                    : kind == Kind::twoLevel ? withoutOurGroups(value, ownership, took)
                                             : withoutOurEntries(value, ownership, took);
        removed = removed || took;
        if (!(took && kept.empty())) result[event] = std::move(kept);
    }
    return result;
}

// The document without our hooks; "hooks" goes when we emptied it.
json removeUnderHooksKey(json document, Kind kind, const HookOwnership& ownership, bool& removed) {
    const auto it = document.find("hooks");
    if (it == document.end() || !it->is_object()) return document;
    json cleaned = clean(*it, kind, ownership, removed);
    if (removed && cleaned.empty())
        document.erase(it);
    else
        *it = std::move(cleaned);
    return document;
}

Result<json> mergeUnderHooksKey(const json& ours, json into, Kind kind, const HookOwnership& ownership) {
    const auto oursHooks = ours.find("hooks");
    const json ourEvents = oursHooks != ours.end() && oursHooks->is_object() ? *oursHooks : json::object();
    const auto present = into.find("hooks");
    if (present != into.end() && !present->is_object())
        return Result<json>::failure(std::string("its \"hooks\" is not an object") + noPlace);
    json hooks = present != into.end() ? *present : json::object();
    for (const auto& [event, entries] : ourEvents.items()) {
        const auto it = hooks.find(event);
        if (entries.is_array() && it != hooks.end() && !it->is_array())
            return Result<json>::failure(ForeignJson::quoted(event) + " under \"hooks\" is not a list" +
                                         noPlace);
    }

    if (kind == Kind::flat && !into.contains("version")) {
        const auto version = ours.find("version");
        into["version"] = version != ours.end() ? *version : json(1);
    }
    // Taking out an earlier install first keeps a second install equal to the first.
    bool removed = false;
    json result = clean(hooks, kind, ownership, removed);
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

Result<json> merge(const json& ours, json into, const MergeStrategy& strategy,
                   const HookOwnership& ownership) {
    static const json noTemplate = json::object();
    const json& ourTemplate = ours.is_object() ? ours : noTemplate;
    if (!into.is_object()) return Result<json>::failure("it does not hold a JSON object");
    switch (strategy.kind) {
    case Kind::twoLevel:
    case Kind::flat:
        return mergeUnderHooksKey(ourTemplate, std::move(into), strategy.kind, ownership);
    case Kind::dedicatedFile:
        // Ours alone, or nothing yet: anything else in it would be lost.
        if (!remove(into, strategy, ownership).empty())
            return Result<json>::failure("it holds entries that are not Tovrin's");
        return ours;
    case Kind::namedBlock:
        for (const auto& [key, value] : ourTemplate.items())
            into[key] = value;
        return into;
    }
    return into;
}

json remove(json from, const MergeStrategy& strategy, const HookOwnership& ownership) {
    if (!from.is_object()) return from;
    bool removed = false;
    switch (strategy.kind) {
    case Kind::dedicatedFile: {
        // Shaped like a flat file; what is left of it besides the version is someone else's.
        json left = removeUnderHooksKey(std::move(from), Kind::flat, ownership, removed);
        if (removed && left.size() == left.count("version")) return json::object();
        return left;
    }
    case Kind::namedBlock: {
        const auto it = from.find(strategy.key);
        if (it != from.end() && containsOurCommand(*it, ownership)) from.erase(it);
        return from;
    }
    case Kind::twoLevel:
    case Kind::flat:
        return removeUnderHooksKey(std::move(from), strategy.kind, ownership, removed);
    }
    return from;
}

bool isInstalled(const json& document, const MergeStrategy& strategy, const HookOwnership& ownership) {
    if (!document.is_object()) return false;
    switch (strategy.kind) {
    case Kind::twoLevel:
    case Kind::flat: {
        const auto it = document.find("hooks");
        return it != document.end() && it->is_object() && containsOurCommand(*it, ownership);
    }
    case Kind::namedBlock: {
        const auto it = document.find(strategy.key);
        return it != document.end() && containsOurCommand(*it, ownership);
    }
    case Kind::dedicatedFile:
        return containsOurCommand(document, ownership);
    }
    return false;
}

bool containsOurCommand(const json& value, const HookOwnership& ownership) {
    if (value.is_string()) return ownership.isOurCommand(value.get_ref<const std::string&>());
    if (value.is_array() || value.is_object()) {
        for (const auto& element : value) {
            if (containsOurCommand(element, ownership)) return true;
        }
    }
    return false;
}

} // namespace tovrin::HookConfigMerger
