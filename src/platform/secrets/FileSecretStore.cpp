#include "platform/secrets/FileSecretStore.h"

#include "core/AtomicFile.h"
#include "core/UserPaths.h"

#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <utility>

namespace tovrin {
namespace {

using Json = nlohmann::json;

// The stored object; missing, unreadable or malformed content counts as empty.
Json load(const std::filesystem::path& file) {
    const auto content = readWholeFile(file);
    if (!content) return Json::object();
    Json json = Json::parse(content.value(), nullptr, false);
    return json.is_object() ? json : Json::object();
}

} // namespace

FileSecretStore::FileSecretStore(std::filesystem::path file) : m_file(std::move(file)) {}

std::filesystem::path FileSecretStore::defaultFile() {
    return UserPaths::configHome() / "tovrin" / "secrets.json";
}

std::optional<std::string> FileSecretStore::string(const std::string& key) const {
    const Json stored = load(m_file);
    const auto it = stored.find(key);
    if (it == stored.end() || !it->is_string() || it->get_ref<const std::string&>().empty())
        return std::nullopt;
    return it->get<std::string>();
}

void FileSecretStore::set(const std::optional<std::string>& value, const std::string& key) {
    // A malformed file holds nothing that could still be read, so it is replaced rather than kept.
    Json stored = load(m_file);
    if (!value || value->empty()) {
        if (stored.erase(key) == 0) return;
    } else {
        stored[key] = *value;
    }
    const auto folder = m_file.parent_path();
    std::error_code ignored;
    if (!folder.empty() && !std::filesystem::exists(folder, ignored)) {
        std::filesystem::create_directories(folder, ignored);
        ::chmod(folder.c_str(), 0700);
    }
    std::string content;
    try {
        content = stored.dump(2) + "\n";
    } catch (const Json::exception&) {
        return; // a value that isn't UTF-8; what was stored before stays
    }
    (void)writeFileAtomically(m_file, content, 0600);
}

} // namespace tovrin
