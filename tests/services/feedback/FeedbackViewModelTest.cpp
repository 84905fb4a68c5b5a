#include "services/feedback/FeedbackViewModel.h"

#include "support/FakeFeedbackSubmitter.h"
#include "support/RecordingAnalytics.h"

#include <gtest/gtest.h>

namespace tovrin {
namespace {

using State = FeedbackViewModel::State;

struct FeedbackViewModelTest : ::testing::Test {
    void type(std::string message, std::string email = {}) {
        model.message.set(std::move(message));
        model.email.set(std::move(email));
    }

    test::FakeFeedbackSubmitter submitter;
    test::RecordingAnalytics analytics;
    FeedbackViewModel model{submitter, analytics};
};

TEST_F(FeedbackViewModelTest, ABlankMessageSendsNothing) {
    for (const char* blank : {"", "   ", " \n\t\r\n ", "\u00A0\u2028"}) {
        type(blank, "ana@example.org");
        EXPECT_FALSE(model.sendEnabled()) << blank;
        model.submit();
    }
    EXPECT_TRUE(submitter.drafts.empty());
    EXPECT_EQ(model.state(), State{});
}

TEST_F(FeedbackViewModelTest, OnePostAtATimeAndAFailureKeepsTheDraftForAnotherTry) {
    model.kind.set(FeedbackKind::featureRequest);
    type("  hello\n", " ana ");
    model.submit();
    model.submit();
    ASSERT_EQ(submitter.drafts.size(), 1u) << "a second press while sending posts nothing";
    EXPECT_EQ(submitter.drafts[0], (FeedbackDraft{FeedbackKind::featureRequest, "  hello\n", " ana "}));
    EXPECT_FALSE(model.sendEnabled());
    EXPECT_EQ(model.sendLabel(), "Sending…");

    submitter.finish(Result<void, FeedbackSubmissionError>::failure(FeedbackSubmissionError::server(502)));
    EXPECT_EQ(model.failure(), "The server turned it away (status 502). Please try again.");
    EXPECT_EQ((FeedbackDraft{model.kind(), model.message(), model.email()}), submitter.drafts[0]);
    EXPECT_TRUE(model.sendEnabled());
    EXPECT_TRUE(analytics.tracked.empty());
    model.submit();
    EXPECT_EQ(submitter.drafts.size(), 2u);
    EXPECT_EQ(model.failure(), std::nullopt);
}

TEST_F(FeedbackViewModelTest, SuccessIsTrackedAndThanksUntilResetWhichALatePostLeavesAlone) {
    type("hello", "ana");
    model.submit();
    submitter.finish({});
    EXPECT_TRUE(model.showsSent());
    EXPECT_EQ(analytics.tracked, std::vector<std::string>{"Feedback.submitted"});
    model.submit();
    EXPECT_EQ(submitter.drafts.size(), 1u) << "nothing more to send once sent";

    model.kind.set(FeedbackKind::featureRequest);
    model.reset();
    EXPECT_EQ(model.state(), State{});
    EXPECT_EQ(submitter.drafts.size(), 1u);
    EXPECT_EQ((FeedbackDraft{model.kind(), model.message(), model.email()}), FeedbackDraft{});

    // A post still out when the form was reset went through, but the new form stays as it is.
    type("first");
    model.submit();
    model.reset();
    type("second");
    submitter.finish({});
    EXPECT_EQ(model.state(), State{});
    EXPECT_EQ(model.message(), "second");
    EXPECT_EQ(analytics.tracked.size(), 2u);
}

} // namespace
} // namespace tovrin
