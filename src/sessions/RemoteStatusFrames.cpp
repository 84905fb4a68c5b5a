#include "sessions/RemoteStatusFrames.h"

#include "sessions/SessionFileReader.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tovrin {
namespace {

// Plain decimal digits that fit the type; no sign, no blanks.
template <typename Number> bool parseDecimal(std::string_view text, Number& value) {
    if (text.empty() || !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return false;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

} // namespace

RemoteStatusFrames::RemoteStatusFrames(OnSnapshot onSnapshot) : m_onSnapshot(std::move(onSnapshot)) {}

bool RemoteStatusFrames::feed(std::string_view bytes) {
    if (!m_error.empty()) return false;
    while (!bytes.empty()) {
        if (m_expect == Expect::body) {
            const std::size_t take = std::min(bytes.size(), m_remaining);
            m_body.append(bytes.substr(0, take));
            bytes.remove_prefix(take);
            m_remaining -= take;
            if (m_remaining == 0) m_expect = Expect::bodyEnd;
            continue;
        }
        if (m_expect == Expect::bodyEnd) {
            if (bytes.front() != '\n') return refuse("the file " + m_name + " is longer than its byte count");
            bytes.remove_prefix(1);
            m_snapshot.files.emplace(std::move(m_name), std::move(m_body));
            m_name.clear();
            m_body.clear();
            m_expect = Expect::fileOrPids;
            continue;
        }

        const std::size_t newline = bytes.find('\n');
        const std::string_view part = bytes.substr(0, newline);
        if (m_expect == Expect::greeting) {
            m_preambleBytes += part.size() + (newline == std::string_view::npos ? 0 : 1);
            if (m_preambleBytes > maxPreamble) return refuse("the host does not send a status stream");
            // Only as much as tells the greeting from a longer line.
            const std::size_t room = greeting.size() + 1 - std::min(m_line.size(), greeting.size() + 1);
            m_line.append(part.substr(0, room));
        } else {
            const char kind = m_line.empty() ? (part.empty() ? '\0' : part.front()) : m_line.front();
            const std::size_t limit = kind == 'P' ? maxPidLine : maxHeaderLine;
            if (m_line.size() + part.size() > limit)
                return refuse("a line of the status stream is over " + std::to_string(limit) + " bytes");
            m_line.append(part);
        }
        if (newline == std::string_view::npos) break;
        bytes.remove_prefix(newline + 1);
        if (!takeLine()) return false;
        m_line.clear();
    }
    return true;
}

bool RemoteStatusFrames::takeLine() {
    const std::string_view line = m_line;
    switch (m_expect) {
    case Expect::greeting:
        if (line == greeting) m_expect = Expect::fileOrPids;
        return true;
    case Expect::fileOrPids:
        if (line.starts_with("F ")) return takeFileHeader(line.substr(2));
        if (line == "P" || line.starts_with("P ")) return takePids(line.substr(1));
        return refuse("the status stream has an unknown line");
    case Expect::end:
        if (line != "E") return refuse("the status stream has no end after its pids");
        m_onSnapshot(std::exchange(m_snapshot, {}));
        m_snapshotBytes = 0;
        m_expect = Expect::fileOrPids;
        return true;
    case Expect::body:
    case Expect::bodyEnd:
        break;
    }
    return refuse("the status stream lost its place");
}

bool RemoteStatusFrames::takeFileHeader(std::string_view header) {
    const std::size_t space = header.find(' ');
    if (space == std::string_view::npos) return refuse("a file in the status stream has no name");
    std::size_t size = 0;
    if (!parseDecimal(header.substr(0, space), size))
        return refuse("a file in the status stream has no byte count");
    const std::string_view name = header.substr(space + 1);
    if (!SessionFileReader::isStatusFileName(name) ||
        name.find_first_of(std::string_view("/\0", 2)) != name.npos)
        return refuse("the status stream names a file that is not a status file");
    if (size > SessionFileReader::maxFileSize) return refuse("the status stream sends a file over 1 MiB");
    if (m_snapshot.files.size() >= maxFiles)
        return refuse("the status stream sends over " + std::to_string(maxFiles) + " files");
    if (m_snapshot.files.contains(std::string(name))) return refuse("the status stream sends a file twice");
    m_snapshotBytes += size;
    if (m_snapshotBytes > maxSnapshotBytes) return refuse("the status stream sends over 64 MiB at once");

    m_name = name;
    m_body.reserve(size);
    m_remaining = size;
    m_expect = size == 0 ? Expect::bodyEnd : Expect::body;
    return true;
}

bool RemoteStatusFrames::takePids(std::string_view list) {
    while (!list.empty()) {
        const std::size_t space = list.find(' ');
        const std::string_view word = list.substr(0, space);
        if (!word.empty()) {
            std::int64_t pid = 0;
            if (!parseDecimal(word, pid)) return refuse("the status stream has a pid that is not a number");
            m_snapshot.alivePids.insert(pid);
        }
        if (space == std::string_view::npos) break;
        list.remove_prefix(space + 1);
    }
    m_expect = Expect::end;
    return true;
}

bool RemoteStatusFrames::refuse(std::string why) {
    m_error = std::move(why);
    m_line = {};
    m_body = {};
    m_snapshot = {};
    return false;
}

} // namespace tovrin
