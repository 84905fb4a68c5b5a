#pragma once

#include "sessions/SessionFileDecoder.h"
#include "sessions/SessionReading.h"

#include <filesystem>
#include <vector>

namespace tovrin {

// Reads every "*.json" status file directly in one folder, in listing order. Hidden names,
// other extensions, anything but a regular file (symlinks, FIFOs, devices) and files over
// 1 MiB are left out, as are files that do not decode; nothing is ever written.
class SessionFileReader final : public SessionReading {
public:
    static constexpr std::size_t maxFileSize = 1024 * 1024;

    explicit SessionFileReader(std::filesystem::path directory);

    std::vector<AgentSession> readAll() override;
    const std::filesystem::path& directory() const { return m_directory; }

    // Whether a directory entry's name marks a status file.
    static bool isStatusFileName(std::string_view name);

private:
    std::filesystem::path m_directory;
    SessionFileDecoder m_decoder;
    std::vector<char> m_buffer;
};

} // namespace tovrin
