#pragma once

#include <optional>
#include <string_view>

namespace tovrin::MotionPreference {

// The environment override: "1"/"true"/"yes"/"on" ask for reduced motion, "0"/"false"/"no"/"off"
// for full motion; anything else is no opinion.
std::optional<bool> fromOverride(std::string_view value);
// The output of `gsettings get org.gnome.desktop.interface enable-animations`: "false" reduces motion.
std::optional<bool> fromGnomeAnimations(std::string_view output);
// The text of kdeglobals: an AnimationDurationFactor of 0 in the [KDE] group reduces motion.
std::optional<bool> fromKdeGlobals(std::string_view text);

// The first opinion wins: the override, then KDE, then GNOME; none means full motion.
bool decide(std::optional<bool> override, std::optional<bool> kde, std::optional<bool> gnome);

} // namespace tovrin::MotionPreference
