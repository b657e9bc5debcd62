#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/Message/WebSocket/WebSocketMessageSender.h"
#include "General/Panoptra/Util/HttpUtil.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::HasSubstr;
using ::testing::Not;

class CookieTest : public LibraryTest {
 protected:
    /// One request, whose reply sets these cookies.
    void exchange(const std::string& url, const std::vector<std::string>& cookies) {
        service.override = [cookies](const HttpRequest&) {
            HttpReply reply = HttpSessionInMemory::reply(200);
            for (const auto& cookie : cookies)
                reply.response->headers.emplace_back("set-cookie", cookie);
            return reply;
        };
        http->get(url, [](const HttpReply&) {});
        advance(100ms);
    }

    /// What a request to this address would give back.
    std::string cookiesFor(const std::string& url) {
        return FakeService::header(http->buildRequest(url), "Cookie");
    }

    std::shared_ptr<HttpUtil> http = Injection::resolve<HttpUtil>();
};

TEST_F(CookieTest, AreGivenBackToThoseWhoSetThem) {
    exchange("https://one.example/api/in/a",
             {"lb=m7; Path=/; HttpOnly; SameSite=None", "  deep = x=y ;path=/api/in", "here=1",
              "tls=2; Secure; Path=/"});
    EXPECT_EQ(cookiesFor("https://one.example/api/in/b"), "lb=m7; deep=x=y; here=1; tls=2");
    EXPECT_EQ(cookiesFor("http://one.example/api/in"), "lb=m7; deep=x=y; here=1");
    EXPECT_EQ(cookiesFor("wss://one.example:8443/api/inside"), "lb=m7; tls=2");
    EXPECT_EQ(cookiesFor("https://two.example/api/in/b"), "(none)");

    exchange(
        "https://one.example/api/in/a",
        {"lb=m8; Path=/", "deep=; Max-Age=0; Path=/api/in", "here=1; Expires=Thu, 01 Jan 1970 00:00:00 GMT",
         "tls=3; Expires=Thu, 01 Jan 2099 00:00:00 GMT; Path=/; Secure"});
    EXPECT_EQ(cookiesFor("https://one.example/api/in/b"), "lb=m8; tls=3");
}

TEST_F(CookieTest, WhatIsTooMuchOrNoCookieIsNotKept) {
    std::vector<std::string> cookies{"",
                                     ";",
                                     "=x",
                                     "nothing",
                                     "a=\r\nX: y",
                                     "a=\x80",
                                     "big=" + std::string(5000, 'x'),
                                     "far=1; Path=/" + std::string(5000, 'x')};
    for (int i = 0; i < 100; ++i)
        cookies.push_back("n" + std::to_string(i) + "=" + std::string(4000, 'v'));
    exchange("https://one.example/x", cookies);
    const auto header = cookiesFor("https://one.example/x");
    EXPECT_LT(header.size(), 70'000);
    EXPECT_THAT(header, HasSubstr("n5="));
    EXPECT_THAT(header, Not(HasSubstr("big=")));
    EXPECT_THAT(header, Not(HasSubstr("X: y")));
}

TEST_F(CookieTest, LiveAsLongAsTheSession) {
    service.override = [](const HttpRequest& request) -> std::optional<HttpReply> {
        if (FakeService::path(request) != "api/in/im/c") return std::nullopt;
        auto reply = HttpSessionInMemory::reply(
            200, R"({"s":true,"h":false,"ip":"","x":false,"ios":{"blacklist":[],"blacklistClasses":[]}})");
        reply.response->headers.emplace_back("Set-Cookie", "lb=m7; Path=/");
        return reply;
    };
    startSession();
    advance(3s);
    Merovanta::panoptra().stop();
    advance(1s);
    const auto stream = service.requests("POST", "api/ix/m");
    ASSERT_FALSE(stream.empty());
    for (const auto& request : stream)
        EXPECT_EQ(FakeService::header(request, "Cookie"), "lb=m7");
    EXPECT_EQ(FakeService::header(service.requests("DELETE", "api/ix/m").back(), "Cookie"), "lb=m7");

    // The next session begins without.
    startSession();
    EXPECT_EQ(FakeService::header(service.requests("POST", "api/in/im/c").back(), "Cookie"), "(none)");
}

TEST_F(CookieTest, ALateReplySetsNoneInTheNextSession) {
    platform->httpSession().latency = 2s;
    exchange("https://one.example/x", {"lb=old"});
    config().visitConfig->sessionId = "another";
    EXPECT_EQ(cookiesFor("https://one.example/x"), "(none)");
    advance(3s);
    EXPECT_EQ(cookiesFor("https://one.example/x"), "(none)");
}

TEST_F(CookieTest, TheWebSocketsHandshakeCarriesThem) {
    exchange("https://service.example/api/in/im/c", {"lb=m7; Path=/"});
    Injection::resolve<WebSocketMessageSender>()->connect("Home", {}, {});
    EXPECT_EQ(FakeService::header(platform->webSockets().peers.back()->request, "Cookie"), "lb=m7");
}

}  // namespace
}  // namespace merovanta::testing
