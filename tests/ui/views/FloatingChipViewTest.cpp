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
};

// The summary's words are ChipHeader's, and the chip's button is found by them in AccessibilityTest.
TEST_F(FloatingChipViewTest, CollapsedChipIsItsHeaderOverTheRollUpsFlame) {
    // Which flame burns left of the eye: red, amber, or none over bare iron.
    const struct {
        std::string name;
        std::vector<AgentSession> sessions;
        bool (*looksRight)(const QColor&);
    } cases[] = {
        {"waiting",
         {chip.make("claude", "w1", waiting), chip.make("claude", "i1", idle)},
         [](const QColor& c) { return c.red() > 2 * c.green() && c.red() > 2 * c.blue(); }},
        {"working",
         {chip.make("claude", "k1", working)},
         [](const QColor& c) { return c.red() > 180 && c.green() > 60 && c.blue() < c.green(); }},
        {"idle",
         {chip.make("claude", "i1", idle), chip.make("claude", "i2", idle)},
         [](const QColor& c) {
             return std::max({c.red(), c.green(), c.blue()}) < 60;
         }},
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

        const QColor fill = image.pixelColor(body.left() + 6, body.center().y());
        EXPECT_GT(fill.alpha(), 200);
        EXPECT_TRUE(c.looksRight(fill)) << fill.name().toStdString();
    }
}

// How far it unfolds, and that a drag does not fold it, is FloatingChipWindowControllerTest's.
TEST_F(FloatingChipViewTest, UnfoldedStateOutlivesAMomentWithoutSessions) {
    chip.publish({chip.make("claude", "i1", idle)});
    auto view = makeView();
    EXPECT_EQ(view->header()->content().chevron, "chevron.down");
    tapHeader(*view);
    ASSERT_TRUE(view->expanded());
    EXPECT_EQ(view->header()->content().chevron, "chevron.up");

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
