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

void expectError(const HttpReply& reply, const std::string& text) {
    ASSERT_TRUE(reply.error);
    EXPECT_FALSE(reply.data);
    EXPECT_FALSE(reply.response);
    EXPECT_FALSE(reply.error->mMsg.empty());
    EXPECT_THAT(reply.error->mMsg, HasSubstr(text));
}

TEST(HttpSession, SendsEmptyHeadersAndKeepsNoCookies) {
    RogueServer server("HTTP/1.1 204 No Content\r\nSet-Cookie: a=b; Path=/\r\n\r\n", keepOpen);
    const auto exchange = [&](bool onNewConnection) {
        EXPECT_FALSE(execute({.method = "DELETE",
                              .url = server.url(),
                              .headers = {{"X-QD-SSID", ""}},
                              .onNewConnection = onNewConnection})
                         .error);
        return server.connections();
    };
    EXPECT_EQ(exchange(false), 1);
    EXPECT_EQ(exchange(false), 1);
    EXPECT_EQ(exchange(true), 2) << "what is open may be dead";
    EXPECT_EQ(exchange(false), 2);
    EXPECT_THAT(server.received().toStdString(), HasSubstr("\r\nX-QD-SSID:"));
    EXPECT_THAT(server.received().toLower().toStdString(), Not(HasSubstr("cookie:")));
}

TEST(HttpSession, FailsWhenTheReplyIsCutShortOrTooLargeOrStandsStill) {
    const std::string ok = "HTTP/1.1 200 OK\r\nContent-Length: ";
    const struct {
        std::string answer;
        RogueServer::Afterwards afterwards = close;
        const char* error = "";
        int repetitions = 0;
    } ways[] = {
        {ok + "100\r\n\r\nhalf"},
        {"HTTP/1.1 500 No\r\nContent-Length: 100\r\n\r\nhalf"},
        {"HTTP/1.1 200 OK\r\nContent-Le"},
        {"\x01\x02garbage\r\n\r\n"},
        {""},
        {ok + "16777217\r\n\r\nx", keepOpen, "Reply is too large"},
        {"HTTP/1.1 200 OK\r\n\r\nx", keepOpen, "Reply is too large", 17},
        {ok + "100\r\n\r\nhalf", keepOpen, "The request timed out"},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.answer);
        const RogueServer server(QByteArray::fromStdString(way.answer), way.afterwards, way.repetitions);
        expectError(execute({.url = server.url(), .timeout = std::chrono::seconds(2)}), way.error);
    }
}

TEST(HttpSession, RefusesWhatIsNoRequest) {
    for (const auto* url : {"", "http://", "no address", "http://a b/", "http://[::1", "file:///etc/passwd",
                            "data:,x", "http://127.0.0.1:99999/"}) {
        SCOPED_TRACE(url);
        expectError(execute({.url = url}), "");
    }
    expectError(execute({.url = "http://127.0.0.1:1/", .headers = {{"A", "b\r\nC: d"}}}), "Malformed header");
}

}  // namespace
