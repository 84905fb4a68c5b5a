#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tovrin::test {

// A fresh folder under the system temp folder, removed with everything in it at destruction.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    // Writes a file below the folder, creating parent folders; returns its path.
    std::filesystem::path write(const std::string& relative, std::string_view content) const;

private:
    std::filesystem::path m_path;
};

// Text of a whole file; empty when it can't be read.
std::string readText(const std::filesystem::path& file);

// The names in a folder, sorted.
std::vector<std::string> entriesOf(const std::filesystem::path& dir);

} // namespace tovrin::test
