#include "core/JsonFileDefaultsStore.h"
#include "platform/x11/XcbChipPinner.h"
#include "support/SettleEvents.h"
#include "support/TempDir.h"
#include "support/TrayModelFixture.h"
#include "support/WidgetInput.h"
#include "support/XcbTestClient.h"
#include "ui/views/FloatingChipHeader.h"
#include "ui/views/FloatingChipPanel.h"
#include "ui/views/FloatingChipView.h"
#include "ui/views/FloatingChipWindowController.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

namespace tovrin {
namespace {

using enum SessionState;

// Keeps the application's events flowing while a condition is awaited, as the window manager answers.
bool eventually(const std::function<bool()>& condition) {
    return test::pollUntil([&] {
        test::settleEvents();
        return condition();
    });
}

// The chip on a private X server under openbox (see run-x11-tests.sh), looked at from a second
// connection as any other client, or the window manager, sees it.
class FloatingChipX11Test : public ::testing::Test {
protected:
    void SetUp() override {
        if (!test::XcbTestClient::onPrivateDisplay() || QGuiApplication::platformName() != "xcb")
            GTEST_SKIP() << "needs the private X server of run-x11-tests.sh";
        ASSERT_TRUE(m_x.connected());
        ASSERT_TRUE(eventually([&] { return m_x.windowManagerRuns(); })) << "no window manager came up";
        chip.preferences.showFloatingChip.set(true);
    }
    void TearDown() override { m_controller.reset(); }

    FloatingChipPanel* startChip(DefaultsStore& store) {
        m_controller =
            std::make_unique<FloatingChipWindowController>(chip.model, chip.preferences, store, &m_pinner);
        m_controller->buildPanel();
        m_controller->observe();
        m_controller->applyOpacity();
        m_controller->evaluateVisibility();
        return m_controller->panel();
    }
    xcb_window_t chipWindow() const { return static_cast<xcb_window_t>(m_controller->panel()->winId()); }

    bool hasState(xcb_window_t window, const char* state) {
        return std::ranges::count(m_x.property(window, "_NET_WM_STATE"), m_x.atom(state)) == 1;
    }
    // Position in the stacking order, bottom first; -1 while unmanaged.
    long stackingIndex(xcb_window_t window) {
        const auto stack = m_x.property(m_root, "_NET_CLIENT_LIST_STACKING");
        const auto found = std::ranges::find(stack, window);
        return found == stack.end() ? -1 : found - stack.begin();
    }
    // Where the server has the window, in root coordinates, whatever frame the manager put around it.
    QRect serverGeometry(xcb_window_t window) {
        auto* geometry = xcb_get_geometry_reply(m_c, xcb_get_geometry(m_c, window), nullptr);
        auto* origin = xcb_translate_coordinates_reply(
            m_c, xcb_translate_coordinates(m_c, window, m_root, 0, 0), nullptr);
        QRect result;
        if (geometry && origin)
            result = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
        std::free(geometry);
        std::free(origin);
        return result;
    }
    static QPoint topRight(const QRect& r) { return {r.x() + r.width(), r.y()}; }

    // A normal window of another client, mapped, managed and activated as a user would.
    xcb_window_t openNormalWindow() {
        const xcb_window_t w = m_x.openWindow("_NET_WM_WINDOW_TYPE_NORMAL", 1280, 800);
        EXPECT_TRUE(m_x.managed(w)) << "normal window never managed";
        activate(w);
        return w;
    }
    void activate(xcb_window_t w) {
        m_x.sendToRoot(w, "_NET_ACTIVE_WINDOW", {2, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0});
        EXPECT_TRUE(eventually([&] { return m_x.activeWindow() == w; })) << "window never became active";
    }

    test::TempDir home;
    MemoryDefaultsStore defaults;
    test::TrayModelFixture chip{defaults};
    XcbChipPinner m_pinner;
    std::unique_ptr<FloatingChipWindowController> m_controller;
    test::XcbTestClient m_x;
    xcb_connection_t* const m_c = m_x.connection();
    const xcb_window_t m_root = m_x.root();
};

TEST_F(FloatingChipX11Test, StaysAboveOnEveryWorkspaceWithoutTakingTheFocus) {
    const xcb_window_t editor = openNormalWindow();
    chip.publish({chip.make("claude", "w1", waiting)});
    startChip(defaults);
    const xcb_window_t window = chipWindow();
    ASSERT_TRUE(eventually([&] { return stackingIndex(window) >= 0 && m_x.viewable(window); }));

    // Showing it left the user's window active.
    EXPECT_TRUE(eventually(
        [&] { return m_x.property(window, "_NET_WM_DESKTOP") == std::vector<std::uint32_t>{0xFFFFFFFF}; }));
    EXPECT_TRUE(hasState(window, "_NET_WM_STATE_ABOVE"));
    if (std::ranges::count(m_x.property(m_root, "_NET_SUPPORTED"), m_x.atom("_NET_WM_STATE_STICKY")) == 1) {
        EXPECT_TRUE(hasState(window, "_NET_WM_STATE_STICKY"));
    }
    EXPECT_TRUE(hasState(window, "_NET_WM_STATE_SKIP_TASKBAR"));
    EXPECT_EQ(m_x.activeWindow(), editor);

    // Windows opened and raised after it stay below it.
    const xcb_window_t browser = openNormalWindow();
    activate(editor);
    EXPECT_GT(stackingIndex(window), stackingIndex(editor));
    EXPECT_GT(stackingIndex(window), stackingIndex(browser));
    EXPECT_EQ(m_x.activeWindow(), editor);

    // On another workspace the editor goes away and the chip does not.
    m_x.sendToRoot(m_root, "_NET_CURRENT_DESKTOP", {1, XCB_CURRENT_TIME, 0, 0, 0});
    EXPECT_TRUE(eventually([&] { return !m_x.viewable(editor); }));
    EXPECT_TRUE(m_x.viewable(window));
    m_x.sendToRoot(m_root, "_NET_CURRENT_DESKTOP", {0, XCB_CURRENT_TIME, 0, 0, 0});
    EXPECT_TRUE(eventually([&] { return m_x.viewable(editor); }));

    // Hidden and shown again, it is pinned again.
    chip.publish({});
    EXPECT_TRUE(eventually([&] { return !m_x.viewable(window); }));
    chip.publish({chip.make("claude", "w2", waiting)});
    EXPECT_TRUE(eventually([&] { return m_x.viewable(window) && stackingIndex(window) >= 0; }));
    EXPECT_TRUE(eventually(
        [&] { return m_x.property(window, "_NET_WM_DESKTOP") == std::vector<std::uint32_t>{0xFFFFFFFF}; }));
    EXPECT_GT(stackingIndex(window), stackingIndex(editor));
    EXPECT_EQ(m_x.activeWindow(), editor);
}

// Where the window manager really puts it: first by the screen's corner, unfolded left and down,
// and after a drag and a restart where it was dropped.
TEST_F(FloatingChipX11Test, FirstPlacedByTheScreensCornerUnfoldedLeftAndDownAndDraggedCornerComesBack) {
    const auto file = home.path() / "defaults.json";
    // A header narrower than the list, so that unfolding widens the chip too.
    chip.publish({chip.make("claude", "w1", waiting), chip.make("claude", "i1", idle),
                  chip.make("claude", "i2", idle)});
    const auto at = [&](xcb_window_t window) {
        const QRect r = serverGeometry(window);
        return std::to_string(r.x()) + "," + std::to_string(r.y());
    };
    QPoint dropped;
    {
        JsonFileDefaultsStore store(file);
        FloatingChipPanel* panel = startChip(store);
        const xcb_window_t window = chipWindow();
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const QPoint corner(screen.x() + screen.width() - 16, screen.y() + 16);
        ASSERT_TRUE(eventually([&] {
            return m_x.viewable(window) && topRight(serverGeometry(window)) == corner;
        })) << "at "
            << at(window);
        const QRect collapsed = serverGeometry(window);

        test::click(panel->view()->header(), panel->view(), panel->view()->header()->rect().center());
        ASSERT_TRUE(eventually([&] { return serverGeometry(window).height() > collapsed.height(); }));
        const QRect expanded = serverGeometry(window);
        EXPECT_EQ(topRight(expanded), corner);
        EXPECT_LT(expanded.left(), collapsed.left());
        EXPECT_GT(expanded.bottom(), collapsed.bottom());

        // Unfolded when dragged: the corner, not the size, is what comes back.
        test::drag(panel->view(), QPoint(panel->view()->width() / 2, 20), QPoint(-420, 260));
        dropped = corner + QPoint(-420, 260);
        ASSERT_TRUE(eventually([&] { return topRight(serverGeometry(window)) == dropped; }))
            << "at " << at(window);
        m_controller.reset();
    }

    JsonFileDefaultsStore reopened(file);
    startChip(reopened);
    const xcb_window_t window = chipWindow();
    EXPECT_TRUE(eventually([&] {
        return m_x.viewable(window) && topRight(serverGeometry(window)) == dropped;
    })) << "at "
        << at(window);
    EXPECT_FALSE(m_controller->panel()->view()->expanded());
}

} // namespace
} // namespace tovrin
