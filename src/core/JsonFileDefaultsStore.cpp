#include "core/JsonFileDefaultsStore.h"

#include "core/AtomicFile.h"

#include <system_error>

namespace tovrin {

JsonFileDefaultsStore::JsonFileDefaultsStore(std::filesystem::path file) : m_file(std::move(file)) {
    const auto content = readWholeFile(m_file);
    if (!content || content.value().empty()) return;
    auto parsed = nlohmann::json::parse(content.value(), nullptr, /*allow_exceptions=*/false);
    if (parsed.is_object()) {
        m_values = std::move(parsed);
    } else {
        m_unreadableFileKept = false;
    }
}

std::optional<nlohmann::json> JsonFileDefaultsStore::object(const std::string& key) const {
    const auto it = m_values.find(key);
    if (it == m_values.end()) return std::nullopt;
    return *it;
}

void JsonFileDefaultsStore::set(const std::string& key, nlohmann::json value) {
    m_values[key] = std::move(value);
    persist();
}

void JsonFileDefaultsStore::remove(const std::string& key) {
    m_values.erase(key);
    persist();
}

void JsonFileDefaultsStore::persist() {
    std::error_code ignored;
    std::filesystem::create_directories(m_file.parent_path(), ignored);
    if (!m_unreadableFileKept) {
        std::filesystem::path aside = m_file;
        aside += ".corrupt";
        std::filesystem::rename(m_file, aside, ignored);
        m_unreadableFileKept = true;
    }
    // A failed write leaves the previous file; the value still holds for this run.
    (void)writeFileAtomically(m_file, m_values.dump(2) + "\n", 0600);
}

} // namespace tovrin
