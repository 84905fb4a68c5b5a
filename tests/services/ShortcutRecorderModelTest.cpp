#include "services/hotkey/ShortcutRecorderModel.h"

#include "support/FakeGlobalShortcuts.h"
#include "support/MemoryDefaultsStore.h"
#include "support/ScopedEnv.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using enum RecorderAction;
using namespace ShortcutModifier;

constexpr Shortcut ctrlAltE{'e', control | alt};
constexpr std::uint32_t f5 = 0xffc2;

class ShortcutRecorderModelTest : public ::testing::Test {
protected:
    MemoryDefaultsStore m_store;
    test::FakeGlobalShortcuts m_desktop;
    std::vector<std::string> m_logged;
    KeyboardShortcuts m_shortcuts{m_store, m_desktop,
                                  [this](const std::string& line) { m_logged.push_back(line); }};
    ShortcutRecorderModel m_recorder{m_shortcuts, ShortcutName::toggleFloatingChip()};
};

TEST_F(ShortcutRecorderModelTest, KeysWhileRecording) {
    struct Case {
        const char* what;
        std::uint32_t keySym;
        std::uint32_t modifiers;
        RecorderAction action;
        std::optional<Shortcut> stored;
        bool recordsOn;
    };
    const Case cases[] = {
        {"Escape", KeySym::escape, 0, cancel, ctrlAltE, false},
        {"Tab", KeySym::tab, 0, passOn, ctrlAltE, false},
        {"Shift+Tab", KeySym::leftTab, shift, passOn, ctrlAltE, false},
        {"Backspace", KeySym::backSpace, 0, cleared, std::nullopt, true},
        {"keypad Delete", KeySym::keypadDelete, 0, cleared, std::nullopt, true},
        {"E alone", 'e', 0, refused, ctrlAltE, true},
        {"Shift+E", 'E', shift, refused, ctrlAltE, true},
        {"Space", ' ', 0, refused, ctrlAltE, true},
        {"Ctrl held", 0xffe3, control, ignored, ctrlAltE, true},
        {"F5 alone", f5, 0, taken, Shortcut{f5, 0}, false},
        {"Ctrl+Escape", KeySym::escape, control, taken, Shortcut{KeySym::escape, control}, false},
        {"Ctrl+Shift+E with Num Lock", 'E', control | shift | 16, taken, Shortcut{'e', control | shift},
         false},
    };
    for (const Case& c : cases) {
        m_shortcuts.setShortcut(ctrlAltE, ShortcutName::toggleFloatingChip());
        m_recorder.beginRecording();
        const RecorderKeyResult result = m_recorder.keyDown(c.keySym, c.modifiers);
        EXPECT_EQ(result.action, c.action) << c.what;
        EXPECT_EQ(m_recorder.shortcut(), c.stored) << c.what;
        EXPECT_EQ(m_recorder.isRecording(), c.recordsOn) << c.what;
        EXPECT_EQ(m_shortcuts.isPaused(), c.recordsOn) << c.what;
        m_recorder.endRecording();
    }
}

TEST_F(ShortcutRecorderModelTest, TheFieldShowsTheShortcutOrWhatIsHeld) {
    EXPECT_EQ(m_recorder.text(), "Ctrl+Alt+E");
    EXPECT_TRUE(m_recorder.canClear());
    m_recorder.beginRecording();
    EXPECT_EQ(m_recorder.text(), "");
    m_recorder.keyDown(0xffe9, control | alt);
    EXPECT_EQ(m_recorder.text(), "Ctrl+Alt+");
    EXPECT_NE(m_recorder.placeholder(), RecorderText::recordShortcut);

    // A change made elsewhere reaches the field.
    int changes = 0;
    auto subscription = m_recorder.onChange([&] { ++changes; });
    m_recorder.endRecording();
    m_shortcuts.setShortcut(std::nullopt, ShortcutName::toggleFloatingChip());
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(m_recorder.text(), "");
    EXPECT_FALSE(m_recorder.canClear());
}

TEST_F(ShortcutRecorderModelTest, AShortcutAnotherProgramHoldsIsTakenOnlyWhenForced) {
    const Shortcut ctrlAltT{'t', control | alt};
    m_desktop.heldElsewhere.insert(ctrlAltT);
    m_recorder.beginRecording();
    const RecorderKeyResult result = m_recorder.keyDown('t', control | alt);
    EXPECT_EQ(result.action, confirmHeldByAnotherProgram);
    EXPECT_EQ(m_recorder.shortcut(), ctrlAltE);
    EXPECT_TRUE(m_desktop.registered.contains(ctrlAltE)) << "asking doesn't give up the old shortcut";
    EXPECT_FALSE(m_shortcuts.isPaused());

    m_recorder.take(*result.shortcut);
    EXPECT_EQ(m_recorder.text(), "Ctrl+Alt+T");
    EXPECT_EQ(m_logged.size(), 1u);
}

TEST(ShortcutReachTest, OnlyAPlainX11SessionReachesEveryApplication) {
    EXPECT_EQ(reachNote(shortcutReach(true, false)), std::nullopt);
    EXPECT_NE(reachNote(shortcutReach(true, true)), std::nullopt);
    EXPECT_NE(reachNote(shortcutReach(false, false)), std::nullopt);
    test::ScopedEnv wayland("WAYLAND_DISPLAY", "wayland-0");
    EXPECT_TRUE(isWaylandSession());
}

} // namespace
} // namespace tovrin
