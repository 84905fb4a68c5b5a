#pragma once

#include <filesystem>
#include <string_view>

namespace tovrin {

// Tells our hook entries from everyone else's. An entry is ours when its command runs the
// installed writer, <home>/.tovrin/agent-status.sh, as every version has written it: the path,
// shell-quoted where needed, as the command's first word. A command that only mentions a file
// of that name (a user's own ~/bin/agent-status.sh, an "echo ... agent-status.sh") is not ours.
class HookOwnership {
public:
    explicit HookOwnership(std::filesystem::path writer) : m_writer(std::move(writer)) {}

    bool isOurCommand(std::string_view command) const;
    const std::filesystem::path& writer() const { return m_writer; }

private:
    std::filesystem::path m_writer;
};

} // namespace tovrin
