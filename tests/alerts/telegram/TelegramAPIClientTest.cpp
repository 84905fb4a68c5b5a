#include "alerts/telegram/TelegramAPIClient.h"

#include "support/FakeHttpClient.h"
#include "support/ManualLoop.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tovrin {
namespace {

using Kind = TelegramError::Kind;
const std::string token = "123456:SECRET-token_x";

class TelegramAPIClientTest : public ::testing::Test {
protected:
    // Runs one call and hands back its single outcome, after the fake server's answer.
    template <class T, class Start, class Answer>
    std::optional<Result<T, TelegramError>> outcome(Start start, Answer answer) {
        std::optional<Result<T, TelegramError>> result;
        int calls = 0;
        start([&](Result<T, TelegramError> r) {
            ++calls;
            result.emplace(std::move(r));
        });
        EXPECT_FALSE(result) << "answered before the server did";
        if (http.pendingCount() > 0) answer();
        loop.drain();
        EXPECT_EQ(calls, 1);
        return result;
    }
    Result<std::string, TelegramError> verify(std::function<void()> answer, const std::string& tok = token) {
        return *outcome<std::string>([&](auto done) { client.verifyBot(tok, done); }, answer);
    }
    Result<TelegramChat, TelegramError> discover(const std::string& body) {
        return *outcome<TelegramChat>([&](auto done) { client.discoverChat(token, done); },
                                      [&] { http.respond(200, body); });
    }

    test::FakeHttpClient http;
    test::ManualLoop loop;
    TelegramAPIClient client{http, loop, "https://bots.test"};
};

TEST_F(TelegramAPIClientTest, GetCallsCarryNoBodyNoHeaderAndNoQuery) {
    client.verifyBot(token, [](auto) {});
    client.discoverChat(token, [](auto) {});
    ASSERT_EQ(http.requests().size(), 2u);
    EXPECT_EQ(http.requests()[0].url, "https://bots.test/bot" + token + "/getMe");
    EXPECT_EQ(http.requests()[1].url, "https://bots.test/bot" + token + "/getUpdates");
    for (const auto& request : http.requests()) {
        EXPECT_EQ(request.method, "GET");
        EXPECT_FALSE(request.body);
        EXPECT_TRUE(request.headers.empty());
        EXPECT_EQ(request.timeout.count(), 60);
    }
}

TEST_F(TelegramAPIClientTest, SendMessagePostsTheChatIdAsAStringBesideThePlainText) {
    client.sendMessage(token, "-1001", "2 agents are waiting\nCodex, \"x\"", [](auto) {});
    // Text that cannot be encoded still goes out, as an empty post.
    client.sendMessage(token, "1", "bad \xff byte", [](auto) {});
    ASSERT_EQ(http.requests().size(), 2u);
    for (const auto& request : http.requests()) {
        EXPECT_EQ(request.method, "POST");
        EXPECT_EQ(request.url, "https://bots.test/bot" + token + "/sendMessage");
        EXPECT_EQ(request.headers, (decltype(request.headers){{"Content-Type", "application/json"}}));
    }
    const auto body = nlohmann::json::parse(http.requests()[0].body.value());
    EXPECT_EQ(body, (nlohmann::json{{"chat_id", "-1001"}, {"text", "2 agents are waiting\nCodex, \"x\""}}));
    EXPECT_EQ(http.requests()[1].body, std::optional<std::string>(""));
}

TEST_F(TelegramAPIClientTest, EveryFailureReachesTheCallerWithItsOwnWords) {
    const std::string rejected = "Token rejected — double-check it with @BotFather.";
    const std::string notJson = "The reply isn't valid JSON",
                      badShape = "The reply isn't in the expected format";
    const auto timedOut = HttpResult::failure({TransportError::Kind::timeout, {}});
    const auto refused = HttpResult::failure({TransportError::Kind::cannotConnect, {}});
    const auto tls = HttpResult::failure({TransportError::Kind::other, "TLS handshake failed"});
    const struct {
        const char* name;
        HttpResult answer;
        Kind kind;
        std::string description; // exact, or the start of it for decoder texts
    } rows[] = {
        {"401 with a JSON body", HttpResponse{401, R"({"ok":false,"description":"Unauthorized"})"},
         Kind::unauthorized, rejected},
        {"401 with an HTML body", HttpResponse{401, "<html>no</html>"}, Kind::unauthorized, rejected},
        {"404 with a description", HttpResponse{404, R"({"ok":false,"description":"Not Found"})"}, Kind::api,
         "Telegram turned it away: Not Found"},
        {"ok without result", HttpResponse{200, R"({"ok":true})"}, Kind::api,
         "Telegram turned it away: status 200"},
        {"ok false with a result", HttpResponse{200, R"({"ok":false,"result":{"id":1}})"}, Kind::api,
         "Telegram turned it away: status 200"},
        {"500 without description", HttpResponse{500, R"({"ok":false,"description":null})"}, Kind::api,
         "Telegram turned it away: status 500"},
        {"502 HTML page", HttpResponse{502, "<html><body>Bad Gateway</body></html>"}, Kind::decoding,
         notJson},
        {"empty body", HttpResponse{200, ""}, Kind::decoding, notJson},
        {"ok is not a boolean", HttpResponse{200, R"({"ok":"true","result":{"id":1}})"}, Kind::decoding,
         badShape},
        {"no ok at all", HttpResponse{200, R"({"result":{"id":1}})"}, Kind::decoding, badShape},
        {"a top-level array", HttpResponse{200, "[]"}, Kind::decoding, badShape},
        {"result of the wrong shape", HttpResponse{200, R"({"ok":true,"result":{"id":"7"}})"}, Kind::decoding,
         badShape},
        {"not HTTP", HttpResponse{std::nullopt, "{}"}, Kind::noResponse,
         "Couldn't reach Telegram. Check your connection and try again."},
        {"timeout", timedOut, Kind::transport, "The request timed out."},
        {"cannot connect", refused, Kind::transport, "Could not connect to the server."},
        {"other transport error", tls, Kind::transport, "TLS handshake failed"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto result = verify([&] { http.answer(row.answer); });
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().kind(), row.kind);
        const auto description = result.error().description();
        if (row.kind == Kind::decoding)
            EXPECT_TRUE(description.starts_with(row.description)) << description;
        else
            EXPECT_EQ(description, row.description);
    }
}

TEST_F(TelegramAPIClientTest, TheBotLabelPrefersTheUsernameThenTheFirstNameUnderAnyStatusButUnauthorized) {
    const std::vector<std::tuple<int, std::string, std::string>> rows = {
        {200, R"({"id":1,"is_bot":true,"username":"helper_bot","first_name":"Helper"})", "@helper_bot"},
        {201, R"({"id":1,"first_name":"Helper","username":null})", "Helper"},
        {404, R"({"id":1})", "bot"},
        {500, R"({"id":1,"first_name":""})", ""},
    };
    for (const auto& [status, user, label] : rows) {
        const auto result = verify([&] { http.respond(status, R"({"ok":true,"result":)" + user + "}"); });
        ASSERT_TRUE(result) << user;
        EXPECT_EQ(result.value(), label);
    }
}

TEST_F(TelegramAPIClientTest, ATokenThatBreaksTheUrlFailsLaterWithoutARequest) {
    for (const std::string bad : {"12 34", "tab\there", "naïve", "pct%zz", "pct%az", "pct%", "a|b"}) {
        SCOPED_TRACE(bad);
        const auto result = verify([] {}, bad);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().description(), "Telegram turned it away: Bad request URL");
    }
    EXPECT_TRUE(http.requests().empty());
}

TEST_F(TelegramAPIClientTest, TheTokenNeverShowsInAnErrorText) {
    // A one-letter token also occurs inside the mask; masking must still come to an end.
    for (const std::string& secret : {token, std::string("t")}) {
        const auto echoed = "Bad token " + secret + " at /bot" + secret + "/getMe";
        const std::vector<std::function<void()>> answers = {
            [&] {
                http.respond(400, nlohmann::json{{"ok", false}, {"description", echoed}}.dump());
            },
            [&] { http.fail(TransportError::Kind::other, echoed); },
        };
        for (const auto& answer : answers) {
            const auto result = verify(answer, secret);
            ASSERT_FALSE(result);
            const auto description = result.error().description();
            EXPECT_EQ(description.find("Bad"), description.starts_with("Telegram") ? 25u : 0u) << description;
            EXPECT_EQ(description.find(secret + " at"), std::string::npos) << description;
            EXPECT_EQ(description.find(token), std::string::npos) << description;
        }
    }
}

TEST_F(TelegramAPIClientTest, TheMostRecentUpdateWithAMessageGivesTheChat) {
    const auto chat = discover(R"({"ok":true,"result":[
        {"update_id":1,"message":{"date":1,"chat":{"id":-1001,"title":"Ops","type":"group"}}},
        {"update_id":2,"message":{"chat":{"id":42,"first_name":"Ana","type":"private"}}},
        {"update_id":3,"my_chat_member":{"chat":{"id":99}}},
        {"update_id":4,"message":null}]})");
    ASSERT_TRUE(chat);
    EXPECT_EQ(chat.value(), (TelegramChat{42, std::nullopt, "Ana", std::nullopt}));

    const auto first =
        discover(R"({"ok":true,"result":[{"message":{"chat":{"id":7}}},{"edited_message":{}}]})");
    ASSERT_TRUE(first);
    EXPECT_EQ(first.value().id, 7);
}

TEST_F(TelegramAPIClientTest, NoMessageMeansNoChatAndAMessageWithoutAChatSpoilsTheReply) {
    for (const std::string body :
         {R"({"ok":true,"result":[]})", R"({"ok":true,"result":[{"update_id":1}]})"}) {
        const auto chat = discover(body);
        ASSERT_FALSE(chat) << body;
        EXPECT_EQ(chat.error().description(), "Message your bot once in Telegram, then tap Link chat.");
    }
    const auto chat =
        discover(R"({"ok":true,"result":[{"message":{"chat":{"id":1}}},{"message":{"text":"hi"}}]})");
    ASSERT_FALSE(chat);
    EXPECT_EQ(chat.error().kind(), Kind::decoding);
}

TEST_F(TelegramAPIClientTest, SendMessageNeedsAResultButNotItsId) {
    const auto send = [&](int status, std::string body) {
        return *outcome<void>([&](auto done) { client.sendMessage(token, "1", "hi", done); },
                              [&] { http.respond(status, body); });
    };
    EXPECT_TRUE(send(200, R"({"ok":true,"result":{"message_id":12,"text":"hi"}})"));
    EXPECT_TRUE(send(200, R"({"ok":true,"result":{}})"));
    const auto refused = send(400, R"({"ok":false,"description":"Bad Request: chat not found"})");
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().description(), "Telegram turned it away: Bad Request: chat not found");
}

TEST(TelegramChatTest, DisplayNameTakesTheFirstPresentName) {
    EXPECT_EQ((TelegramChat{-1001, "Ops", "Ana", "ana"}).displayName(), "Ops");
    EXPECT_EQ((TelegramChat{5, "", "Ana", std::nullopt}).displayName(), "");
    EXPECT_EQ((TelegramChat{5, std::nullopt, "Ana", "ana"}).displayName(), "Ana");
    EXPECT_EQ((TelegramChat{5, std::nullopt, std::nullopt, "ana"}).displayName(), "@ana");
    EXPECT_EQ((TelegramChat{-1001, std::nullopt, std::nullopt, std::nullopt}).displayName(), "-1001");
}

} // namespace
} // namespace tovrin
