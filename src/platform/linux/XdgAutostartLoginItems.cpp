#include "platform/linux/XdgAutostartLoginItems.h"

#include "core/AtomicFile.h"
#include "core/KeyFile.h"
#include "core/UserPaths.h"
#include "core/Utf8.h"
#include "platform/linux/InstallationPaths.h"

#include <string_view>
#include <system_error>
#include <utility>

namespace tovrin {
namespace {

constexpr std::string_view markerKey = "X-Tovrin-Autostart";

std::filesystem::path entryFile() {
    return UserPaths::configHome() / "autostart" / "tovrin.desktop";
}

std::optional<std::filesystem::path> commandExecutable() {
    const auto prefix = InstallationPaths::prefixDir();
    if (!prefix) return std::nullopt;
    return *prefix / "bin" / "tovrin";
}

struct EntryState {
    bool ours = false;
    bool starts = false;
};

EntryState readEntry(const std::filesystem::path& file) {
    const auto text = readWholeFile(file);
    if (!text) return {};
    const auto keys = KeyFile::group(text.value(), "Desktop Entry");
    const auto flag = [&keys](std::string_view key) -> std::optional<bool> {
        const auto value = KeyFile::value(keys, key);
        return value ? KeyFile::boolean(*value) : std::nullopt;
    };
    return {.ours = flag(markerKey) == true,
            .starts = flag("Hidden") != true && flag("X-GNOME-Autostart-enabled") != false};
}

// One Exec argument: with a reserved character it goes in double quotes, inside which a backslash
// goes before each of " ` $ and backslash; "%" is doubled everywhere, so as not to read as a field code.
std::string execArgument(std::string_view argument) {
    constexpr std::string_view reserved = " \t\n\"'\\><~|&;$*?#()`";
    const bool quoted = argument.find_first_of(reserved) != std::string_view::npos;
    std::string out;
    if (quoted) out += '"';
    for (const char c : argument) {
        if (quoted && (c == '"' || c == '`' || c == '$' || c == '\\')) out += '\\';
        out += c;
        if (c == '%') out += '%';
    }
    if (quoted) out += '"';
    return out;
}

// The key file's escapes for string values, which readers undo before the Exec quoting.
std::string escapedValue(std::string_view value) {
    std::string out;
    for (const char c : value) {
        switch (c) {
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            out += c;
        }
    }
    return out;
}

// Nothing for a path a desktop entry can't hold: entries are UTF-8.
std::optional<std::string> entryText(const std::filesystem::path& executable) {
    const std::string path = executable.string();
    if (!executable.is_absolute() || Utf8::sanitized(path) != path) return std::nullopt;
    return "# Tovrin's \"Launch at login\" setting wrote this file and removes it when turned off.\n"
           "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Tovrin\n"
           "Comment=Watch your AI coding agents and hear when one waits for you\n"
           "Exec=" +
           escapedValue(execArgument(path)) +
           "\n"
           "Icon=tovrin\n"
           "Terminal=false\n" +
           std::string(markerKey) + "=true\n";
}

} // namespace

XdgAutostartLoginItems::XdgAutostartLoginItems() : XdgAutostartLoginItems(commandExecutable()) {}

XdgAutostartLoginItems::XdgAutostartLoginItems(std::optional<std::filesystem::path> executable)
    : m_executable(std::move(executable)) {}

bool XdgAutostartLoginItems::isEnabled() const {
    const EntryState entry = readEntry(entryFile());
    return entry.ours && entry.starts;
}

void XdgAutostartLoginItems::setEnabled(bool enabled) {
    const auto file = entryFile();
    const bool present = existsAt(file);
    if (present && !readEntry(file).ours) return;
    std::error_code ignored;
    if (!enabled) {
        if (present) std::filesystem::remove(file, ignored);
        return;
    }
    const auto text = m_executable ? entryText(*m_executable) : std::nullopt;
    if (!text) return;
    std::filesystem::create_directories(file.parent_path(), ignored);
    // A failed write leaves the old state, which the caller reads back.
    static_cast<void>(writeFileAtomically(file, *text));
}

} // namespace tovrin
