#include "ui/views/FloatingChipView.h"

#include "support/RenderedImages.h"
#include "support/ScopedEnv.h"
#include "support/TrayModelFixture.h"
#include "support/WidgetInput.h"
#include "ui/views/AppActionsFooter.h"
#include "ui/views/FloatingChipHeader.h"
#include "ui/views/PanelButton.h"
#include "ui/views/SessionListView.h"

#include <QImage>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using enum SessionState;

void saveArtifact(const QImage& image, const std::string& name) {
    test::saveArtifact(image, QString::fromStdString("floating-chip-" + name));
}

class FloatingChipViewTest : public ::testing::Test {
protected:
    // A still flame, so that pixels can be compared.
    test::ScopedEnv stillFlame{"TOVRIN_REDUCE_MOTION", "1"};
    test::TrayModelFixture chip;
    std::vector<ChipSize> reported;
    std::vector<std::string> calls;

    std::unique_ptr<FloatingChipView> makeView() {
        FloatingChipActions actions{[this] { calls.push_back("settings"); },
                                    [this] { calls.push_back("feedback"); },
                                    [this] { calls.push_back("about"); }, [this] { calls.push_back("quit"); },
                                    [this](ChipSize size) { reported.push_back(size); }};
        auto view = std::make_unique<FloatingChipView>(chip.model, std::move(actions));
        view->resize(view->sizeHint());
        return view;
    }
    static QImage render(FloatingChipView& view) {
        view.resize(view.sizeHint());
        return view.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    }
    static void tapHeader(FloatingChipView& view) {
        test::click(view.header(), &view, QPoint(view.header()->width() / 2, view.header()->height() / 2));
    }
    std::vector<AgentSession> mixed() {
        return {chip.make("claude", "w1", waiting), chip.make("claude", "k1", working),
                chip.make("claude", "k2", working), chip.make("claude", "w2", waiting)};
    }
};

// The summary's words are ChipHeader's, and the chip's button is found by them in AccessibilityTest.
TEST_F(FloatingChipViewTest, CollapsedChipIsItsHeaderOverTheRollUpsFlame) {
    const struct {
        std::string name;
        std::vector<AgentSession> sessions;
    } cases[] = {
        {"waiting", {chip.make("claude", "w1", waiting), chip.make("claude", "i1", idle)}},
        {"working", {chip.make("claude", "k1", working)}},
        {"idle", {chip.make("claude", "i1", idle), chip.make("claude", "i2", idle)}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        chip.publish(c.sessions);
        auto view = makeView();
        const QImage image = render(*view);
        saveArtifact(image, "collapsed-" + c.name);

        EXPECT_FALSE(view->sessionList()->isVisibleTo(view.get()));
        // Collapsed, the chip is as wide as its header line: narrower than the list it unfolds to.
        EXPECT_LT(image.width(), FloatingChipView::listWidth);
        ASSERT_FALSE(reported.empty());
        EXPECT_EQ(reported.back(), (ChipSize{double(image.width()), double(image.height())}));

        // A clear margin with a shadow below the body, and the body's corners cut round.
        const QRect body = view->bodyRect();
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
        EXPECT_GT(qAlpha(image.pixel(body.center().x(), body.bottom() + 3)), 0);
        EXPECT_LT(qAlpha(image.pixel(body.left() + 1, body.top() + 1)), qAlpha(image.pixel(body.center())));

        // Left of the eye: flame or bare iron.
        const QColor fill = image.pixelColor(body.left() + 6, body.center().y());
        EXPECT_GT(fill.alpha(), 200);
        if (c.name == "waiting") {
            EXPECT_GT(fill.red(), 2 * fill.green());
            EXPECT_GT(fill.red(), 2 * fill.blue());
        } else if (c.name == "working") {
            EXPECT_GT(fill.red(), 180);
            EXPECT_GT(fill.green(), 60);
            EXPECT_LT(fill.blue(), fill.green());
        } else {
            EXPECT_LT(std::max({fill.red(), fill.green(), fill.blue()}), 60);
        }
    }
}

TEST_F(FloatingChipViewTest, HeaderTapUnfoldsToTheListWidthAndBack) {
    chip.publish(mixed());
    auto view = makeView();
    const QImage collapsed = render(*view);
    EXPECT_EQ(view->header()->content().chevron, "chevron.down");

    tapHeader(*view);
    ASSERT_TRUE(view->expanded());
    EXPECT_TRUE(view->sessionList()->isVisibleTo(view.get()));
    EXPECT_EQ(view->header()->content().chevron, "chevron.up");
    const QImage expanded = render(*view);
    saveArtifact(expanded, "expanded-mixed");
    EXPECT_GT(expanded.width(), collapsed.width());
    EXPECT_GT(expanded.height(), collapsed.height() + 100);
    EXPECT_EQ(reported.back(), (ChipSize{double(expanded.width()), double(expanded.height())}));

    // A drag that starts on the header moves the window and does not fold the chip.
    test::drag(view.get(), view->header()->geometry().center(), QPoint(-40, 30));
    EXPECT_TRUE(view->expanded());

    tapHeader(*view);
    EXPECT_FALSE(view->expanded());
    EXPECT_EQ(render(*view).size(), collapsed.size());
}

TEST_F(FloatingChipViewTest, UnfoldedStateOutlivesAMomentWithoutSessions) {
    chip.publish({chip.make("claude", "i1", idle)});
    auto view = makeView();
    tapHeader(*view);
    ASSERT_TRUE(view->expanded());

    chip.publish({});
    EXPECT_FALSE(view->sessionList()->isVisibleTo(view.get()));
    EXPECT_EQ(view->header()->content().summary, "no agents");
    EXPECT_EQ(view->header()->content().chevron, std::nullopt);
    saveArtifact(render(*view), "no-agents");
    tapHeader(*view); // nothing to fold without sessions
    EXPECT_TRUE(view->expanded());

    chip.publish({chip.make("claude", "w1", waiting)});
    EXPECT_TRUE(view->sessionList()->isVisibleTo(view.get()));
    saveArtifact(render(*view), "expanded-waiting");
}

TEST_F(FloatingChipViewTest, FooterButtonsReachTheirActions) {
    chip.publish({chip.make("claude", "k1", working)});
    auto view = makeView();
    tapHeader(*view);
    for (int i = 0; i < 4; ++i)
        view->footer()->button(i)->click();
    EXPECT_EQ(calls, (std::vector<std::string>{"settings", "feedback", "about", "quit"}));
}

} // namespace
} // namespace tovrin
