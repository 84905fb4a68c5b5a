#pragma once

#include "sessions/RemoteSnapshot.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tovrin {

// Reads the stream that remote-status-stream.sh prints on a remote host, in pieces of any size:
//   tovrin-status-stream 1\n                    anything before this line is skipped (a login
//                                               script may print a greeting)
//   F <byte count> <name>\n<those bytes>\n      one per status file
//   P <pid> <pid> ...\n                         the pids that run there
//   E\n                                         the snapshot is complete
// A host is not trusted: whatever it sends, memory stays within the caps below, and the first
// thing out of form or over a cap stops the stream for good.
class RemoteStatusFrames {
public:
    static constexpr std::string_view greeting = "tovrin-status-stream 1";
    static constexpr std::size_t maxPreamble = 64 * 1024;
    static constexpr std::size_t maxHeaderLine = 512;
    static constexpr std::size_t maxPidLine = 64 * 1024;
    static constexpr std::size_t maxFiles = 2000;
    // Far above what status files weigh; keeps 2,000 files of 1 MiB from holding 2 GiB.
    static constexpr std::size_t maxSnapshotBytes = 64 * 1024 * 1024;

    using OnSnapshot = std::function<void(RemoteSnapshot)>;

    explicit RemoteStatusFrames(OnSnapshot onSnapshot);

    // Calls back once for each snapshot completed by these bytes. False, then and ever after,
    // once the stream is refused; error() says why.
    bool feed(std::string_view bytes);
    const std::string& error() const { return m_error; }

private:
    enum class Expect { greeting, fileOrPids, end, body, bodyEnd };

    bool takeLine();
    bool takeFileHeader(std::string_view header);
    bool takePids(std::string_view list);
    bool refuse(std::string why);

    OnSnapshot m_onSnapshot;
    Expect m_expect = Expect::greeting;
    std::string m_line;
    std::size_t m_preambleBytes = 0;
    std::string m_name;
    std::string m_body;
    std::size_t m_remaining = 0;
    std::size_t m_snapshotBytes = 0;
    RemoteSnapshot m_snapshot;
    std::string m_error;
};

} // namespace tovrin
