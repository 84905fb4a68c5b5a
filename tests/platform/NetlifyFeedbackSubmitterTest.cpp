#include "services/feedback/NetlifyFeedbackSubmitter.h"

#include "platform/qt/QtHttpClient.h"
#include "support/LocalHttpServer.h"
#include "support/QtEventLoopTest.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace tovrin {
namespace {

using test::httpReply;

// The feedback post over real HTTP to a local stand-in for the web site.
class NetlifyFeedbackSubmitterTest : public test::QtEventLoopTest {
protected:
    // The outcome in the words the window would show, "sent" for a success.
    std::string post(const std::string& path) {
        NetlifyFeedbackSubmitter submitter(http, server.base() + path, "feedback", "1.4.2 (57)");
        std::optional<std::string> outcome;
        submitter.submit({FeedbackKind::featureRequest, "Add a 50% mode", " ana "},
                         [&](auto result) { outcome = result ? "sent" : result.error().description(); });
        EXPECT_TRUE(pumpUntil([&] { return outcome.has_value(); }));
        return outcome.value_or("no answer");
    }

    test::LocalHttpServer server;
    QtHttpClient http;
};

TEST_F(NetlifyFeedbackSubmitterTest, PostsTheFormAndOnlyA2xxAnswerCountsAsSent) {
    const std::vector<std::pair<int, std::string>> rows = {
        {199, "The server turned it away (status 199). Please try again."},
        {200, "sent"},
        {299, "sent"},
        {300, "The server turned it away (status 300). Please try again."},
        {500, "The server turned it away (status 500). Please try again."},
    };
    for (const auto& [status, words] : rows) {
        SCOPED_TRACE(status);
        server.route("/", httpReply(status, "text/html", "<html>thanks</html>"));
        EXPECT_EQ(post("/"), words);
    }

    const auto& request = server.received().at(0);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, "/");
    EXPECT_EQ(request.headers.at("content-type"), "application/x-www-form-urlencoded; charset=utf-8");
    EXPECT_EQ(request.body,
              "form-name=feedback&type=feature&message=Add+a+50%25+mode&email=ana&source=linux-app"
              "&appVersion=1.4.2+%2857%29");
}

} // namespace
} // namespace tovrin
