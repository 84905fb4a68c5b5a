#pragma once

#include "core/Clock.h"
#include "sessions/AgentSession.h"
#include "sessions/CombinedSessionReader.h"

#include <string>
#include <vector>

namespace tovrin::StatusReport {

// The text with control characters (C0, DEL, C1) and bidirectional controls made blanks: agents'
// titles and paths must not drive the terminal nor reorder what it shows.
std::string printable(const std::string& text);

// The session list for a terminal: three headed groups (waiting, working, idle), one line per
// session with tool, title, project folder, reason and age; a line of its own when empty.
std::string text(const std::vector<AgentSession>& sessions, TimePoint now);

// One line per remote host out of reach, for under the list; nothing when every host answers.
std::string unreachable(const std::vector<UnreachableHost>& hosts);

// The session list for scripts: a JSON array in list order, each object with the status-file
// keys as classified (absent optional keys left out) and the session's `id`.
std::string json(const std::vector<AgentSession>& sessions);

} // namespace tovrin::StatusReport
