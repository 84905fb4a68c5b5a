#include "platform/linux/XdgAutostartLoginItems.h"

#include "core/AtomicFile.h"
#include "services/LoginItemManager.h"
#include "support/ScopedEnv.h"
#include "support/ShellCommand.h"
#include "support/TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace tovrin {
namespace {

namespace fs = std::filesystem;

class XdgAutostartLoginItemsTest : public ::testing::Test {
protected:
    test::TempDir dir;
    test::ScopedEnv config{"XDG_CONFIG_HOME", (dir.path() / "config").string()};
    fs::path entry = dir.path() / "config" / "autostart" / "tovrin.desktop";

    std::string entryText() const { return readWholeFile(entry).value(); }
};

// What the desktop's own checker says of the written entry; skipped where it isn't installed.
void expectValidEntry(const fs::path& file) {
    if (!test::haveProgram("desktop-file-validate")) return;
    const std::string command = "desktop-file-validate '" + file.string() + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
}

TEST_F(XdgAutostartLoginItemsTest, TurningOnWritesAValidEntryForThisInstallationAndOffRemovesIt) {
    XdgAutostartLoginItems items(fs::path("/opt/my tools/100%/bin/tovrin"));
    LoginItemManager manager(items);
    EXPECT_FALSE(manager.isEnabled.get());

    manager.setEnabled(true);
    EXPECT_TRUE(manager.isEnabled.get());
    expectValidEntry(entry);
    // Quoted for the space, the percent sign doubled so that it doesn't read as a field code.
    EXPECT_NE(entryText().find("Exec=\"/opt/my tools/100%%/bin/tovrin\"\n"), std::string::npos)
        << entryText();

    manager.setEnabled(false);
    EXPECT_FALSE(manager.isEnabled.get());
    EXPECT_FALSE(fs::exists(entry));
}

TEST_F(XdgAutostartLoginItemsTest, AnEntryThatIsNotOursIsNeitherReportedNorTouched) {
    const std::string foreign = "[Desktop Entry]\nType=Application\nName=Mine\nExec=/usr/bin/true\n";
    dir.write("config/autostart/tovrin.desktop", foreign);
    XdgAutostartLoginItems items(fs::path("/usr/bin/tovrin"));
    LoginItemManager manager(items);
    EXPECT_FALSE(manager.isEnabled.get());

    manager.setEnabled(true);
    EXPECT_FALSE(manager.isEnabled.get());
    manager.setEnabled(false);
    EXPECT_EQ(entryText(), foreign);
}

TEST_F(XdgAutostartLoginItemsTest, OurEntryTurnedOffByTheDesktopReadsOffAndTurnsOnAgain) {
    XdgAutostartLoginItems items(fs::path("/usr/bin/tovrin"));
    items.setEnabled(true);
    const std::string ours = entryText();
    for (const char* switchedOff : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
        SCOPED_TRACE(switchedOff);
        ASSERT_TRUE(writeFileAtomically(entry, ours + switchedOff));
        EXPECT_FALSE(items.isEnabled());
        items.setEnabled(true);
        EXPECT_TRUE(items.isEnabled());
    }
}

TEST_F(XdgAutostartLoginItemsTest, AFailedWriteLeavesTheToggleOff) {
    // A file where the autostart folder should be: nothing can be written below it.
    dir.write("config/autostart", "not a folder");
    XdgAutostartLoginItems items(fs::path("/usr/bin/tovrin"));
    LoginItemManager manager(items);
    manager.setEnabled(true);
    EXPECT_FALSE(manager.isEnabled.get());

    XdgAutostartLoginItems withoutInstallation(std::nullopt);
    withoutInstallation.setEnabled(true);
    EXPECT_FALSE(withoutInstallation.isEnabled());
}

} // namespace
} // namespace tovrin
