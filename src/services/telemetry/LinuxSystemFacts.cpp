#include "services/telemetry/LinuxSystemFacts.h"

#include "core/AsciiText.h"
#include "core/AtomicFile.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <sys/utsname.h>

namespace tovrin {
namespace {

bool allIn(std::string_view text, char first, char last) {
    return std::all_of(text.begin(), text.end(), [=](char c) { return c >= first && c <= last; });
}

// "de_DE.UTF-8@euro" → "de_DE": the codeset and the modifier say nothing about language or region.
std::string_view withoutCodesetAndModifier(std::string_view name) {
    return name.substr(0, name.find_first_of(".@"));
}

struct LocaleParts {
    std::string_view language, region;
};

LocaleParts partsOf(std::string_view identifier) {
    const auto underscore = identifier.find('_');
    const auto language = identifier.substr(0, underscore);
    const auto region =
        underscore == std::string_view::npos ? std::string_view() : identifier.substr(underscore + 1);
    LocaleParts parts;
    if ((language.size() == 2 || language.size() == 3) && allIn(language, 'a', 'z'))
        parts.language = language;
    if ((region.size() == 2 && allIn(region, 'A', 'Z')) || (region.size() == 3 && allIn(region, '0', '9')))
        parts.region = region;
    return parts;
}

std::string languageTag(std::string_view posixName) {
    std::string tag(withoutCodesetAndModifier(posixName));
    std::replace(tag.begin(), tag.end(), '_', '-');
    return tag;
}

std::optional<std::string> readTrimmed(const std::filesystem::path& path) {
    const auto content = readWholeFile(path);
    if (!content) return std::nullopt;
    return std::string(AsciiText::trimmed(content.value()));
}

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

} // namespace

std::optional<std::string> osReleaseVersionID(std::string_view content) {
    while (!content.empty()) {
        const auto end = content.find('\n');
        const auto line = AsciiText::trimmed(content.substr(0, end));
        content = end == std::string_view::npos ? std::string_view() : content.substr(end + 1);
        if (!line.starts_with("VERSION_ID=")) continue;
        auto value = line.substr(11);
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
            value.back() == value.front())
            value = value.substr(1, value.size() - 2);
        if (value.empty()) return std::nullopt;
        return std::string(value);
    }
    return std::nullopt;
}

void fillSystemVersions(SystemFacts& facts, const std::optional<std::string>& versionID) {
    if (!versionID) {
        facts.systemVersion = facts.majorSystemVersion = facts.majorMinorSystemVersion = "Linux";
        return;
    }
    const std::string& version = *versionID;
    const auto firstDot = version.find('.');
    const auto secondDot = firstDot == std::string::npos ? firstDot : version.find('.', firstDot + 1);
    facts.systemVersion = "Linux " + version;
    facts.majorSystemVersion = "Linux " + version.substr(0, firstDot);
    facts.majorMinorSystemVersion =
        "Linux " + (firstDot == std::string::npos ? version + ".0" : version.substr(0, secondDot));
}

LocaleFacts localeFacts(std::string_view locale, std::string_view languageList) {
    LocaleFacts facts;
    facts.identifier = std::string(withoutCodesetAndModifier(locale));
    if (facts.identifier.empty()) facts.identifier = "C";
    const auto parts = partsOf(facts.identifier);
    facts.region = parts.region.empty() ? facts.identifier : std::string(parts.region);
    facts.language = parts.language.empty() ? facts.identifier : std::string(parts.language);

    while (!languageList.empty() && facts.preferredLanguage.empty()) {
        const auto colon = languageList.find(':');
        facts.preferredLanguage = languageTag(languageList.substr(0, colon));
        languageList = colon == std::string_view::npos ? std::string_view() : languageList.substr(colon + 1);
    }
    if (facts.preferredLanguage.empty())
        facts.preferredLanguage = parts.language.empty() ? "zz-ZZ" : languageTag(facts.identifier);
    return facts;
}

SystemFacts readSystemFacts(const SystemFactFiles& files) {
    SystemFacts facts;
    std::optional<std::string> versionID;
    for (const auto& path : files.osRelease) {
        if (const auto content = readWholeFile(path)) {
            versionID = osReleaseVersionID(content.value());
            break;
        }
    }
    fillSystemVersions(facts, versionID);

    utsname system{};
    if (::uname(&system) == 0) facts.architecture = system.machine;
    facts.modelName = readTrimmed(files.productName).value_or("");

    std::string_view locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = environment(name);
        if (!locale.empty()) break;
    }
    facts.locale = localeFacts(locale, environment("LANGUAGE"));
    return facts;
}

} // namespace tovrin
