#pragma once

#include "hooks/HookFileStoring.h"
#include "hooks/RemoteShell.h"
#include "hooks/WriterFiles.h"

#include <memory>
#include <optional>
#include <string>

namespace tovrin {

// Another machine's configuration files and status writer, each step a short sh script over
// `shell`. The decisions are HookFileStore's, made the same way on the remote side: links, other
// files and read-only files refused, the original kept once (by link(1), which one process wins),
// the backup refreshed whole, the file replaced by rename keeping its mode. Documents are printed
// here, so a remote file ends up byte for byte what a local install writes. Each call waits for
// the host: never on the main loop.
class RemoteHookFileStore final : public HookFileStoring, public WriterFiles {
public:
    explicit RemoteHookFileStore(std::shared_ptr<RemoteShell> shell);

    // The remote user's home folder. With `needsJq`, fails when jq is not on that host's PATH:
    // the status writer runs it there.
    Result<std::filesystem::path> home(bool needsJq);
    // The first connection failure behind an answer that had no room for it (fileExists, exists).
    const std::optional<std::string>& unanswered() const { return m_unanswered; }

    bool fileExists(const std::filesystem::path& path) const override;
    Result<nlohmann::json> readObject(const std::filesystem::path& path) const override;
    Result<void> write(const nlohmann::json& object, const std::filesystem::path& path,
                       bool isUsersOwn) override;
    Result<void> remove(const std::filesystem::path& path) override;

    bool exists(const std::filesystem::path& path) const override;
    std::optional<std::string> read(const std::filesystem::path& path) const override;
    Result<void> replace(const std::filesystem::path& path, std::string_view content, mode_t mode) override;
    Result<void> erase(const std::filesystem::path& path) override;

private:
    // The first line the script printed and what followed it, or why it failed, naming `step`.
    struct Answer {
        std::string word;
        std::string rest;
    };
    Result<Answer> ask(const std::string& script, const std::string& step) const;
    bool answersYes(const std::string& script, const std::filesystem::path& path) const;
    Result<Answer> readFile(const std::filesystem::path& path, std::size_t limit) const;
    Result<void> refusalOrDone(const Result<Answer>& answer, const std::filesystem::path& path) const;

    std::shared_ptr<RemoteShell> m_shell;
    mutable std::optional<std::string> m_unanswered;
};

} // namespace tovrin
