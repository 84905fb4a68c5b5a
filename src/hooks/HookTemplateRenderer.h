#pragma once

#include "core/Result.h"
#include "hooks/AdapterResources.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace tovrin {

// Turns configs/<name>.json of the payload into the hook configuration of one target, with the
// installed writer's path in place of every placeholder.
struct HookTemplateRenderer {
    static constexpr std::string_view placeholder = "{{AGENT_STATUS_SH}}";

    AdapterResources resources;

    // Fails with the platform's or the parser's text, or with the payload-missing text when
    // the template is valid JSON but not an object.
    Result<nlohmann::json> render(const std::string& templateName, const std::filesystem::path& writer) const;

    // The string as one word of a POSIX shell command: unchanged when it only holds letters,
    // digits and "/._-" (the empty string too), else in single quotes.
    static std::string shellQuoted(std::string_view text);

    // Replaces the placeholder in every string at any depth; keys and other values stay.
    static nlohmann::json substitute(const nlohmann::json& value, std::string_view replacement);
};

} // namespace tovrin
