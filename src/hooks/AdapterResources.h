#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tovrin {

// The payload that ships beside the program: the status writer, one hook template per target, and
// the script that streams a remote host's status folder.
//   <root>/agent-status.sh
//   <root>/remote-status-stream.sh
//   <root>/configs/<templateName>.json
struct AdapterResources {
    using Environment = std::function<std::optional<std::string>(const char* name)>;

    std::filesystem::path root;

    // TOVRIN_ADAPTERS_DIR when set and not empty (a leading "~" expanded; the folder need not
    // exist), else <shareDir>/Adapters when that exists, else nothing.
    static std::optional<AdapterResources> locate(const std::optional<std::filesystem::path>& shareDir,
                                                  const Environment& environment);
    // The process environment, read at each call.
    static Environment processEnvironment();

    std::filesystem::path writerSource() const { return root / "agent-status.sh"; }
    std::filesystem::path remoteStreamScript() const { return root / "remote-status-stream.sh"; }
    std::filesystem::path templatePath(const std::string& templateName) const {
        return root / "configs" / (templateName + ".json");
    }

    // The text of the one resource error: the payload is incomplete or absent.
    static std::string payloadMissingMessage();

    bool operator==(const AdapterResources&) const = default;
};

} // namespace tovrin
