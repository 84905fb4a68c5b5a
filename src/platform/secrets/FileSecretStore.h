#pragma once

#include "alerts/telegram/SecretStoring.h"

#include <filesystem>

namespace tovrin {

// Secrets in a JSON object of strings, in a file that only its owner may read or write (0600),
// for systems where no Secret Service runs. Every write replaces the file atomically, and the
// new file is never readable by others, not even for a moment.
class FileSecretStore final : public SecretStoring {
public:
    explicit FileSecretStore(std::filesystem::path file);
    // <XDG config home>/tovrin/secrets.json
    static std::filesystem::path defaultFile();

    std::optional<std::string> string(const std::string& key) const override;
    void set(const std::optional<std::string>& value, const std::string& key) override;

    const std::filesystem::path& file() const { return m_file; }

private:
    std::filesystem::path m_file;
};

} // namespace tovrin
