#pragma once

#include "core/DefaultsStore.h"

#include <filesystem>

namespace tovrin {

// Settings kept in one JSON object file, rewritten atomically on every change. A file that is
// missing or does not parse as an object reads as empty and is replaced at the first write;
// its old content is kept beside it as "<name>.corrupt" so that nothing is silently lost.
class JsonFileDefaultsStore final : public DefaultsStore {
public:
    explicit JsonFileDefaultsStore(std::filesystem::path file);

    std::optional<nlohmann::json> object(const std::string& key) const override;
    void set(const std::string& key, nlohmann::json value) override;
    void remove(const std::string& key) override;

    const std::filesystem::path& file() const { return m_file; }

private:
    void persist();

    std::filesystem::path m_file;
    nlohmann::json m_values = nlohmann::json::object();
    bool m_unreadableFileKept = true;
};

} // namespace tovrin
