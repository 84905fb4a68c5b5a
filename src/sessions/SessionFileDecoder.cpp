#include "sessions/SessionFileDecoder.h"

#include "core/Iso8601.h"

#include <simdjson.h>

namespace tovrin {

static_assert(SessionFileDecoder::padding >= simdjson::SIMDJSON_PADDING);

namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

enum RequiredKey : unsigned {
    kSchemaVersion = 1u << 0,
    kTool = 1u << 1,
    kSurface = 1u << 2,
    kSessionId = 1u << 3,
    kState = 1u << 4,
    kCwd = 1u << 5,
    kTitle = 1u << 6,
    kStartedAt = 1u << 7,
    kUpdatedAt = 1u << 8,
    kAllRequired = (1u << 9) - 1,
};

bool readString(element value, std::string& out) {
    std::string_view text;
    if (value.get_string().get(text) != simdjson::SUCCESS) return false;
    out.assign(text);
    return true;
}

// Optional strings: null is absent, any other non-string spoils the file.
bool readOptionalString(element value, std::optional<std::string>& out) {
    if (value.is_null()) {
        out.reset();
        return true;
    }
    std::string text;
    if (!readString(value, text)) return false;
    out = std::move(text);
    return true;
}

bool readInteger(element value, std::int64_t& out) {
    return value.type() == element_type::INT64 && value.get_int64().get(out) == simdjson::SUCCESS;
}

bool readDate(element value, TimePoint& out) {
    std::string_view text;
    if (value.get_string().get(text) != simdjson::SUCCESS) return false;
    const auto date = parseIso8601(text);
    if (!date) return false;
    out = *date;
    return true;
}

bool readLocator(element value, std::optional<Locator>& out) {
    if (value.is_null()) {
        out.reset();
        return true;
    }
    simdjson::dom::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS) return false;
    Locator locator;
    for (const auto field : object) {
        const std::string_view key = field.key;
        std::optional<std::string>* target = nullptr;
        if (key == "termProgram")
            target = &locator.termProgram;
        else if (key == "tmuxPane")
            target = &locator.tmuxPane;
        else if (key == "itermSession")
            target = &locator.itermSession;
        else if (key == "weztermPane")
            target = &locator.weztermPane;
        else if (key == "tty")
            target = &locator.tty;
        else if (key == "app")
            target = &locator.app;
        if (target && !readOptionalString(field.value, *target)) return false;
    }
    out = std::move(locator);
    return true;
}

std::optional<AgentSession> decodeDocument(element root) {
    simdjson::dom::object object;
    if (root.get_object().get(object) != simdjson::SUCCESS) return std::nullopt;

    AgentSession s;
    unsigned seen = 0;
    for (const auto field : object) {
        const std::string_view key = field.key;
        const element value = field.value;
        bool ok = true;
        if (key == "schemaVersion") {
            seen |= kSchemaVersion;
            ok = readInteger(value, s.schemaVersion);
        } else if (key == "tool") {
            seen |= kTool;
            ok = readString(value, s.tool);
        } else if (key == "surface") {
            seen |= kSurface;
            ok = readString(value, s.surface);
        } else if (key == "sessionId") {
            seen |= kSessionId;
            ok = readString(value, s.sessionId);
        } else if (key == "pid") {
            std::int64_t pid = 0;
            if (value.is_null())
                s.pid.reset();
            else if ((ok = readInteger(value, pid)))
                s.pid = pid;
        } else if (key == "state") {
            std::string_view word;
            ok = value.get_string().get(word) == simdjson::SUCCESS;
            const auto state = ok ? sessionStateFromRaw(word) : std::nullopt;
            ok = state.has_value();
            if (ok) s.state = *state;
            seen |= kState;
        } else if (key == "reason") {
            ok = readOptionalString(value, s.reason);
        } else if (key == "transcriptPath") {
            ok = readOptionalString(value, s.transcriptPath);
        } else if (key == "cwd") {
            seen |= kCwd;
            ok = readString(value, s.cwd);
        } else if (key == "root") {
            ok = readOptionalString(value, s.root);
        } else if (key == "title") {
            seen |= kTitle;
            ok = readString(value, s.title);
        } else if (key == "locator") {
            ok = readLocator(value, s.locator);
        } else if (key == "startedAt") {
            seen |= kStartedAt;
            ok = readDate(value, s.startedAt);
        } else if (key == "updatedAt") {
            seen |= kUpdatedAt;
            ok = readDate(value, s.updatedAt);
        }
        if (!ok) return std::nullopt;
    }
    if (seen != kAllRequired) return std::nullopt;
    return s;
}

} // namespace

struct SessionFileDecoder::Impl {
    simdjson::dom::parser parser;
};

SessionFileDecoder::SessionFileDecoder() : m_impl(std::make_unique<Impl>()) {}
SessionFileDecoder::~SessionFileDecoder() = default;

std::optional<AgentSession> SessionFileDecoder::decodePadded(const char* data, std::size_t length) {
    element root;
    if (m_impl->parser.parse(data, length, /*realloc_if_needed=*/false).get(root) != simdjson::SUCCESS)
        return std::nullopt;
    return decodeDocument(root);
}

std::optional<AgentSession> SessionFileDecoder::decode(std::string_view json) {
    const simdjson::padded_string copy(json);
    return decodePadded(copy.data(), copy.size());
}

} // namespace tovrin
