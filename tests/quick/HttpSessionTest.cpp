#include "Platform/HttpSession.h"

#include <gmock/gmock.h>

#include <future>

#include "RogueServer.h"
#include "Scene.h"

using namespace merovanta;
using merovanta::test::eventually;
using merovanta::test::RogueServer;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr auto keepOpen = RogueServer::Afterwards::keepOpen;
constexpr auto close = RogueServer::Afterwards::close;

HttpReply execute(HttpRequest request) {
    auto promise = std::make_shared<std::promise<HttpReply>>();
    auto future = promise->get_future();
    platform::current().httpSession().execute(std::move(request), [promise](HttpReply reply) {
        EXPECT_FALSE(platform::current().mainQueue().isCurrent());
        promise->set_value(std::move(reply));
    });
    const bool came = eventually(
        [&] { return future.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }, 20000);
    EXPECT_TRUE(came);
    return came ? future.get() : HttpReply{};
}

HttpReply get(const RogueServer& server) {
    return execute({.url = server.url()});
}

void expectError(const HttpReply& reply, const std::string& text = "") {
    ASSERT_TRUE(reply.error);
    EXPECT_FALSE(reply.data);
    EXPECT_FALSE(reply.response);
    EXPECT_FALSE(reply.error->mMsg.empty());
    EXPECT_THAT(reply.error->mMsg, HasSubstr(text));
}

TEST(HttpSession, SendsWhatItIsGiven) {
    RogueServer server("HTTP/1.1 200 OK\r\nContent-Length: 2\r\nX-Extra: 1\r\n\r\nok", keepOpen);
    const auto reply = execute({.method = "POST",
                                .url = server.url(),
                                .headers = {{"X-QD-SSID", ""}, {"Content-Type", "application/json"}},
                                .body = std::string("a\0b", 3)});
    EXPECT_FALSE(reply.error);
    EXPECT_EQ(reply.data, "ok");
    ASSERT_TRUE(reply.response);
    EXPECT_EQ(reply.response->status, 200);
    EXPECT_THAT(reply.response->headers,
                testing::Contains(std::pair<std::string, std::string>("X-Extra", "1")));
    const auto received = server.received().toStdString();
    EXPECT_THAT(received, testing::StartsWith("POST /path?q=a%20b HTTP/1.1\r\n"));
    EXPECT_THAT(received, HasSubstr("\r\nX-QD-SSID:"));
    EXPECT_THAT(received, HasSubstr("\r\nContent-Type: application/json\r\n"));
    EXPECT_TRUE(received.ends_with(std::string("a\0b", 3)));
}

TEST(HttpSession, DeletesAndKeepsNoCookies) {
    RogueServer server("HTTP/1.1 204 No Content\r\nSet-Cookie: a=b; Path=/\r\n\r\n", keepOpen);
    for (int round = 0; round < 2; ++round) {
        const auto reply = execute({.method = "DELETE", .url = server.url()});
        EXPECT_FALSE(reply.error);
        EXPECT_FALSE(reply.data);
        ASSERT_TRUE(reply.response);
        EXPECT_EQ(reply.response->status, 204);
    }
    EXPECT_THAT(server.received().toStdString(), testing::StartsWith("DELETE /"));
    EXPECT_THAT(server.received().toLower().toStdString(), Not(HasSubstr("cookie:")));
}

TEST(HttpSession, TakesAnyStatusForAResponse) {
    for (const int status :
         {200, 400, 401, 403, 404, 405, 409, 410, 418, 422, 429, 500, 501, 502, 503, 599}) {
        RogueServer server("HTTP/1.1 " + QByteArray::number(status) + " X\r\nContent-Length: 4\r\n\r\nbody",
                           keepOpen);
        const auto reply = get(server);
        EXPECT_FALSE(reply.error) << status << ": " << (reply.error ? reply.error->mMsg : "");
        ASSERT_TRUE(reply.response) << status;
        EXPECT_EQ(reply.response->status, status);
        EXPECT_EQ(reply.data, "body") << status;
    }
}

TEST(HttpSession, GivesNoDataForAnEmptyBody) {
    RogueServer server("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n", keepOpen);
    const auto reply = get(server);
    EXPECT_FALSE(reply.error);
    EXPECT_FALSE(reply.data);
    ASSERT_TRUE(reply.response);
}

TEST(HttpSession, FailsWhenTheReplyIsCutShort) {
    for (const auto* answer : {"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf",
                               "HTTP/1.1 500 No\r\nContent-Length: 100\r\n\r\nhalf",
                               "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n10\r\nhalf",
                               "HTTP/1.1 200 OK\r\nContent-Le", "\x01\x02garbage\r\n\r\n", ""}) {
        SCOPED_TRACE(answer);
        RogueServer server(answer, close);
        expectError(get(server));
    }
}

TEST(HttpSession, RefusesRepliesBeyondTheBound) {
    RogueServer announced("HTTP/1.1 200 OK\r\nContent-Length: 16777217\r\n\r\nx", keepOpen);
    expectError(get(announced), "Reply is too large");
    RogueServer endless("HTTP/1.1 200 OK\r\n\r\nx", keepOpen, 17);
    expectError(get(endless), "Reply is too large");
    RogueServer allowed("HTTP/1.1 200 OK\r\nContent-Length: 16777216\r\n\r\n", keepOpen, 16);
    EXPECT_EQ(get(allowed).data.value_or("").size(), HttpSession::maximumReplyBytes);
}

TEST(HttpSession, FailsWithoutProgress) {
    RogueServer silent("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf", keepOpen);
    expectError(execute({.url = silent.url(), .timeout = std::chrono::seconds(1)}), "The request timed out");
    std::string nobody;
    {
        const RogueServer gone("", close);
        nobody = gone.url();
    }
    expectError(execute({.url = nobody}));
}

TEST(HttpSession, RefusesWhatIsNoRequest) {
    for (const auto* url : {"", "http://", "no address", "http://a b/", "http://[::1", "file:///etc/passwd",
                            "data:,x", "http://127.0.0.1:99999/"}) {
        SCOPED_TRACE(url);
        expectError(execute({.url = url}));
    }
    expectError(execute({.url = "http://127.0.0.1:1/", .headers = {{"A", "b\r\nC: d"}}}), "Malformed header");
}

}  // namespace
