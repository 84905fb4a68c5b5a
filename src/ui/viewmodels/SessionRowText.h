#pragma once

#include "core/Clock.h"
#include "core/Color.h"
#include "sessions/AgentSession.h"

#include <string>
#include <string_view>

namespace tovrin::SessionRowText {

inline constexpr std::string_view separator = " \u00B7 ";
inline constexpr std::string_view hideToolTip = "Hide until its status changes";
// What the row's icon-only buttons are called by assistive tools; their tool tips describe them.
inline constexpr std::string_view revealName = "Reveal in Files";
inline constexpr std::string_view hideName = "Hide session";

// "<tool name> · <reason> · <age>"; a reason that is present but empty still takes its place.
std::string subtitle(const AgentSession& session, TimePoint now);
// The end of the subtitle that a narrow row keeps whole, cutting the reason instead: " · <age>".
std::string ageSuffix(const AgentSession& session, TimePoint now);

// The row as one item for assistive tools: "<title>, <tool name>, <state>, <age>"; an untitled
// session starts with its tool.
std::string accessibleName(const AgentSession& session, TimePoint now);

// Names the project folder the reveal button opens.
std::string revealToolTip(const AgentSession& session);

// The title shows the state at a glance: red waits, amber works, ash rests.
Color titleColor(SessionState state);

} // namespace tovrin::SessionRowText
