#include "core/BuildInfo.h"
#include "services/UpdaterManager.h"
#include "support/FakeHttpClient.h"
#include "support/MemoryDefaultsStore.h"
#include "support/QtEventLoopTest.h"
#include "support/SettleEvents.h"
#include "support/TrayModelFixture.h"
#include "support/WidgetInput.h"
#include "ui/theme/ForgeToggle.h"
#include "ui/viewmodels/AboutContent.h"
#include "ui/views/AboutView.h"
#include "ui/views/AppActionsFooter.h"
#include "ui/views/FloatingChipPanel.h"
#include "ui/views/FloatingChipView.h"
#include "ui/views/FloatingWindowToggle.h"
#include "ui/views/MenuContentView.h"
#include "ui/views/PanelButton.h"
#include "ui/views/PanelWindow.h"
#include "ui/views/SessionListView.h"
#include "ui/views/SessionRowView.h"
#include "ui/views/SymbolButton.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using enum SessionState;
using Role = QAccessible::Role;

// Every interface a screen reader reaches from `node` by walking children; each child must name
// `node` as its parent, or the bridge builds a tree that tools can't walk back up.
void walk(QAccessibleInterface* node, std::vector<QAccessibleInterface*>& out) {
    out.push_back(node);
    for (int i = 0; i < node->childCount(); ++i) {
        QAccessibleInterface* child = node->child(i);
        ASSERT_NE(child, nullptr);
        ASSERT_NE(child->parent(), nullptr);
        EXPECT_EQ(child->parent()->object(), node->object()) << child->text(QAccessible::Name).toStdString();
        EXPECT_EQ(node->indexOfChild(child), i);
        walk(child, out);
    }
}

// The shown interface of that role and name in `window`, reached as tools reach it: from the
// application, whose children are its top-level windows.
QAccessibleInterface* find(QWidget* window, Role role, const QString& name) {
    QAccessibleInterface* application = QAccessible::queryAccessibleInterface(qApp);
    std::vector<QAccessibleInterface*> all;
    for (int i = 0; i < application->childCount(); ++i) {
        if (application->child(i)->object() == window) walk(application->child(i), all);
    }
    for (QAccessibleInterface* node : all) {
        if (node->role() == role && node->text(QAccessible::Name) == name && !node->state().invisible)
            return node;
    }
    return nullptr;
}

QString qs(const std::string& text) {
    return QString::fromStdString(text);
}

void press(QAccessibleInterface* node, const QString& action = QAccessibleActionInterface::pressAction()) {
    ASSERT_NE(node->actionInterface(), nullptr);
    ASSERT_TRUE(node->actionInterface()->actionNames().contains(action)) << action.toStdString();
    node->actionInterface()->doAction(action);
    test::settleEvents();
}

// Buttons pressed by assistive tools click a moment later, as they are seen to go down first.
class AccessibilityTest : public test::QtEventLoopTest {
protected:
    void SetUp() override {
        fixture.publish({fixture.make("claude-code", "w1", waiting, 120),
                         fixture.make("codex-cli", "k1", working, 300),
                         fixture.make("codex-cli", "i1", idle, 3600)});
        chip = std::make_unique<FloatingChipPanel>(new FloatingChipView(fixture.model, {}));
        chip->show();
        about = std::make_unique<AboutView>(updater);
        about->show();
        settings = std::make_unique<QWidget>();
        settings->setWindowTitle(QStringLiteral("Settings"));
        toggle = new ForgeToggle(QStringLiteral("Launch at login"), settings.get());
        settings->show();
        // Last: it closes when another window takes over.
        panel = std::make_unique<PanelWindow>(fixture.model, fixture.preferences, footerActions());
        panel->openAt(QRect(200, 0, 24, 24));
        test::settleEvents();
    }
    AppActions footerActions() {
        return {[this] { pressed.push_back("preferences"); }, [this] { pressed.push_back("feedback"); },
                [this] { pressed.push_back("about"); }, [this] { pressed.push_back("quit"); }};
    }
    std::vector<SessionRowView*> panelRows() const { return panel->content()->sessionList()->rows(); }

    test::TrayModelFixture fixture;
    test::FakeHttpClient http;
    MemoryDefaultsStore updateDefaults;
    UpdaterManager updater{UpdateConfiguration{}, {http, nullptr, updateDefaults}, std::nullopt, {}};
    std::vector<std::string> pressed;
    std::unique_ptr<PanelWindow> panel;
    std::unique_ptr<FloatingChipPanel> chip;
    std::unique_ptr<AboutView> about;
    std::unique_ptr<QWidget> settings;
    ForgeToggle* toggle = nullptr;
};

TEST_F(AccessibilityTest, EveryControlIsFoundByRoleAndItsVisibleText) {
    const std::string version = AboutContent::versionLine(BuildInfo::version, BuildInfo::buildNumber);
    const struct {
        QWidget* window;
        std::vector<std::pair<Role, QString>> controls;
    } windows[] = {
        {panel.get(),
         {{Role::Window, "Sessions"},
          {Role::StaticText, "TOVRIN"},
          {Role::List, qs(fixture.model.waitingTitle())},
          {Role::List, qs(fixture.model.restingTitle())},
          // One item per session: title, tool, state and age.
          {Role::ListItem, "Session w1, Claude Code, waiting, 2m ago"},
          {Role::ListItem, "Session k1, Codex, working, 5m ago"},
          {Role::ListItem, "Session i1, Codex, idle, 1h ago"},
          {Role::Button, "Hide floating window"},
          {Role::Button, "Preferences"},
          {Role::Button, "Feedback"},
          {Role::Button, "About"},
          {Role::Button, "Quit"}}},
        {chip.get(),
         {{Role::Window, "Floating window"}, {Role::Button, "1 waiting \u00B7 1 working \u00B7 1 idle"}}},
        {about.get(),
         {{Role::Window, "About Tovrin"},
          {Role::StaticText, "TOVRIN"},
          {Role::StaticText, qs(version)},
          {Role::StaticText, "One app to watch them all."},
          {Role::Button, "Check for Updates\u2026"}}},
        {settings.get(), {{Role::CheckBox, "Launch at login"}}},
    };
    for (const auto& [window, controls] : windows) {
        for (const auto& [role, name] : controls)
            EXPECT_NE(find(window, role, name), nullptr)
                << window->windowTitle().toStdString() << ": " << name.toStdString();
    }

    // The row is one item: badge and text lines are not read out again beside it.
    QAccessibleInterface* row = find(panel.get(), Role::ListItem, "Session w1, Claude Code, waiting, 2m ago");
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->childCount(), 0);
    // Hover buttons say what they do.
    SessionRowView* hovered = panelRows().front();
    test::hover(hovered);
    for (QWidget* button : std::vector<QWidget*>{hovered->revealButton(), hovered->hideButton()})
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name).isEmpty());
}

TEST_F(AccessibilityTest, PressActionsDoWhatAClickDoesAndStatesFollow) {
    press(find(panel.get(), Role::ListItem, "Session k1, Codex, working, 5m ago"));
    EXPECT_EQ(fixture.focuser.focused, (std::vector<std::string>{"k1"}));
    press(find(panel.get(), Role::ListItem, "Session w1, Claude Code, waiting, 2m ago"), "Reveal in Files");
    EXPECT_EQ(fixture.focuser.revealed, (std::vector<std::string>{"w1"}));

    press(find(panel.get(), Role::Button, "About"));
    EXPECT_TRUE(pumpUntil([&] { return pressed == std::vector<std::string>{"about"}; }));
    press(find(panel.get(), Role::Button, "Hide floating window"));
    EXPECT_TRUE(pumpUntil([&] { return !fixture.preferences.showFloatingChip(); }));
    test::settleEvents();
    EXPECT_NE(find(panel.get(), Role::Button, "Show floating window"), nullptr) << "renamed with its label";

    QAccessibleInterface* header = find(chip.get(), Role::Button, "1 waiting \u00B7 1 working \u00B7 1 idle");
    ASSERT_NE(header, nullptr);
    EXPECT_TRUE(header->state().expandable);
    EXPECT_FALSE(header->state().expanded);
    EXPECT_EQ(find(chip.get(), Role::Button, "Quit"), nullptr) << "folded away";
    press(header);
    EXPECT_TRUE(header->state().expanded);
    EXPECT_NE(find(chip.get(), Role::ListItem, "Session i1, Codex, idle, 1h ago"), nullptr);
    EXPECT_NE(find(chip.get(), Role::Button, "Quit"), nullptr);

    QAccessibleInterface* launch = find(settings.get(), Role::CheckBox, "Launch at login");
    ASSERT_NE(launch, nullptr);
    EXPECT_TRUE(launch->state().checkable);
    EXPECT_FALSE(launch->state().checked);
    press(launch, QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_TRUE(launch->state().checked);

    // Hiding a row from its item takes it out of the list.
    press(find(panel.get(), Role::ListItem, "Session w1, Claude Code, waiting, 2m ago"), "Hide session");
    fixture.loop.drain();
    test::settleEvents();
    EXPECT_EQ(find(panel.get(), Role::ListItem, "Session w1, Claude Code, waiting, 2m ago"), nullptr);
}

TEST_F(AccessibilityTest, TheKeyboardWalksThePanelRaisesASessionAndCloses) {
    const auto rows = panelRows();
    ASSERT_EQ(rows.size(), 3u);
    AppActionsFooter* footer = panel->content()->footer();
    const auto focused = [this] { return panel->focusWidget(); };
    const auto key = [&](int code) {
        QKeyEvent down(QEvent::KeyPress, code, Qt::NoModifier);
        QApplication::sendEvent(focused(), &down);
        test::settleEvents();
    };
    // A panel just opened has chosen nothing.
    EXPECT_EQ(focused(), panel->content());

    const struct {
        int key;
        QWidget* lands;
    } steps[] = {
        {Qt::Key_Down, rows[0]},
        {Qt::Key_Down, rows[1]},
        {Qt::Key_Up, rows[0]},
        {Qt::Key_Up, footer->button(3)}, // round to the bottom
        {Qt::Key_Down, rows[0]},
        {Qt::Key_Tab, rows[1]},
        {Qt::Key_Down, rows[2]},
        {Qt::Key_Down, panel->content()->floatingWindowToggle()},
        {Qt::Key_Down, footer->button(0)},
        {Qt::Key_Backtab, panel->content()->floatingWindowToggle()},
        {Qt::Key_Up, rows[2]},
    };
    for (const auto& step : steps) {
        key(step.key);
        EXPECT_EQ(focused(), step.lands) << QKeySequence(step.key).toString().toStdString();
    }
    EXPECT_TRUE(rows[2]->showsKeyboardFocus());
    EXPECT_FALSE(rows[0]->showsKeyboardFocus());

    key(Qt::Key_Return);
    EXPECT_EQ(fixture.focuser.focused, (std::vector<std::string>{"i1"}));
    key(Qt::Key_Escape);
    EXPECT_FALSE(panel->isVisible());
}

} // namespace
} // namespace tovrin
