#include "ui/views/SessionRowView.h"

#include "support/RenderedImages.h"
#include "support/SettleEvents.h"
#include "support/TrayModelFixture.h"
#include "support/WidgetInput.h"
#include "ui/views/SessionListView.h"
#include "ui/views/SessionSectionView.h"
#include "ui/views/SymbolButton.h"

#include <QImage>
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace tovrin {
namespace {

using enum SessionState;

bool listed(const std::vector<AgentSession>& list, const std::string& id) {
    return std::any_of(list.begin(), list.end(), [&](const AgentSession& s) { return s.id() == id; });
}

class SessionRowViewTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto rooted = fixture.make("claude-code", "w1", waiting, 20);
        rooted.root = "/home/dev/projects/forge";
        rooted.reason = "Approve the migration";
        sessions = {rooted, fixture.make("codex-cli", "k1", working, 90)};
        fixture.reader.set(sessions);
        fixture.publish(sessions);

        list = std::make_unique<SessionListView>(fixture.model);
        list->setFixedWidth(375);
        list->resize(375, list->sizeHint().height());
        list->show();
        test::settleEvents();
    }
    SessionRowView* waitingRow() const { return list->waitingSection()->rows().at(0); }
    SessionRowView* workingRow() const { return list->workingSection()->rows().at(0); }

    test::TrayModelFixture fixture;
    std::vector<AgentSession> sessions;
    std::unique_ptr<SessionListView> list;
};

TEST_F(SessionRowViewTest, ButtonsExistOnlyWhileThePointerIsOverTheRow) {
    SessionRowView* row = waitingRow();
    EXPECT_EQ(row->findChildren<SymbolButton*>().size(), 0);
    const QImage resting = row->grab().toImage();

    test::hover(row);
    ASSERT_TRUE(row->hovering());
    ASSERT_NE(row->revealButton(), nullptr);
    ASSERT_NE(row->hideButton(), nullptr);
    EXPECT_EQ(row->findChildren<SymbolButton*>().size(), 2);
    EXPECT_EQ(row->revealButton()->symbol(), "folder");
    EXPECT_EQ(row->hideButton()->symbol(), "xmark");
    EXPECT_EQ(row->revealButton()->toolTip(), QStringLiteral("Reveal /home/dev/projects/forge in Files"));
    EXPECT_EQ(row->hideButton()->toolTip(), QStringLiteral("Hide until its status changes"));
    // The buttons sit at the right end, reveal before hide.
    test::settleEvents();
    EXPECT_GT(row->revealButton()->mapTo(row, QPoint()).x(), row->width() / 2);
    EXPECT_LT(row->revealButton()->mapTo(row, QPoint()).x(), row->hideButton()->mapTo(row, QPoint()).x());

    // The ember wash warms the left edge and fades out to the right.
    const QImage hovered = row->grab().toImage();
    const QPoint leftEdge(2, row->height() - 3);
    EXPECT_GT(hovered.pixelColor(leftEdge).red(), resting.pixelColor(leftEdge).red());
    test::saveArtifact(hovered, QStringLiteral("panel-row-hovered"));

    test::unhover(row);
    EXPECT_FALSE(row->hovering());
    EXPECT_EQ(row->revealButton(), nullptr);
    EXPECT_EQ(row->findChildren<SymbolButton*>().size(), 0);
}

TEST_F(SessionRowViewTest, ClicksReachFocusRevealAndDismiss) {
    SessionRowView* row = workingRow();
    test::click(row, QPoint(row->width() / 2, row->height() / 2));
    EXPECT_EQ(fixture.focuser.focused, (std::vector<std::string>{"k1"}));

    // A press that ends outside the row is no tap.
    test::press(row, QPoint(10, 10));
    test::release(row, QPoint(10, row->height() + 40));
    EXPECT_EQ(fixture.focuser.focused.size(), 1u);

    SessionRowView* waiting = waitingRow();
    test::hover(waiting);
    waiting->revealButton()->click();
    EXPECT_EQ(fixture.focuser.revealed, (std::vector<std::string>{"w1"}));
    EXPECT_EQ(fixture.focuser.focused.size(), 1u);

    waiting->hideButton()->click();
    EXPECT_FALSE(listed(fixture.store.sessions(), "claude-code__w1"));
    EXPECT_TRUE(listed(fixture.store.sessions(), "codex-cli__k1"));
    fixture.loop.drain();
    test::settleEvents();
    EXPECT_FALSE(list->waitingSection()->isVisible());
    EXPECT_EQ(fixture.focuser.focused.size(), 1u);
}

TEST_F(SessionRowViewTest, RevealNamesTheWorkingFolderWhenThereIsNoRoot) {
    SessionRowView* row = workingRow();
    test::hover(row);
    EXPECT_EQ(row->revealButton()->toolTip(), QStringLiteral("Reveal /home/dev/projects/k1 in Files"));

    // A newer record of the same session reaches the same row and its open tool tip.
    auto moved = fixture.make("codex-cli", "k1", working, 1);
    moved.root = "/srv/k1";
    fixture.publish({sessions[0], moved});
    EXPECT_EQ(workingRow(), row);
    EXPECT_EQ(row->revealButton()->toolTip(), QStringLiteral("Reveal /srv/k1 in Files"));
}

} // namespace
} // namespace tovrin
