#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tovrin {

// Finds jq, the one outside program the status writer records through. Only the fixed search
// paths count: an editor started from the desktop may not share the terminal's PATH.
class JQLocator {
public:
    struct Availability {
        enum class Kind { system, userInstalled, missing };
        Kind kind = Kind::missing;
        std::string path; // empty when missing

        static Availability system(std::string p) { return {Kind::system, std::move(p)}; }
        static Availability userInstalled(std::string p) { return {Kind::userInstalled, std::move(p)}; }
        static Availability missing() { return {}; }

        std::string summary() const;
        bool operator==(const Availability&) const = default;
    };

    static constexpr const char* systemPath = "/usr/bin/jq";
    // /usr/bin/jq, /usr/local/bin/jq, <home>/.local/bin/jq, /home/linuxbrew/.linuxbrew/bin/jq.
    static std::vector<std::filesystem::path> standardSearchPaths(const std::filesystem::path& home);

    explicit JQLocator(const std::filesystem::path& home);
    JQLocator(std::vector<std::filesystem::path> searchPaths, std::filesystem::path systemJQ);

    // The first search path holding an executable file; `system` when that is the system's path.
    Availability locate() const;

    const std::vector<std::filesystem::path>& searchPaths() const { return m_searchPaths; }

private:
    std::vector<std::filesystem::path> m_searchPaths;
    std::filesystem::path m_systemPath;
};

} // namespace tovrin
