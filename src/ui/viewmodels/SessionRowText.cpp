#include "ui/viewmodels/SessionRowText.h"

#include "hooks/ToolIdentity.h"
#include "ui/viewmodels/ForgePalette.h"
#include "ui/viewmodels/RelativeTime.h"

namespace tovrin::SessionRowText {

std::string subtitle(const AgentSession& session, TimePoint now) {
    std::string text = ToolIdentity::named(session.tool).displayName;
    if (session.host) text += " on " + *session.host;
    if (session.reason) {
        text += separator;
        text += *session.reason;
    }
    return text + ageSuffix(session, now);
}

std::string ageSuffix(const AgentSession& session, TimePoint now) {
    return std::string(separator) + RelativeTime::string(session.updatedAt, now);
}

std::string accessibleName(const AgentSession& session, TimePoint now) {
    std::string name = session.title.empty() ? std::string() : session.title + ", ";
    name += ToolIdentity::named(session.tool).displayName;
    if (session.host) name += " on " + *session.host;
    name += ", ";
    name += rawValue(session.state);
    return name + ", " + RelativeTime::string(session.updatedAt, now);
}

std::string revealToolTip(const AgentSession& session) {
    return "Reveal " + session.projectPath() + " in Files";
}

Color titleColor(SessionState state) {
    switch (state) {
    case SessionState::waiting:
        return ForgeTheme::waitingRed;
    case SessionState::working:
        return ForgeTheme::workingAmber;
    case SessionState::idle:
        break;
    }
    return ForgeTheme::ash;
}

} // namespace tovrin::SessionRowText
