#include "hooks/HookTemplateRenderer.h"

#include "core/AtomicFile.h"

#include <algorithm>

namespace tovrin {
namespace {

bool needsNoQuotes(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '/' ||
           c == '.' || c == '_' || c == '-';
}

std::string replaceAll(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t pos = text.find(from); pos != std::string::npos; pos = text.find(from, pos + to.size()))
        text.replace(pos, from.size(), to);
    return text;
}

} // namespace

std::string HookTemplateRenderer::shellQuoted(std::string_view text) {
    // Bytes suffice: any byte of a multi-byte character falls outside the safe set.
    if (std::all_of(text.begin(), text.end(), needsNoQuotes)) return std::string(text);
    return "'" + replaceAll(std::string(text), "'", "'\\''") + "'";
}

nlohmann::json HookTemplateRenderer::substitute(const nlohmann::json& value, std::string_view replacement) {
    if (value.is_string()) return replaceAll(value.get<std::string>(), placeholder, replacement);
    if (value.is_array() || value.is_object()) {
        nlohmann::json result = value;
        for (auto& element : result)
            element = substitute(element, replacement);
        return result;
    }
    return value;
}

Result<nlohmann::json> HookTemplateRenderer::render(const std::string& templateName,
                                                    const std::filesystem::path& writer) const {
    const auto path = resources.templatePath(templateName);
    auto bytes = readWholeFile(path);
    if (!bytes) return Result<nlohmann::json>::failure(bytes.error());
    nlohmann::json document;
    try {
        document = nlohmann::json::parse(bytes.value());
    } catch (const nlohmann::json::parse_error& error) {
        return Result<nlohmann::json>::failure(path.string() + " is not valid JSON: " + error.what());
    }
    if (!document.is_object())
        return Result<nlohmann::json>::failure(AdapterResources::payloadMissingMessage());
    return substitute(document, shellQuoted(writer.string()));
}

} // namespace tovrin
