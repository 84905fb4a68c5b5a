#include "ui/views/FloatingChipWindowController.h"

#include "support/TrayModelFixture.h"
#include "support/WidgetInput.h"
#include "ui/views/FloatingChipHeader.h"
#include "ui/views/FloatingChipPanel.h"
#include "ui/views/FloatingChipView.h"

#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>

namespace tovrin {
namespace {

using enum SessionState;

class FloatingChipWindowControllerTest : public ::testing::Test {
protected:
    std::unique_ptr<FloatingChipWindowController> start() {
        auto controller =
            std::make_unique<FloatingChipWindowController>(chip.model, chip.preferences, defaults);
        controller->buildPanel();
        controller->observe();
        controller->applyOpacity();
        controller->evaluateVisibility();
        return controller;
    }
    static void tapHeader(FloatingChipPanel* panel) {
        FloatingChipView* view = panel->view();
        test::click(view->header(), view, view->header()->rect().center());
        test::settleEvents();
    }
    // Qt's geometry of the top-right corner: one past the last column, the first row.
    static QPoint topRight(const QWidget* window) {
        const QRect frame = window->geometry();
        return {frame.x() + frame.width(), frame.y()};
    }

    MemoryDefaultsStore defaults;
    test::TrayModelFixture chip{defaults};
};

TEST_F(FloatingChipWindowControllerTest,
       FirstPlacedInsetFromTheScreensCornerUnfoldsLeftAndDownAndKeepsADraggedCorner) {
    chip.publish({chip.make("claude", "w1", waiting), chip.make("claude", "k1", working),
                  chip.make("claude", "i1", idle)});
    auto controller = start();
    FloatingChipPanel* panel = controller->panel();
    ASSERT_TRUE(panel->isVisible());
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(topRight(panel), QPoint(available.x() + available.width() - 16, available.y() + 16));
    EXPECT_EQ(panel->size(), panel->view()->sizeHint());
    const QRect collapsed = panel->geometry();

    tapHeader(panel);
    const QRect expanded = panel->geometry();
    // As wide as the list, or as the header line if that needs more.
    EXPECT_EQ(expanded.width(),
              std::max(FloatingChipView::listWidth, panel->view()->header()->sizeHint().width()) +
                  2 * FloatingChipView::shadowMargin);
    EXPECT_GT(expanded.height(), collapsed.height());
    EXPECT_EQ(expanded.right(), collapsed.right());
    EXPECT_EQ(expanded.top(), collapsed.top());

    // Dragged while unfolded; the corner is saved in screen coordinates.
    test::drag(panel->view(), panel->view()->header()->geometry().center(), QPoint(-300, 120));
    EXPECT_TRUE(panel->view()->expanded()) << "a drag is no tap";
    const QPoint corner = topRight(panel);
    EXPECT_EQ(corner, QPoint(collapsed.x() + collapsed.width() - 300, collapsed.y() + 120));
    EXPECT_EQ(defaults.object("chipTopRightX"), nlohmann::json(double(corner.x())));
    EXPECT_EQ(defaults.object("chipTopRightY"), nlohmann::json(double(corner.y())));
    tapHeader(panel);
    EXPECT_EQ(panel->size(), collapsed.size()) << "folds back";
    EXPECT_EQ(topRight(panel), corner);

    // A new run starts folded, smaller, yet with its top-right corner where it was left.
    controller.reset();
    controller = start();
    EXPECT_EQ(controller->panel()->height(), collapsed.height());
    EXPECT_EQ(topRight(controller->panel()), corner);
}

// Which combinations show the chip is ChipLayout's table; here, that each input is followed.
TEST_F(FloatingChipWindowControllerTest, VisibilityFollowsSessionsAndSwitchesAfterTheyAreStored) {
    auto controller = start();
    FloatingChipPanel* panel = controller->panel();
    EXPECT_FALSE(panel->isVisible()); // no sessions

    chip.publish({chip.make("claude", "i1", idle)});
    EXPECT_TRUE(panel->isVisible());

    chip.preferences.chipOnlyWhenWaiting.set(true);
    test::settleEvents();
    EXPECT_FALSE(panel->isVisible());
    chip.publish({chip.make("claude", "i1", idle), chip.make("claude", "w1", waiting)});
    EXPECT_TRUE(panel->isVisible());

    chip.preferences.chipOnlyWhenWaiting.set(false);
    chip.preferences.showFloatingChip.set(false);
    test::settleEvents();
    EXPECT_FALSE(panel->isVisible());

    // The opacity takes effect at once, also while hidden.
    chip.preferences.chipOpacity.set(40);
    test::settleEvents();
    EXPECT_DOUBLE_EQ(panel->windowOpacity(), 0.4);
    chip.preferences.showFloatingChip.set(true);
    test::settleEvents();
    EXPECT_TRUE(panel->isVisible());
    EXPECT_DOUBLE_EQ(panel->windowOpacity(), 0.4);
}

} // namespace
} // namespace tovrin
