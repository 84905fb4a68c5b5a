#include "ui/views/ShortcutRecorder.h"

#include "support/FakeGlobalShortcuts.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SettleEvents.h"
#include "ui/views/PopupShortcutFilter.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenu>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

constexpr Shortcut f5{0xffc2, 0};

void focusIn(QWidget& widget, Qt::FocusReason reason) {
    QFocusEvent event(QEvent::FocusIn, reason);
    QApplication::sendEvent(&widget, &event);
}

// Answers whether the application took the press.
bool type(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    const bool taken = QApplication::sendEvent(&widget, &press) && press.isAccepted();
    QApplication::sendEvent(&widget, &release);
    return taken;
}

class ShortcutRecorderTest : public ::testing::Test {
protected:
    MemoryDefaultsStore m_store;
    test::FakeGlobalShortcuts m_desktop;
    KeyboardShortcuts m_shortcuts{m_store, m_desktop, [](const std::string&) {}};
};

TEST_F(ShortcutRecorderTest, RecordsWhenTheUserComesToItAndFollowsTheKeys) {
    ShortcutRecorder recorder(m_shortcuts);
    const auto* clearButton = recorder.findChild<QAbstractButton*>();
    EXPECT_EQ(recorder.accessibleDescription(), "Ctrl+Alt+E");
    for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::OtherFocusReason, Qt::PopupFocusReason}) {
        focusIn(recorder, reason);
        EXPECT_FALSE(recorder.isRecording()) << "a window opening or coming forward doesn't record";
    }

    focusIn(recorder, Qt::TabFocusReason);
    ASSERT_TRUE(recorder.isRecording());
    QKeyEvent windowShortcut(QEvent::ShortcutOverride, Qt::Key_W, Qt::ControlModifier);
    QApplication::sendEvent(&recorder, &windowShortcut);
    EXPECT_TRUE(windowShortcut.isAccepted()) << "the window's own shortcuts wait while it records";
    EXPECT_TRUE(type(recorder, Qt::Key_E));
    EXPECT_TRUE(recorder.isRecording()) << "E alone is refused";
    type(recorder, Qt::Key_F5);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(m_shortcuts.getShortcut(ShortcutName::toggleFloatingChip()), f5);
    EXPECT_EQ(recorder.accessibleDescription(), "F5");

    type(recorder, Qt::Key_Space);
    ASSERT_TRUE(recorder.isRecording()) << "Space starts recording from the keyboard";
    type(recorder, Qt::Key_Escape);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(m_shortcuts.getShortcut(ShortcutName::toggleFloatingChip()), f5);

    recorder.click();
    type(recorder, Qt::Key_Backspace);
    EXPECT_EQ(m_shortcuts.getShortcut(ShortcutName::toggleFloatingChip()), std::nullopt);
    EXPECT_FALSE(clearButton->isVisibleTo(&recorder));
    EXPECT_TRUE(m_shortcuts.isPaused()) << "clearing goes on recording";
}

TEST_F(ShortcutRecorderTest, AnOpenMenuPassesTheShortcutOnAndKeepsOtherKeys) {
    PopupShortcutFilter filter(m_shortcuts);
    int presses = 0;
    auto subscription = m_shortcuts.onKeyDown(ShortcutName::toggleFloatingChip(), [&] { ++presses; });
    QMenu menu;
    menu.addAction(QStringLiteral("Item"));
    menu.popup(QPoint(0, 0));
    test::settleEvents();
    ASSERT_EQ(QApplication::activePopupWidget(), &menu);

    EXPECT_TRUE(type(menu, Qt::Key_E, Qt::ControlModifier | Qt::AltModifier));
    EXPECT_EQ(presses, 1);
    type(menu, Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(presses, 1);
    menu.close();
    test::settleEvents();
    type(menu, Qt::Key_E, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(presses, 1) << "without a popup the desktop's grab reports presses";
}

} // namespace
} // namespace tovrin
