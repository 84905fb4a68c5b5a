#include "ui/views/PanelWindow.h"

#include "support/SettleEvents.h"
#include "support/TrayModelFixture.h"
#include "ui/views/MenuContentView.h"

#include <QGuiApplication>
#include <QScreen>
#include <QThread>
#include <gtest/gtest.h>
#include <memory>

namespace tovrin {
namespace {

using enum SessionState;

class PanelWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        available = QGuiApplication::primaryScreen()->availableGeometry();
        window = std::make_unique<PanelWindow>(fixture.model, fixture.preferences, AppActions{});
    }
    void TearDown() override { window->close(); }

    std::vector<AgentSession> sessions(int count) {
        std::vector<AgentSession> list;
        for (int i = 0; i < count; ++i)
            list.push_back(
                fixture.make("codex-cli", "s" + std::to_string(i), i % 3 ? working : waiting, i * 40));
        return list;
    }

    test::TrayModelFixture fixture;
    QRect available;
    std::unique_ptr<PanelWindow> window;
};

TEST_F(PanelWindowTest, FollowsTheContentsHeightAndNeverOutgrowsTheScreen) {
    window->openAt(QRect(available.center(), QSize(20, 20)));
    const int emptyHeight = window->height();

    fixture.publish(sessions(3));
    test::settleEvents();
    const int threeHeight = window->height();
    EXPECT_GT(threeHeight, emptyHeight + 3 * 40);

    fixture.publish(sessions(60));
    test::settleEvents();
    EXPECT_LE(window->height(), available.height());
    EXPECT_TRUE(available.contains(window->geometry()));
    // Header, toggle and footer stay; the list scrolls between them.
    EXPECT_TRUE(window->content()->footer()->isVisible());
    EXPECT_LE(window->content()->footer()->mapTo(window.get(), QPoint()).y() +
                  window->content()->footer()->height(),
              window->height());

    fixture.publish({});
    test::settleEvents();
    EXPECT_EQ(window->height(), emptyHeight);
}

// Where it goes beside icons at other edges is PanelPlacementTest's; here, the screen it is given.
TEST_F(PanelWindowTest, OpensUnderATopIconInsideTheScreenAndASecondClickCloses) {
    const QRect icon(available.right() - 30, available.top(), 24, 24);
    window->toggleAt(icon);
    ASSERT_TRUE(window->isVisible());
    EXPECT_EQ(window->width(), MenuContentView::panelWidth);
    EXPECT_GT(window->geometry().top(), icon.bottom());
    EXPECT_TRUE(available.contains(window->geometry()));
    window->toggleAt(icon);
    EXPECT_FALSE(window->isVisible());
    // The same click arriving once more, as when the panel closed itself as the tray took over.
    window->toggleAt(icon);
    EXPECT_FALSE(window->isVisible());

    QThread::msleep(350);
    window->toggleAt(icon);
    EXPECT_TRUE(window->isVisible());
}

} // namespace
} // namespace tovrin
