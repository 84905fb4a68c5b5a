#include "ui/viewmodels/TrayViewModel.h"

#include "support/FakeAlertPorts.h"
#include "support/FakeSessionReader.h"
#include "support/ManualLoop.h"
#include "support/MemoryDefaultsStore.h"
#include "support/SampleSessions.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tovrin {
namespace {

using enum SessionState;
using Ids = std::vector<std::string>;

Ids idsOf(const std::vector<AgentSession>& list) {
    Ids ids;
    for (const auto& s : list)
        ids.push_back(s.id());
    return ids;
}

class TrayViewModelTest : public ::testing::Test {
protected:
    AgentSession make(const std::string& id, SessionState state, const std::string& tool = "claude") {
        return test::session(tool, id, state, loop.clock().now());
    }
    // Publishes the way a refresh pass does: the list first, then its roll-up.
    void publish(const std::vector<AgentSession>& list) {
        store.sessions.set(list);
        store.aggregate.set(AggregateStatus::from(list));
    }
    void publishAndDrain(const std::vector<AgentSession>& list) {
        publish(list);
        loop.drain();
    }
    std::unique_ptr<TrayViewModel> makeModel() {
        // Each draw takes the next index, so consecutive draws always differ in text.
        return std::make_unique<TrayViewModel>(store, focuser, loop, [this](std::size_t n) {
            drawSizes.push_back(n);
            return next++ % n;
        });
    }
    std::vector<std::string> titles() const {
        return {model->waitingTitle(), model->workingTitle(), model->restingTitle()};
    }

    test::ManualLoop loop;
    MemoryDefaultsStore defaults;
    PreferencesStore preferences{defaults};
    test::FakeSessionReader reader;
    test::FakeSessionFocusing focuser;
    SessionStore store{reader, preferences, {}, [](auto) { return nullptr; }, loop, loop.clock()};
    std::vector<std::size_t> drawSizes;
    std::size_t next = 0;
    std::unique_ptr<TrayViewModel> model;
};

TEST_F(TrayViewModelTest, FillsAtOnceFromTheStoreSplittingInStoreOrder) {
    // Store order is deliberately not alphabetical: the model must not sort.
    publish({make("w2", waiting), make("k1", working), make("i9", idle), make("w1", waiting),
             make("i3", idle), make("k0", working)});
    model = makeModel();

    EXPECT_EQ(idsOf(model->waiting()), (Ids{"claude__w2", "claude__w1"}));
    EXPECT_EQ(idsOf(model->working()), (Ids{"claude__k1", "claude__k0"}));
    EXPECT_EQ(idsOf(model->idle()), (Ids{"claude__i9", "claude__i3"}));
    EXPECT_EQ(model->aggregate(), AggregateStatus::waiting(2));
    EXPECT_TRUE(model->hasSessions());
    EXPECT_EQ(drawSizes.size(), 3u);
}

TEST_F(TrayViewModelTest, EmptyListGivesFallbacksAndAnEmptiedSectionDrawsAgainWhenRefilled) {
    model = makeModel();
    EXPECT_FALSE(model->hasSessions());
    EXPECT_EQ(model->aggregate(), AggregateStatus::neutral());
    EXPECT_EQ(titles(), (std::vector<std::string>{"Calling for aid", "At work", "Resting"}));
    EXPECT_TRUE(drawSizes.empty());

    publishAndDrain({make("a", working)});
    EXPECT_TRUE(model->hasSessions());
    const auto first = model->workingTitle();
    publishAndDrain({});
    EXPECT_FALSE(model->hasSessions());
    EXPECT_EQ(model->workingTitle(), "At work");
    EXPECT_EQ(model->aggregate(), AggregateStatus::neutral());

    publishAndDrain({make("a", working)});
    EXPECT_EQ(drawSizes.size(), 2u) << "the same session returning to an emptied section draws anew";
    EXPECT_NE(model->workingTitle(), first);
}

TEST_F(TrayViewModelTest, HeadingRedrawsOnlyWhenTheSetOfItsSectionChanges) {
    const std::vector<AgentSession> base{make("w1", waiting), make("w2", waiting), make("k1", working),
                                         make("i1", idle)};
    struct Case {
        const char* name;
        std::function<std::vector<AgentSession>(std::vector<AgentSession>)> change;
        std::vector<bool> redrawn; // waiting, working, idle
    };
    const std::vector<Case> cases{
        {"unchanged refresh", [](auto l) { return l; }, {false, false, false}},
        {"reordered",
         [](auto l) {
             std::swap(l[0], l[1]);
             std::swap(l[2], l[3]);
             return l;
         },
         {false, false, false}},
        {"title, reason and time changed",
         [this](auto l) {
             l[0].title = "Another title";
             l[0].reason = "permission";
             l[2].updatedAt = addSeconds(loop.clock().now(), 5);
             return l;
         },
         {false, false, false}},
        {"waiting moves to working",
         [](auto l) {
             l[1].state = working;
             return l;
         },
         {true, true, false}},
        {"one joins working",
         [this](auto l) {
             l.push_back(make("k2", working));
             return l;
         },
         {false, true, false}},
        {"idle session replaced by another",
         [this](auto l) {
             l[3] = make("i2", idle);
             return l;
         },
         {false, false, true}},
        {"same id from another tool",
         [this](auto l) {
             l[0] = make("w1", waiting, "codex");
             return l;
         },
         {true, false, false}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        store.sessions.set({});
        next = 0; // few draws per case, so every redraw lands on a different phrase
        model = makeModel();
        publishAndDrain(base);
        publishAndDrain(base); // a second refresh pass of the same list keeps every heading
        const auto before = titles();
        const auto drawsBefore = drawSizes.size();

        publishAndDrain(c.change(base));
        const auto after = titles();
        std::size_t expectedDraws = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(after[i] != before[i], c.redrawn[i]) << "section " << i;
            expectedDraws += c.redrawn[i];
        }
        EXPECT_EQ(drawSizes.size() - drawsBefore, expectedDraws);
    }
}

// Every draw of each pool names a heading of its own, and no heading serves two states.
TEST_F(TrayViewModelTest, EachDrawOfEachPoolIsADistinctHeading) {
    model = makeModel();
    std::set<std::string> all;
    std::size_t draws = 0;
    for (const auto& [state, title] :
         {std::pair<SessionState, const Property<std::string>*>{waiting, &model->waitingTitle},
          {working, &model->workingTitle},
          {idle, &model->restingTitle}}) {
        drawSizes.clear();
        publishAndDrain({make("first", state)});
        ASSERT_EQ(drawSizes.size(), 1u);
        const std::size_t size = drawSizes[0];
        EXPECT_GE(size, 2u);
        for (std::size_t i = 0; i < size; ++i, ++draws) {
            next = i;
            publishAndDrain({make("s" + std::to_string(draws), state)}); // a new set each time
            EXPECT_FALSE((*title)().empty());
            all.insert((*title)());
        }
    }
    EXPECT_EQ(all.size(), draws);
}

TEST_F(TrayViewModelTest, DeliversOnTheLoopAfterTheStoreHasAssigned) {
    model = makeModel();
    loop.drain();
    std::vector<AggregateStatus> seen;
    auto subscription = model->aggregate.observe([&](const AggregateStatus& a) { seen.push_back(a); });
    // While the store notifies, its observers must still find the model as it was.
    auto duringNotify = store.sessions.observe([&](const auto&) { EXPECT_FALSE(model->hasSessions()); });

    reader.set({make("a", waiting), make("b", working)});
    store.refresh();
    EXPECT_FALSE(model->hasSessions());
    EXPECT_GT(loop.pendingTasks(), 0u);

    loop.drain();
    EXPECT_EQ(idsOf(model->waiting()), (Ids{"claude__a"}));
    EXPECT_EQ(idsOf(model->working()), (Ids{"claude__b"}));
    // Two pairs per pass, in order: the new list with the old roll-up, then with the new one.
    EXPECT_EQ(seen, (std::vector<AggregateStatus>{AggregateStatus::neutral(), AggregateStatus::neutral(),
                                                  AggregateStatus::waiting(1)}));
    EXPECT_EQ(drawSizes.size(), 2u) << "the second pair of a pass must not redraw";
}

TEST_F(TrayViewModelTest, NothingHappensAfterTheModelIsGone) {
    model = makeModel();
    publish({make("a", waiting)}); // deliveries pending
    const auto pending = loop.pendingTasks();
    ASSERT_GT(pending, 0u);
    model.reset();
    publish({make("b", working)}); // no subscription left to post from
    EXPECT_EQ(loop.pendingTasks(), pending);
    EXPECT_EQ(loop.drain(), static_cast<int>(pending));
    EXPECT_TRUE(drawSizes.empty()) << "a pending delivery reached the model after it was gone";
}

} // namespace
} // namespace tovrin
