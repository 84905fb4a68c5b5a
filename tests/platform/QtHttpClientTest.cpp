#include "platform/qt/QtHttpClient.h"

#include "platform/qt/LoadableHttpClient.h"
#include "platform/qt/QtMainLoop.h"
#include "support/LocalHttpServer.h"
#include "support/QtEventLoopTest.h"
#include "support/TempDir.h"

#include <QCoreApplication>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>

namespace tovrin {
namespace {

using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;

using test::httpReply;
using test::LocalHttpServer;

class HttpClientFixture : public test::QtEventLoopTest {
protected:
    // Sends and waits for the one answer; fails the test if it came inside send().
    HttpResult fetch(HttpRequest request) {
        std::optional<HttpResult> answer;
        int answers = 0;
        client->send(std::move(request), [&](HttpResult r) {
            ++answers;
            answer.emplace(std::move(r));
        });
        EXPECT_FALSE(answer) << "answered inside send()";
        EXPECT_TRUE(pumpUntil([&] { return answer.has_value(); }));
        pumpUntil([] { return false; }, 20ms);
        EXPECT_EQ(answers, 1);
        return answer ? *answer : HttpResult::failure({TransportError::Kind::other, "no answer"});
    }
    HttpRequest get(const std::string& path, double timeout = 5) const {
        return {.method = "GET",
                .url = server.base() + path,
                .headers = {},
                .body = std::nullopt,
                .timeout = Seconds(timeout)};
    }

    LocalHttpServer server;
    QtMainLoop loop;
    std::unique_ptr<HttpClient> client = std::make_unique<QtHttpClient>();
};

// Each case runs on the client itself and on the same client reached through the module that
// programs load at their first request.
class QtHttpClientTest : public HttpClientFixture, public ::testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        if (GetParam()) client = std::make_unique<LoadableHttpClient>(loop);
    }
};
INSTANTIATE_TEST_SUITE_P(DirectAndThroughTheModule, QtHttpClientTest, ::testing::Bool());

TEST_P(QtHttpClientTest, EveryHttpStatusIsAnAnswerWithItsBodyAsServed) {
    const std::vector<std::tuple<QByteArray, int, QByteArray, QByteArray>> rows = {
        {"/json", 200, "application/json", R"({"ok":true,"result":{"id":1}})"},
        {"/empty", 200, "application/json", ""},
        {"/text", 200, "text/plain", "not json at all"},
        {"/html", 502, "text/html", "<html><body><h1>502 Bad Gateway</h1></body></html>"},
        {"/unauthorized", 401, "application/json", R"({"ok":false,"error_code":401})"},
        {"/error", 500, "text/plain", "oops"},
    };
    for (const auto& [path, status, type, body] : rows) {
        SCOPED_TRACE(path.toStdString());
        server.route(path, httpReply(status, type, body));
        const auto result = fetch(get(path.toStdString()));
        ASSERT_TRUE(result) << result.error().description();
        EXPECT_EQ(result.value().status, status);
        EXPECT_EQ(result.value().body, body.toStdString());
    }
}

TEST_P(QtHttpClientTest, SendsTheMethodHeadersAndBodyAsAsked) {
    server.route("/post", httpReply(200, "application/json", "{}"));
    auto post = get("/post");
    post.method = "POST";
    post.headers = {{"Content-Type", "application/json"}};
    post.body = R"({"chat_id":"-1001","text":"a\nb"})";
    ASSERT_TRUE(fetch(post));
    post.body = "";
    ASSERT_TRUE(fetch(post));
    ASSERT_TRUE(fetch(get("/post")));

    ASSERT_EQ(server.received().size(), 3u);
    const auto& full = server.received()[0];
    EXPECT_EQ(full.method, "POST");
    EXPECT_EQ(full.headers.at("content-type"), "application/json");
    EXPECT_EQ(full.body, R"({"chat_id":"-1001","text":"a\nb"})");
    const auto& empty = server.received()[1];
    EXPECT_EQ(empty.method, "POST");
    EXPECT_EQ(empty.headers.at("content-length"), "0");
    const auto& plain = server.received()[2];
    EXPECT_EQ(plain.method, "GET");
    EXPECT_FALSE(plain.headers.contains("content-type"));
    EXPECT_TRUE(plain.body.isEmpty());
}

TEST_P(QtHttpClientTest, AReplyThatNeverComesTimesOutOnTime) {
    server.route("/never", LocalHttpServer::never);
    const auto start = Steady::now();
    const auto result = fetch(get("/never", 0.3));
    const auto elapsed = Steady::now() - start;
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, TransportError::Kind::timeout);
    EXPECT_GE(elapsed, 300ms);
    EXPECT_LT(elapsed, 3s);
}

TEST_P(QtHttpClientTest, AClosedPortCannotConnect) {
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost, 0));
    const auto port = closed.serverPort();
    closed.close();
    HttpRequest request;
    request.url = "http://127.0.0.1:" + std::to_string(port) + "/x";
    const auto result = fetch(request);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, TransportError::Kind::cannotConnect);
}

TEST_P(QtHttpClientTest, AnExchangeThatBreaksOffIsATransportErrorWithoutThePath) {
    const std::vector<QByteArray> replies = {
        LocalHttpServer::drop,
        "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly the start of it",
    };
    for (const auto& reply : replies) {
        SCOPED_TRACE(reply.toStdString());
        server.route("/bot42:SECRET/getMe", reply);
        const auto result = fetch(get("/bot42:SECRET/getMe"));
        ASSERT_FALSE(result) << "status " << result.value().status.value_or(0);
        EXPECT_EQ(result.error().kind, TransportError::Kind::other);
        const auto description = result.error().description();
        EXPECT_FALSE(description.empty());
        EXPECT_EQ(description.find("SECRET"), std::string::npos) << description;
    }
}

TEST_P(QtHttpClientTest, AReplyThatIsNotHttpHasNoStatus) {
    HttpRequest request;
    request.url = "data:text/plain,hello";
    const auto result = fetch(request);
    ASSERT_TRUE(result) << result.error().description();
    EXPECT_FALSE(result.value().status);
    EXPECT_EQ(result.value().body, "hello");
}

TEST_P(QtHttpClientTest, DestroyingTheClientDropsTheRequestsInFlight) {
    server.route("/never", LocalHttpServer::never);
    bool answered = false;
    client->send(get("/never", 0.2), [&](HttpResult) { answered = true; });
    ASSERT_TRUE(pumpUntil([&] { return !server.received().empty(); }));
    client.reset();
    pumpUntil([] { return false; }, 400ms);
    EXPECT_FALSE(answered);
}

TEST_F(HttpClientFixture, HttpsIsAvailable) {
    EXPECT_TRUE(QSslSocket::supportsSsl()) << QSslSocket::sslLibraryBuildVersionString().toStdString();
}

using LoadableHttpClientTest = HttpClientFixture;

TEST_F(LoadableHttpClientTest, WithoutTheModuleEveryRequestFailsLaterSayingWhy) {
    test::TempDir dir;
    dir.write("libtovrin-http.so", "not a library");
    for (const auto& module : {dir.path() / "missing.so", dir.path() / "libtovrin-http.so"}) {
        client = std::make_unique<LoadableHttpClient>(loop, module);
        for (int attempt = 0; attempt < 2; ++attempt) {
            const auto result = fetch(get("/json"));
            ASSERT_FALSE(result);
            EXPECT_EQ(result.error().kind, TransportError::Kind::other);
            EXPECT_NE(result.error().description().find(module.string()), std::string::npos)
                << result.error().description();
        }
    }
    EXPECT_TRUE(server.received().empty());

    // Gone before its failure is told: the completion never comes.
    bool answered = false;
    client->send(get("/json"), [&](HttpResult) { answered = true; });
    client.reset();
    pumpUntil([] { return false; }, 100ms);
    EXPECT_FALSE(answered);
}

} // namespace
} // namespace tovrin
