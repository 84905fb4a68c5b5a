#include "services/feedback/NetlifyFeedbackSubmitter.h"

#include "support/FakeHttpClient.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace tovrin {
namespace {

std::string body(std::string message, std::string email = "ana", FeedbackKind kind = FeedbackKind::feedback) {
    return NetlifyFeedbackSubmitter::encodedBody({kind, std::move(message), std::move(email)}, "feedback",
                                                 "1.4.2 (57)");
}

TEST(NetlifyFeedbackSubmitterTest, TheBodyIsTheFormTheHostExpectsByteForByte) {
    EXPECT_EQ(body("Add a 50% mode", " ana ", FeedbackKind::featureRequest),
              "form-name=feedback&type=feature&message=Add+a+50%25+mode&email=ana&source=linux-app"
              "&appVersion=1.4.2+%2857%29");

    // The message goes out as typed; the address loses only the blanks and line ends around it.
    const std::vector<std::tuple<std::string, std::string, std::string>> rows = {
        {"  hello  ", "ana", "message=++hello++&email=ana&"},
        {"hi", " \t\n", "message=hi&email=&source"},
        {"a\nb&c=d+e", "ana", "message=a%0Ab%26c%3Dd%2Be&"},
        {"привет, 日本語 ١٢٣ e\u0301", "ana", "message=привет%2C+日本語+١٢٣+e\u0301&"},
        {"(x) -._~*'!", "ana", "message=%28x%29+-._%7E%2A%27%21&"},
        {"ok", "ana+tag@example.org", "email=ana%2Btag%40example.org&"},
        {"tab\tnbsp\u00A0emoji😀", "ana", "message=tab%09nbsp%C2%A0emoji%F0%9F%98%80&"},
        {"bad \xFF byte", "ana", "&message=&email=ana&"},
    };
    for (const auto& [message, email, expected] : rows) {
        SCOPED_TRACE(message);
        EXPECT_NE(body(message, email).find(expected), std::string::npos) << body(message, email);
    }
}

TEST(NetlifyFeedbackSubmitterTest, TheFormGoesToTheConfiguredEndpointElseTheSiteRoot) {
    EXPECT_EQ(NetlifyFeedbackSubmitter::submitURL("https://forms.example/in", "tovrin.app"),
              "https://forms.example/in");
    EXPECT_EQ(NetlifyFeedbackSubmitter::submitURL("", "tovrin.app"), "https://tovrin.app/");
    EXPECT_EQ(NetlifyFeedbackSubmitter::submitURL("", "https://tovrin.app/"), "https://tovrin.app/");
    EXPECT_EQ(NetlifyFeedbackSubmitter::submitURL("", ""), "");
}

TEST(NetlifyFeedbackSubmitterTest, AnAnswerWithoutAStatusOrNoAnswerIsSaidInWords) {
    test::FakeHttpClient http;
    NetlifyFeedbackSubmitter submitter(http, "https://tovrin.app/", "feedback", "1.0 (1)");
    const std::vector<std::pair<HttpResult, std::string>> rows = {
        {HttpResponse{std::nullopt, "hello"},
         "Couldn't reach the server. Check your connection and try again."},
        {HttpResult::failure({TransportError::Kind::other, "Host tovrin.app not found"}),
         "Host tovrin.app not found"},
    };
    for (const auto& [answer, words] : rows) {
        std::optional<std::string> said;
        submitter.submit({}, [&](auto result) { said = result ? "sent" : result.error().description(); });
        http.answer(answer);
        EXPECT_EQ(said, words);
    }
}

} // namespace
} // namespace tovrin
