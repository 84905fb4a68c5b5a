#pragma once

#include "hooks/HookFileStoring.h"

namespace tovrin {

// The real file system. Holds no state and takes no lock: the atomic rename keeps readers from
// seeing half a file, and the original is created with link(2), which only one process can win.
class HookFileStore final : public HookFileStoring {
public:
    bool fileExists(const std::filesystem::path& path) const override;
    Result<nlohmann::json> readObject(const std::filesystem::path& path) const override;
    Result<void> write(const nlohmann::json& object, const std::filesystem::path& path,
                       bool isUsersOwn) override;
    Result<void> remove(const std::filesystem::path& path) override;

    // The text a document is written as, the same on every host; or why it can't be written.
    static Result<std::string> contentFor(const nlohmann::json& object, const std::filesystem::path& path);
    static std::filesystem::path backupPath(const std::filesystem::path& path);
    static std::filesystem::path originalPath(const std::filesystem::path& path);
};

} // namespace tovrin
