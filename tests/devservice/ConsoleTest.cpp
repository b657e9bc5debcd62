#include <gtest/gtest.h>

#include "SocketClient.h"

namespace merovanta::devservice::test {
namespace {

using nlohmann::json;

/// A console page's WebSocket.
class Console : public SocketClient {
 public:
    explicit Console(Service& service, const Service::Headers& headers = {})
        : SocketClient(service, "/console/ws", headers) {}

    void watch(const std::string& visitor) { send(json{{"type", "watch"}, {"visitor", visitor}}.dump()); }

    /// Reads on until a picture comes.
    std::string nextFrame() {
        for (;;) {
            std::string message = read();
            if (gotBinary()) return message;
        }
    }
};

bool isTimeline(const json& message) {
    return message["type"] == "timeline";
}

unsigned frameNumber(const std::string& frame) {
    unsigned number = 0;
    for (std::size_t i = 4; i < 8; ++i)
        number = number * 256 + static_cast<unsigned char>(frame[i]);
    return number;
}

ProtoMessageList screenshot(std::size_t bytes) {
    ProtoMessageList list;
    list.add_messages()->add_screenshotevent()->set_image(jpeg(390, 844, bytes));
    return list;
}

TEST(Console, SlowPageGetsTheLastPictureInsteadOfAQueue) {
    constexpr unsigned kFrames = 60;
    Service service;
    service.startSession();
    Console console(service);
    console.watch("1");
    console.next(isTimeline);
    for (unsigned i = 0; i < kFrames; ++i)
        ASSERT_EQ(service.post(screenshot(1'000'000)).status, 200U);
    unsigned received = 0;
    while (frameNumber(console.nextFrame()) != kFrames)
        ++received;
    EXPECT_LT(received, kFrames / 2);
}

TEST(Console, RefusesOtherPages) {
    Service service;
    EXPECT_EQ(Console(service, {{"Origin", "http://evil.example"}}).status(), 403U);
    EXPECT_EQ(Console(service, {{"Origin", "http://127.0.0.1:" + std::to_string(service.port())}}).status(),
              101U);
    for (const char* path : {"/", "/console/api/visitors", "/console/api/settings"}) {
        EXPECT_EQ(service.request("GET", path, {}, {{"Host", "rebound.example"}}).status, 403U) << path;
    }
    const Service::Headers foreign = {{"Origin", "http://evil.example"}};
    EXPECT_EQ(service.request("PUT", "/console/api/settings", R"({"x":true})", foreign).status, 403U);
    EXPECT_FALSE(service.request("GET", "/console/api/settings").json()["x"]);
}

TEST(Console, SettingsAreTakenAsAWholeOrNotAtAll) {
    Service service;
    for (const char* bad : {R"({"x":true,"s":"yes"})", R"({"x":true,"unknown":1})",
                            R"({"x":true,"blacklist":[1]})", R"({"x":true,"cA":"true"})", "[]", "{"}) {
        const Reply reply = service.request("PUT", "/console/api/settings", bad);
        EXPECT_EQ(reply.status, 400U) << bad;
        EXPECT_TRUE(reply.json()["error"].is_string());
    }
    EXPECT_FALSE(service.request("GET", "/console/api/settings").json()["x"]);
}

TEST(Console, PagesNameWhatTheyUseByItsContentSoThatBrowsersKeepIt) {
    Service service;
    const std::string page = service.request("GET", "/").body;
    const std::size_t at = page.find("/console/console.js?v=");
    ASSERT_NE(at, std::string::npos);
    const std::string script = page.substr(at, page.find('"', at) - at);
    const Reply plain = service.request("GET", script);
    EXPECT_NE(plain.headers.at("Cache-Control").find("immutable"), std::string::npos);
    const Reply packed = service.request("GET", script, {}, {{"Accept-Encoding", "gzip, br"}});
    EXPECT_EQ(packed.headers.at("Content-Encoding"), "gzip");
    EXPECT_LT(packed.body.size(), plain.body.size() / 2);
    std::size_t bytes = service.request("GET", "/", {}, {{"Accept-Encoding", "gzip"}}).body.size();
    for (const char* name : {"console.js", "console.css"})
        bytes += service.request("GET", std::string("/console/") + name, {}, {{"Accept-Encoding", "gzip"}})
                     .body.size();
    EXPECT_LT(bytes, 40'000U) << "what comes before the first picture on a slow line";
    EXPECT_EQ(service.request("GET", "/console/console.js?v=old").headers.at("Cache-Control"), "no-cache");
    const Reply again =
        service.request("GET", "/", {}, {{"If-None-Match", service.request("GET", "/").headers.at("ETag")}});
    EXPECT_EQ(again.status, 304U);
    EXPECT_TRUE(again.body.empty());
}

TEST(Console, PageIsSelfContainedAndStrict) {
    Service service;
    const Reply page = service.request("GET", "/");
    EXPECT_EQ(page.status, 200U);
    EXPECT_NE(page.headers.at("Content-Security-Policy").find("script-src 'self' 'sha256-"),
              std::string::npos);
    for (const char* name : {"/console/console.js", "/console/console.css", "/console/testing.html",
                             "/console/favicon.svg", "/cdn/chat/chat.html", "/cdn/chat/chat.js"}) {
        const Reply asset = service.request("GET", name);
        EXPECT_EQ(asset.status, 200U) << name;
        const std::string policy = asset.headers.at("Content-Security-Policy");
        EXPECT_EQ(policy.find("default-src 'none'; script-src 'self';"), 0U) << name;
        EXPECT_EQ(policy.find("unsafe"), std::string::npos) << name;
        EXPECT_EQ(asset.body.find("innerHTML"), std::string::npos) << name;
    }
    for (const char* name :
         {"/console/..%2Fmain.cpp", "/console/.hidden", "/console/nothing.js", "/cdn/chat/"})
        EXPECT_EQ(service.request("GET", name).status, 404U) << name;
}

}  // namespace
}  // namespace merovanta::devservice::test
