#include "focus/AppActivator.h"

#include "support/FakeFocusPorts.h"
#include "support/FakeWindowSystem.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

WindowInfo window(std::uint64_t id, std::string instance, std::string className) {
    return {id, "title", std::move(instance), std::move(className), std::nullopt};
}

TEST(AppActivatorTest, NameMatchesTheClassOrPartOfTheInstanceLoosely) {
    struct Case {
        std::string name, instance, className;
        bool matches;
    };
    const std::vector<Case> cases{
        {"XTerm", "xterm", "XTerm", true},
        {"Konsole", "konsole", "konsole", true},
        {"firefox", "Navigator", "Firefox", true},
        {"WezTerm", "org.wezfurlong.wezterm", "org.wezfurlong.wezterm", true},
        {"GNOME Terminal", "gnome-terminal-server", "Gnome-terminal", true},
        {"Code", "code-insiders", "Code - Insiders", true},
        {"Code - Insiders", "code-insiders", "Code - Insiders", true},
        {"Visual Studio Code", "code", "Code", false},
        {"Term", "konsole", "Terminal", false},
        {"", "xterm", "XTerm", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(AppActivator::windowMatches(window(1, c.instance, c.className), c.name), c.matches)
            << c.name;
}

class AppActivatorFixture : public ::testing::Test {
protected:
    void desktopFile(const std::string& relative, const std::string& body) {
        m_dirs.write(relative, "[Desktop Entry]\nType=Application\n" + body);
    }
    std::vector<fs::path> applicationDirs() const {
        return {m_dirs.path() / "user/applications", m_dirs.path() / "system/applications"};
    }
    AppActivator activator() { return AppActivator(m_windows, m_shell, applicationDirs()); }

    test::TempDir m_dirs;
    test::FakeWindowSystem m_windows;
    test::FocusLog m_log;
    test::FakeProcessRunner m_runner{m_log};
    test::RecordingShell m_shell{m_runner, m_log, {"/usr/bin/gtk-launch", "/usr/bin/gio"}};
};

TEST_F(AppActivatorFixture, DesktopEntriesFollowTheFolderOrderAndSkipWhatCantLaunch) {
    desktopFile("user/applications/code.desktop", "Name=My Code\n");
    desktopFile("system/applications/code.desktop", "Name=Visual Studio Code\nStartupWMClass=Code\n");
    desktopFile("system/applications/kde/org.kde.konsole.desktop",
                "Name=Konsole\nName[de]=Konsole DE\n\n[Desktop Action new]\nName=New Window\n");
    desktopFile("user/applications/gone.desktop", "Name=Gone\nHidden=true\n");
    desktopFile("system/applications/gone.desktop", "Name=Gone\n");
    m_dirs.write("system/applications/link.desktop", "[Desktop Entry]\nType=Link\nName=Link\n");
    m_dirs.write("system/applications/notes.txt", "[Desktop Entry]\nType=Application\nName=Notes\n");

    const auto entries = AppActivator::readDesktopEntries(applicationDirs());
    std::vector<std::string> seen;
    for (const DesktopEntry& e : entries)
        seen.push_back(e.id + "=" + e.name + "/" + e.startupWMClass);
    EXPECT_EQ(seen, (std::vector<std::string>{"code=My Code/", "kde-org.kde.konsole=Konsole/"}));
}

TEST_F(AppActivatorFixture, DesktopEntryByNameBeforeAnyByIdPart) {
    const std::vector<DesktopEntry> entries{{"xfce4-terminal", "Xfce Terminal", "", "/a"},
                                            {"org.gnome.Terminal", "Terminal", "", "/b"},
                                            {"terminal-extra", "Extra", "", "/c"}};
    const auto idOf = [&](std::string_view name) {
        const auto entry = AppActivator::findDesktopEntry(entries, name);
        return entry ? entry->id : "-";
    };
    EXPECT_EQ(idOf("Terminal"), "org.gnome.Terminal");
    EXPECT_EQ(idOf("xfce terminal"), "xfce4-terminal");
    EXPECT_EQ(idOf("xfce4"), "xfce4-terminal");
    EXPECT_EQ(idOf("extra"), "terminal-extra");
    EXPECT_EQ(idOf("GNOME Terminal"), "-");
    EXPECT_EQ(idOf(""), "-");
}

TEST_F(AppActivatorFixture, RaisesAWindowOfTheAppElseLaunchesItsDesktopEntry) {
    desktopFile("system/applications/code.desktop", "Name=Visual Studio Code\nStartupWMClass=Code\n");
    desktopFile("system/applications/org.example.Viewer.desktop", "Name=Picture Viewer\n");
    desktopFile("system/applications/kde/org.kde.konsole.desktop", "Name=Konsole\n");
    const std::string konsole = (m_dirs.path() / "system/applications/kde/org.kde.konsole.desktop").string();
    const std::string gtkLaunch = "start /usr/bin/gtk-launch kde-org.kde.konsole";
    const std::vector<WindowInfo> busy{window(1, "firefox", "firefox"), window(2, "konsole", "konsole"),
                                       window(3, "konsole", "konsole"), window(4, "code", "Code"),
                                       window(5, "viewer", "Viewer")};
    const std::vector<WindowInfo> xtermOnly{window(1, "xterm", "XTerm")};
    struct Case {
        std::string name;
        const std::vector<WindowInfo>& windows;
        bool gtkLaunchStarts;
        std::uint64_t raised; // 0 for none
        std::vector<std::string> log;
    };
    const std::vector<Case> cases{
        {"Konsole", busy, true, 2, {}}, // the first window of the app
        // A terminal session inside VS Code records its host as "VS Code"; the window class is "Code".
        {"VS Code", busy, true, 4, {}},
        {"Visual Studio Code", busy, true, 4, {}}, // through the desktop entry's StartupWMClass
        {"Picture Viewer", busy, true, 5, {}},     // no StartupWMClass: the id's last part
        {"Konsole", xtermOnly, true, 0, {gtkLaunch}},
        {"Konsole", xtermOnly, false, 0, {gtkLaunch, "start /usr/bin/gio launch " + konsole}},
        {"Nonesuch", xtermOnly, true, 0, {}},
        {"", xtermOnly, true, 0, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name + (c.gtkLaunchStarts ? "" : " without gtk-launch"));
        m_windows.windows = c.windows;
        m_windows.activated.clear();
        m_log.clear();
        m_runner.startSucceeds = c.gtkLaunchStarts;
        activator().activate(c.name);
        EXPECT_EQ(m_windows.activated, c.raised ? std::vector{c.raised} : std::vector<std::uint64_t>{});
        EXPECT_EQ(m_log.entries(), c.log);
    }
}

} // namespace
} // namespace tovrin
