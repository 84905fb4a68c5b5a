#include "core/PreferencesStore.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tovrin {
namespace {

using nlohmann::json;

std::optional<std::int64_t> asInteger(const std::optional<json>& v) {
    if (!v) return std::nullopt;
    if (v->is_number_integer()) {
        if (v->is_number_unsigned() &&
            v->get<std::uint64_t>() > std::uint64_t(std::numeric_limits<std::int64_t>::max()))
            return std::nullopt;
        return v->get<std::int64_t>();
    }
    if (v->is_number_float()) {
        // A whole number stored as a double still reads as an integer.
        const double d = v->get<double>();
        if (std::trunc(d) == d && d >= -9.2e18 && d <= 9.2e18) return static_cast<std::int64_t>(d);
    }
    return std::nullopt;
}

std::optional<bool> asBool(const std::optional<json>& v) {
    if (v && v->is_boolean()) return v->get<bool>();
    return std::nullopt;
}

std::optional<double> asDouble(const std::optional<json>& v) {
    if (v && v->is_number()) return v->get<double>();
    return std::nullopt;
}

std::optional<std::string> asString(const std::optional<json>& v) {
    if (v && v->is_string()) return v->get<std::string>();
    return std::nullopt;
}

// Strings in their stored order, each once; anything but an array of strings reads as none.
std::vector<std::string> asStringList(const std::optional<json>& v) {
    std::vector<std::string> result;
    if (!v || !v->is_array()) return result;
    for (const auto& item : *v) {
        if (!item.is_string()) return {};
        auto text = item.get<std::string>();
        if (std::find(result.begin(), result.end(), text) == result.end()) result.push_back(std::move(text));
    }
    return result;
}

std::set<std::string> asStringSet(const std::optional<json>& v) {
    const auto list = asStringList(v);
    return {list.begin(), list.end()};
}

// Persists a value under its key on every assignment.
template <class T> auto writer(DefaultsStore& defaults, const char* key) {
    return [&defaults, key](const T& value) { defaults.set(key, json(value)); };
}

} // namespace

PreferencesStore::PreferencesStore(DefaultsStore& d)
    : ttlSeconds(objectWillChange, asInteger(d.object("ttlSeconds")).value_or(1800),
                 writer<std::int64_t>(d, "ttlSeconds")),
      soundEnabled(objectWillChange, asBool(d.object("soundEnabled")).value_or(true),
                   writer<bool>(d, "soundEnabled")),
      alertSound(objectWillChange, asString(d.object("alertSound")).value_or("horn-of-gondor"),
                 writer<std::string>(d, "alertSound")),
      notificationBannerEnabled(objectWillChange,
                                asBool(d.object("notificationBannerEnabled")).value_or(false),
                                writer<bool>(d, "notificationBannerEnabled")),
      autoFocusMode(objectWillChange,
                    autoFocusModeFromRaw(asString(d.object("autoFocusMode")).value_or("off"))
                        .value_or(AutoFocusMode::off),
                    [&d](const AutoFocusMode& mode) { d.set("autoFocusMode", std::string(rawValue(mode))); }),
      repeatReminderEnabled(objectWillChange, asBool(d.object("repeatReminderEnabled")).value_or(false),
                            writer<bool>(d, "repeatReminderEnabled")),
      repeatReminderSeconds(objectWillChange, asInteger(d.object("repeatReminderSeconds")).value_or(30),
                            writer<std::int64_t>(d, "repeatReminderSeconds")),
      showFloatingChip(objectWillChange, asBool(d.object("showFloatingChip")).value_or(true),
                       writer<bool>(d, "showFloatingChip")),
      chipOnlyWhenWaiting(objectWillChange, asBool(d.object("chipOnlyWhenWaiting")).value_or(false),
                          writer<bool>(d, "chipOnlyWhenWaiting")),
      // Only a lower bound: the chip must never become invisible; the stored value stays as it is.
      chipOpacity(objectWillChange, std::max(asDouble(d.object("chipOpacity")).value_or(100.0), 20.0),
                  writer<double>(d, "chipOpacity")),
      flagSilentWorking(objectWillChange, asBool(d.object("flagSilentWorking")).value_or(false),
                        writer<bool>(d, "flagSilentWorking")),
      usageAnalyticsEnabled(objectWillChange, asBool(d.object("usageAnalyticsEnabled")).value_or(true),
                            writer<bool>(d, "usageAnalyticsEnabled")),
      telegramEnabled(objectWillChange, asBool(d.object("telegramEnabled")).value_or(false),
                      writer<bool>(d, "telegramEnabled")),
      disabledTools(objectWillChange, asStringSet(d.object("disabledTools")),
                    [&d](const std::set<std::string>& tools) { d.set("disabledTools", json(tools)); }),
      remoteHosts(objectWillChange, asStringList(d.object("remoteHosts")),
                  writer<std::vector<std::string>>(d, "remoteHosts")),
      m_defaults(d) {}

void PreferencesStore::setTool(const std::string& id, bool enabled) {
    auto tools = disabledTools();
    if (enabled) {
        tools.erase(id);
    } else {
        tools.insert(id);
    }
    disabledTools.set(std::move(tools));
}

} // namespace tovrin
