#pragma once

#include "core/Result.h"
#include "hooks/AdapterResources.h"
#include "hooks/WriterFiles.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace tovrin {

// Keeps a copy of the status writer at a stable place in the home folder, so that hooks never
// run a path inside the installation; the copy is refreshed when the program's version changes.
struct WriterInstaller {
    std::filesystem::path destination; // <home>/.tovrin/agent-status.sh
    AdapterResources resources;
    std::filesystem::path stamp; // <home>/.tovrin/.writer-version: the version that copied it
    // The home's disk; the payload is always read from this machine's.
    std::shared_ptr<WriterFiles> files = std::make_shared<LocalWriterFiles>();

    // Without `files`, the home is on this machine.
    static WriterInstaller forHome(const std::filesystem::path& home, AdapterResources resources,
                                   std::shared_ptr<WriterFiles> files = nullptr);

    // "<version> (<build number>)"; an empty part reads "0".
    static std::string currentAppVersion();

    // Copies the writer (mode 0755, atomic replace) unless the copy in place is current, and
    // returns its path. A writer missing from the payload fails with the payload-missing text,
    // also when a copy is installed.
    Result<std::filesystem::path> ensureInstalled(std::string_view appVersion) const;
    // The copy is stale when it is absent, the stamp is unreadable or holds another version.
    bool isStale(std::string_view appVersion) const;
    // Removes the stamp and the writer; the folder stays.
    Result<void> removeInstalled() const;
};

} // namespace tovrin
