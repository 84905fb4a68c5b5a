#include "alerts/CustomSoundManager.h"

#include "core/AsciiText.h"

#include <algorithm>
#include <cctype>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace tovrin {

namespace {

std::string uppered(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

std::string extensionList() {
    std::string list;
    for (const auto ext : CustomSoundManager::supportedExtensions) {
        if (!list.empty()) list += ", ";
        list += ext;
    }
    return list;
}

// Anything at the path, a dangling link included: a copy must never write through a link.
bool occupied(const fs::path& path) {
    std::error_code ec;
    return fs::exists(fs::symlink_status(path, ec));
}

bool isReadableFile(const fs::path& path) {
    std::error_code ec;
    return fs::is_regular_file(path, ec) && ::access(path.c_str(), R_OK) == 0;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

int naturalCompare(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            auto run = [](std::string_view s, std::size_t& pos) {
                while (pos < s.size() && s[pos] == '0')
                    ++pos;
                const auto start = pos;
                while (pos < s.size() && isDigit(s[pos]))
                    ++pos;
                return s.substr(start, pos - start);
            };
            const auto x = run(a, i);
            const auto y = run(b, j);
            if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
            if (const auto c = x.compare(y); c != 0) return c < 0 ? -1 : 1;
            continue;
        }
        const auto x = std::tolower(static_cast<unsigned char>(a[i++]));
        const auto y = std::tolower(static_cast<unsigned char>(b[j++]));
        if (x != y) return x < y ? -1 : 1;
    }
    const bool aLeft = i < a.size();
    const bool bLeft = j < b.size();
    return aLeft == bLeft ? 0 : (aLeft ? 1 : -1);
}

std::string CustomSoundManager::ImportError::description() const {
    switch (kind) {
    case Kind::unsupportedFormat:
        if (detail.empty()) return "That file has no extension. Choose a " + extensionList() + " file.";
        return uppered(detail) + " files aren't supported. Choose a " + extensionList() + " file.";
    case Kind::unreadable:
        return fs::path(detail).filename().string() + " couldn't be read.";
    case Kind::copyFailed:
        break;
    }
    return "The sound couldn't be added: " + detail;
}

CustomSoundManager::CustomSoundManager(fs::path folder) : m_folder(std::move(folder)) {}

std::optional<std::string> CustomSoundManager::filename(std::string_view id) {
    if (!id.starts_with(idPrefix)) return std::nullopt;
    const auto name = id.substr(idPrefix.size());
    if (name.empty() || name == "." || name == "..") return std::nullopt;
    if (name.find('/') != std::string_view::npos || name.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    return std::string(name);
}

std::string CustomSoundManager::displayName(const fs::path& file) {
    return file.filename().stem().string();
}

std::string CustomSoundManager::extensionOf(const fs::path& file) {
    auto ext = file.filename().extension().string();
    return ext.empty() ? ext : ext.substr(1);
}

bool CustomSoundManager::isSupported(std::string_view extension) {
    return std::ranges::find(supportedExtensions, extension) != supportedExtensions.end();
}

AlertSound CustomSoundManager::soundAt(const fs::path& file) const {
    return {std::string(idPrefix) + file.filename().string(), displayName(file), AlertSound::Custom{file}};
}

std::vector<AlertSound> CustomSoundManager::sounds() const {
    std::vector<AlertSound> result;
    std::error_code ec;
    fs::directory_iterator it(m_folder, ec);
    for (; !ec && it != fs::directory_iterator(); it.increment(ec)) {
        const auto& path = it->path();
        const auto name = path.filename().string();
        if (name.empty() || name.front() == '.') continue;
        if (!isSupported(AsciiText::lowercased(extensionOf(path)))) continue;
        std::error_code typeError;
        if (!it->is_regular_file(typeError)) continue;
        result.push_back(soundAt(path));
    }
    // Listing order is the file system's; sorting by id first makes ties come out the same every time.
    std::ranges::sort(result, {}, &AlertSound::id);
    std::ranges::stable_sort(result, [](const AlertSound& a, const AlertSound& b) {
        return naturalCompare(a.displayName, b.displayName) < 0;
    });
    return result;
}

std::optional<fs::path> CustomSoundManager::url(std::string_view id) const {
    const auto name = filename(id);
    if (!name) return std::nullopt;
    auto path = m_folder / *name;
    std::error_code ec;
    if (!fs::exists(path, ec)) return std::nullopt;
    return path;
}

bool CustomSoundManager::createFolder() const {
    std::error_code ec;
    fs::create_directories(m_folder, ec);
    return !ec;
}

fs::path CustomSoundManager::availableURL(const fs::path& source) const {
    const auto name = source.filename();
    const auto stem = name.stem().string();
    const auto ext = extensionOf(name);
    auto candidate = m_folder / name;
    for (int n = 2; occupied(candidate); ++n) {
        candidate = m_folder / (stem + "-" + std::to_string(n) + "." + ext);
    }
    return candidate;
}

Result<AlertSound, CustomSoundManager::ImportError>
CustomSoundManager::importSound(const fs::path& source) const {
    using R = Result<AlertSound, ImportError>;
    const auto ext = AsciiText::lowercased(extensionOf(source));
    if (!isSupported(ext)) return R::failure({ImportError::Kind::unsupportedFormat, ext});
    if (!isReadableFile(source)) return R::failure({ImportError::Kind::unreadable, source.string()});

    std::error_code ec;
    fs::create_directories(m_folder, ec);
    if (ec) return R::failure({ImportError::Kind::copyFailed, ec.message()});
    const auto destination = availableURL(source);
    fs::copy_file(source, destination, fs::copy_options::none, ec);
    if (ec) return R::failure({ImportError::Kind::copyFailed, ec.message()});
    return soundAt(destination);
}

Result<void> CustomSoundManager::remove(std::string_view id) const {
    const auto name = filename(id);
    if (!name) return {};
    const auto path = m_folder / *name;
    if (!occupied(path)) return {};
    std::error_code ec;
    // A link is removed itself, never what it points to.
    fs::remove(path, ec);
    if (ec) return Result<void>::failure(ec.message());
    return {};
}

} // namespace tovrin
