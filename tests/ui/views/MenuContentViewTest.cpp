#include "ui/views/MenuContentView.h"

#include "support/RenderedImages.h"
#include "support/SettleEvents.h"
#include "support/TrayModelFixture.h"
#include "ui/theme/FireText.h"
#include "ui/theme/ForgeTheme.h"
#include "ui/views/AppActionsFooter.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/FloatingWindowToggle.h"
#include "ui/views/PanelButton.h"
#include "ui/views/PanelHeader.h"
#include "ui/views/SessionListView.h"
#include "ui/views/SessionRowView.h"
#include "ui/views/SessionSectionView.h"

#include <QImage>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using enum SessionState;

std::vector<std::string> rowIds(const SessionSectionView* section) {
    std::vector<std::string> ids;
    for (const SessionRowView* row : section->rows())
        ids.push_back(row->session().id());
    return ids;
}

class MenuContentViewTest : public ::testing::Test {
protected:
    void SetUp() override {
        AppActions actions{[this] { pressed.push_back("preferences"); },
                           [this] { pressed.push_back("feedback"); }, [this] { pressed.push_back("about"); },
                           [this] { pressed.push_back("quit"); }};
        view = std::make_unique<MenuContentView>(fixture.model, fixture.preferences, actions);
        view->resize(view->sizeHint());
        view->show();
        test::settleEvents();
    }
    // Lays the view out at its wanted height, as the panel window does, and draws it.
    QImage draw() {
        test::settleEvents();
        view->resize(MenuContentView::panelWidth, view->sizeHint().height());
        return view->grab().toImage();
    }
    SessionListView* list() const { return view->sessionList(); }

    test::TrayModelFixture fixture;
    std::vector<std::string> pressed;
    std::unique_ptr<MenuContentView> view;
};

TEST_F(MenuContentViewTest, WithoutSessionsShowsTheEmptyStateAndNoHeading) {
    EXPECT_TRUE(view->emptyState()->isVisible());
    EXPECT_EQ(view->emptyState()->text(), QStringLiteral("No agents are stirring."));
    EXPECT_FALSE(list()->isVisible()) << "and so none of its sections";
    EXPECT_FALSE(view->header()->brandLine()->flame().has_value());

    const QImage image = draw();
    // Iron, darker at the bottom than at the top, and no light default window behind it.
    const QColor top = image.pixelColor(370, 2);
    const QColor bottom = image.pixelColor(370, image.height() - 2);
    EXPECT_LT(test::colorDistance(top, ForgeStyle::qColor(ForgeTheme::ironTop)), 8);
    EXPECT_LT(bottom.lightness(), top.lightness());
    test::saveArtifact(image, QStringLiteral("panel-empty"));
}

TEST_F(MenuContentViewTest, AHostOutOfReachIsALineUnderTheListUntilItIsBack) {
    const auto remote = [&] {
        auto s = fixture.make("codex-cli", "r", waiting);
        s.host = "dev@build";
        return s;
    }();
    fixture.store.unreachableHosts.set({{"dev@build", "Connection refused"}, {"box", ""}});
    fixture.publish({remote});
    ASSERT_EQ(view->hostNotices().size(), 2u);
    EXPECT_TRUE(view->hostNotices()[0]->isVisible());
    EXPECT_EQ(view->hostNotices()[0]->text(),
              QStringLiteral("dev@build can't be reached: Connection refused"));
    EXPECT_EQ(view->hostNotices()[1]->accessibleName(), QStringLiteral("box can't be reached"));
    test::saveArtifact(draw(), QStringLiteral("panel-host-unreachable"));

    fixture.store.unreachableHosts.set({});
    fixture.publish({remote});
    EXPECT_TRUE(view->hostNotices().empty());
}

TEST_F(MenuContentViewTest, SessionsInOneStateShowOnlyThatSection) {
    fixture.publish(
        {fixture.make("codex-cli", "k1", working, 30), fixture.make("claude-code", "k2", working, 200)});

    EXPECT_FALSE(view->emptyState()->isVisible());
    EXPECT_TRUE(list()->workingSection()->isVisible());
    EXPECT_FALSE(list()->waitingSection()->isVisible());
    EXPECT_FALSE(list()->restingSection()->isVisible());
    EXPECT_EQ(list()->workingSection()->heading(),
              QString::fromStdString(fixture.model.workingTitle()).toUpper());
    EXPECT_EQ(rowIds(list()->workingSection()),
              (std::vector<std::string>{"codex-cli__k1", "claude-code__k2"}));
    EXPECT_EQ(view->header()->brandLine()->flame(), FlamePalette::amber());
    test::saveArtifact(draw(), QStringLiteral("panel-working"));
}

TEST_F(MenuContentViewTest, AllThreeSectionsInOrderAndRowsKeptAcrossPasses) {
    auto waitingSession = fixture.make("claude-code", "w1", waiting, 12);
    waitingSession.reason = "Permission to run npm test";
    auto idleSession = fixture.make("copilot-vscode", "i1", idle, 4000);
    idleSession.root = "/home/dev/projects/site";
    fixture.publish({waitingSession, fixture.make("codex-cli", "k1", working, 75),
                     fixture.make("cursor-ide", "k2", working, 3), idleSession});

    EXPECT_EQ(rowIds(list()->waitingSection()), (std::vector<std::string>{"claude-code__w1"}));
    EXPECT_EQ(rowIds(list()->workingSection()),
              (std::vector<std::string>{"codex-cli__k1", "cursor-ide__k2"}));
    EXPECT_EQ(rowIds(list()->restingSection()), (std::vector<std::string>{"copilot-vscode__i1"}));
    EXPECT_EQ(view->header()->brandLine()->flame(), FlamePalette::red());

    // Heading order on screen follows waiting, working, resting.
    const int waitingY = list()->waitingSection()->geometry().top();
    const int workingY = list()->workingSection()->geometry().top();
    const int restingY = list()->restingSection()->geometry().top();
    EXPECT_LT(waitingY, workingY);
    EXPECT_LT(workingY, restingY);

    const QImage image = draw();
    test::saveArtifact(image, QStringLiteral("panel-all-sections"));
    // Iron behind the sessions too, and no button lit before the pointer comes near.
    const QPoint inList = list()->mapTo(view.get(), QPoint(list()->width() - 4, list()->height() / 2));
    EXPECT_LT(image.pixelColor(inList).lightness(), 60);
    QWidget* toggle = view->floatingWindowToggle();
    const int toggleY = toggle->mapTo(view.get(), QPoint(0, toggle->height() / 2)).y();
    EXPECT_LT(test::colorDistance(image.pixelColor(2, toggleY), image.pixelColor(372, toggleY)), 6);

    // A second pass with the working pair swapped and one session gone: the rows that stay are the
    // same widgets, in the new order.
    SessionRowView* k1 = list()->workingSection()->rows().at(0);
    SessionRowView* k2 = list()->workingSection()->rows().at(1);
    fixture.publish({waitingSession, fixture.make("cursor-ide", "k2", working, 1),
                     fixture.make("codex-cli", "k1", working, 80)});
    EXPECT_EQ(list()->workingSection()->rows(), (std::vector<SessionRowView*>{k2, k1}));
    EXPECT_FALSE(list()->restingSection()->isVisible());
}

// Its labels, and pressing it, are also read and done through the accessibility tree.
TEST_F(MenuContentViewTest, FloatingWindowToggleInvertsThePreferenceAndRelabels) {
    FloatingWindowToggle* toggle = view->floatingWindowToggle();
    fixture.preferences.showFloatingChip.set(true);
    test::settleEvents();
    EXPECT_EQ(toggle->symbol(), "eye.slash");

    toggle->click();
    test::settleEvents();
    EXPECT_FALSE(fixture.preferences.showFloatingChip());
    EXPECT_EQ(toggle->text(), QStringLiteral("Show floating window"));
    EXPECT_EQ(toggle->symbol(), "eye");
}

// Each button's label and action is checked by name in AccessibilityTest and in order through the
// chip's footer; here, the layout and an action left unset.
TEST_F(MenuContentViewTest, FooterButtonsSitInTwoRowsAndAnUnsetActionDoesNothing) {
    AppActionsFooter* footer = view->footer();
    const QRect preferences = footer->button(0)->geometry();
    const QRect feedback = footer->button(1)->geometry();
    const QRect about = footer->button(2)->geometry();
    EXPECT_EQ(preferences.top(), feedback.top());
    EXPECT_GT(about.top(), preferences.bottom());
    EXPECT_EQ(about.left(), preferences.left());
    EXPECT_LE(std::abs(preferences.width() - feedback.width()), 1);

    AppActionsFooter bare(AppActions{});
    bare.button(3)->click();
}

} // namespace
} // namespace tovrin
