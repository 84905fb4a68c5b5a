#pragma once

#include "hooks/HookFileStoring.h"

namespace tovrin {

// The real file system. Holds no state and takes no lock; the atomic rename alone keeps other
// readers from seeing half a file.
class HookFileStore final : public HookFileStoring {
public:
    bool fileExists(const std::filesystem::path& path) const override;
    Result<nlohmann::json> readObject(const std::filesystem::path& path) const override;
    Result<void> write(const nlohmann::json& object, const std::filesystem::path& path) override;
    Result<void> remove(const std::filesystem::path& path) override;

    static std::filesystem::path backupPath(const std::filesystem::path& path);
};

} // namespace tovrin
