#include "ui/viewmodels/StatusReport.h"

#include "core/Iso8601.h"
#include "hooks/ToolIdentity.h"
#include "ui/viewmodels/RelativeTime.h"
#include "ui/viewmodels/SessionSections.h"

#include <nlohmann/json.hpp>

namespace tovrin::StatusReport {
namespace {

constexpr const char* separator = " \u00B7 ";

void appendGroup(std::string& out, const char* heading, const std::vector<AgentSession>& group,
                 TimePoint now) {
    if (group.empty()) return;
    if (!out.empty()) out += '\n';
    out += heading;
    out += " (" + std::to_string(group.size()) + ")\n";
    for (const auto& s : group) {
        std::string line =
            "  " + printable(s.title) + "\n    " + printable(ToolIdentity::named(s.tool).displayName);
        if (s.reason) line += separator + printable(*s.reason);
        line += separator + printable(s.projectPath());
        line += separator + RelativeTime::string(s.updatedAt, now);
        out += line + '\n';
    }
}

template <class Json>
void putOptional(Json& object, const char* key, const std::optional<std::string>& value) {
    if (value) object[key] = *value;
}

} // namespace

// C1 controls are U+0080 to U+009F, two bytes in UTF-8; some terminals obey them.
std::string printable(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool c1 = byte == 0xC2 && i + 1 < text.size() &&
                        static_cast<unsigned char>(text[i + 1]) >= 0x80 &&
                        static_cast<unsigned char>(text[i + 1]) <= 0x9F;
        if (c1) ++i;
        out += (byte < 0x20 || byte == 0x7f || c1) ? ' ' : text[i];
    }
    return out;
}

std::string text(const std::vector<AgentSession>& sessions, TimePoint now) {
    const auto sections = SessionSections::of(sessions);
    if (sections.empty()) return "No agents are stirring.\n";
    std::string out;
    appendGroup(out, "CALLING FOR AID", sections.waiting, now);
    appendGroup(out, "AT WORK", sections.working, now);
    appendGroup(out, "RESTING", sections.idle, now);
    return out;
}

std::string json(const std::vector<AgentSession>& sessions) {
    auto array = nlohmann::ordered_json::array();
    for (const auto& s : sessions) {
        nlohmann::ordered_json o;
        o["id"] = s.id();
        o["schemaVersion"] = s.schemaVersion;
        o["tool"] = s.tool;
        o["surface"] = s.surface;
        o["sessionId"] = s.sessionId;
        if (s.pid) o["pid"] = *s.pid;
        o["state"] = std::string(rawValue(s.state));
        putOptional(o, "reason", s.reason);
        putOptional(o, "transcriptPath", s.transcriptPath);
        o["cwd"] = s.cwd;
        putOptional(o, "root", s.root);
        o["title"] = s.title;
        if (s.locator) {
            auto locator = nlohmann::ordered_json::object();
            putOptional(locator, "termProgram", s.locator->termProgram);
            putOptional(locator, "tmuxPane", s.locator->tmuxPane);
            putOptional(locator, "itermSession", s.locator->itermSession);
            putOptional(locator, "weztermPane", s.locator->weztermPane);
            putOptional(locator, "tty", s.locator->tty);
            putOptional(locator, "app", s.locator->app);
            o["locator"] = std::move(locator);
        }
        o["startedAt"] = formatIso8601(s.startedAt);
        o["updatedAt"] = formatIso8601(s.updatedAt);
        array.push_back(std::move(o));
    }
    return array.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace tovrin::StatusReport
