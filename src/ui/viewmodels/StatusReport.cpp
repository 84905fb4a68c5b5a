#include "ui/viewmodels/StatusReport.h"

#include "core/Iso8601.h"
#include "hooks/ToolIdentity.h"
#include "ui/viewmodels/PanelContent.h"
#include "ui/viewmodels/RelativeTime.h"
#include "ui/viewmodels/SessionSections.h"

#include <nlohmann/json.hpp>

namespace tovrin::StatusReport {
namespace {

constexpr const char* separator = " \u00B7 ";

// The length in bytes of the control character at `i`, or 0. Beside C0 and DEL: C1 (U+0080 to
// U+009F), which some terminals obey, and the bidirectional marks, embeddings, overrides and
// isolates (U+061C, U+200E, U+200F, U+202A to U+202E, U+2066 to U+2069), which make a terminal
// show text in another order than it is written.
std::size_t controlAt(const std::string& text, std::size_t i) {
    const auto byte = [&](std::size_t k) -> unsigned {
        return i + k < text.size() ? static_cast<unsigned char>(text[i + k]) : 0U;
    };
    const unsigned b0 = byte(0), b1 = byte(1), b2 = byte(2);
    if (b0 < 0x20 || b0 == 0x7f) return 1;
    if ((b0 == 0xC2 && b1 >= 0x80 && b1 <= 0x9F) || (b0 == 0xD8 && b1 == 0x9C)) return 2;
    if (b0 == 0xE2 && b1 == 0x80 && (b2 == 0x8E || b2 == 0x8F || (b2 >= 0xAA && b2 <= 0xAE))) return 3;
    if (b0 == 0xE2 && b1 == 0x81 && b2 >= 0xA6 && b2 <= 0xA9) return 3;
    return 0;
}

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
        line += separator + (s.host ? printable(*s.host) + ":" : std::string()) + printable(s.projectPath());
        line += separator + RelativeTime::string(s.updatedAt, now);
        out += line + '\n';
    }
}

template <class Json>
void putOptional(Json& object, const char* key, const std::optional<std::string>& value) {
    if (value) object[key] = *value;
}

} // namespace

std::string printable(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        if (const auto length = controlAt(text, i)) {
            out += ' ';
            i += length;
        } else {
            out += text[i++];
        }
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

std::string unreachable(const std::vector<UnreachableHost>& hosts) {
    std::string out;
    for (const auto& host : hosts) {
        out += "\n! " + printable(PanelContent::unreachableHostNotice(host)) +
               "; its sessions stay until they age out.\n";
    }
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
        putOptional(o, "host", s.host);
        o["startedAt"] = formatIso8601(s.startedAt);
        o["updatedAt"] = formatIso8601(s.updatedAt);
        array.push_back(std::move(o));
    }
    return array.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace tovrin::StatusReport
