#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "SocketClient.h"

namespace merovanta::devservice::test {
namespace {

using nlohmann::json;

constexpr const char* kQuery =
    "tId=T&sId=S&vId=V&t=TOKEN&id=VISIT&shrId=48213&vsId=S&url=My pag\xC3\xA9&fsTy=l";
constexpr const char* kFrames = "/console/api/visitors/1/frames";
constexpr const char* kMessages = "/console/api/visitors/1/messages";

/// A visitor's end of the WebSocket.
class VisitorClient : public SocketClient {
 public:
    explicit VisitorClient(Service& service, const std::string& query = kQuery)
        : SocketClient(service, "/api/in/imws?" + query, {{"X-QD-SSID", "S"}}) {}

    void send(const std::string& bytes, bool binary = true) { SocketClient::send(bytes, binary); }
};

// Whether the service gets there within a few seconds.
bool eventually(const std::function<bool()>& holds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
    }
    return true;
}

// A page change and a picture.
std::string events() {
    ProtoMessageList list;
    list.add_messages()->set_pagechange("AccountsPage");
    list.add_messages()->add_screenshotevent()->set_image(jpeg(390, 844));
    return list.SerializeAsString();
}

TEST(WebSocket, StreamsLikePollingAndOutlivesItsConnections) {
    Service service;
    {
        VisitorClient client(service);
        ASSERT_EQ(client.status(), 101U);
        EXPECT_EQ(service.visitor()["page"], "My pag\xC3\xA9");
        client.send(events());
        client.send("garbage");
        client.send("{}", false);
        EXPECT_EQ(service.request("POST", kMessages, R"({"co":{"b":true}})").status, 202U);
        EXPECT_EQ(client.read(), R"({"co":{"b":true}})");
        EXPECT_FALSE(client.gotBinary());
        EXPECT_TRUE(eventually([&] { return service.timeline("warning").size() == 2; }));
    }
    EXPECT_TRUE(eventually([&] { return service.timeline("disconnect").size() == 1; }));
    const json dropped = service.visitor();
    EXPECT_EQ(dropped["state"], "live");
    EXPECT_EQ(dropped["transport"], "websocket");
    EXPECT_EQ(dropped["page"], "AccountsPage");
    EXPECT_EQ(dropped["shareId"], "48213");
    EXPECT_EQ(dropped["counters"]["frames"], 1);
    EXPECT_EQ(dropped["counters"]["socketFrames"], 1);
    EXPECT_EQ(dropped["counters"]["posts"], 0);
    EXPECT_EQ(service.request("GET", "/console/api/visitors/1/frame.jpg").body, jpeg(390, 844));

    EXPECT_EQ(service.request("POST", kMessages, R"({"u":"waits"})").status, 202U);
    VisitorClient back(service);
    EXPECT_EQ(back.read(), R"({"u":"waits"})");
    back.disconnect();
    EXPECT_TRUE(eventually([&] { return service.timeline("disconnect").back() == "Code 1000"; }));
    EXPECT_EQ(service.visitor()["state"], "live");

    VisitorClient again(service);
    EXPECT_EQ(service.request("DELETE", Service::kStream, {}, {{"X-QD-SSID", "S"}}).status, 200U);
    again.send(events());
    EXPECT_TRUE(eventually([&] { return service.visitor()["counters"]["socketFrames"] == 2; }));
    EXPECT_EQ(service.visitor()["state"], "ended");
    EXPECT_EQ(service.visitor()["counters"]["sockets"], 3);
    EXPECT_EQ(service.visitor()["counters"]["warnings"], 2);
}

TEST(WebSocket, HandshakeNeedsTheWholeQuery) {
    Service service;
    const std::string whole = kQuery;
    for (const char* key : {"tId=", "sId=", "vId=", "&t=", "&id=", "shrId=", "vsId=", "url=", "fsTy="}) {
        std::string query = whole;
        query.insert(query.find(key) + std::string(key).size() - 1, "x");
        EXPECT_EQ(VisitorClient(service, query).status(), 400U) << query;
    }
    EXPECT_EQ(VisitorClient(service, "tId=T&sId=&vId=&t=&id=&shrId=&vsId=&url=&fsTy=").status(), 400U);
    EXPECT_EQ(VisitorClient(service, whole + "&").status(), 101U);
}

TEST(WebSocket, SendsWhatATestAsksForDownTheSocket) {
    Service service;
    EXPECT_EQ(service.request("POST", kFrames, "{}").status, 404U);
    VisitorClient client(service);
    const auto frame = [&](const std::string& body) { return service.request("POST", kFrames, body).status; };
    for (const char* bad :
         {"{}", "[]", R"({"text":"a","binary":"AA=="})", R"({"text":1})", R"({"binary":"?"})",
          R"({"close":1005})", R"({"close":70000})", R"({"text":"aa","repeat":67108864})",
          R"({"text":"a","repeat":0})", R"({"text":"a","count":10001})"}) {
        EXPECT_EQ(frame(bad), 400U) << bad;
    }
    EXPECT_EQ(frame(R"({"text":"no JSON"})"), 202U);
    EXPECT_EQ(client.read(), "no JSON");
    EXPECT_EQ(frame(R"({"binary":"AP8B"})"), 202U);
    EXPECT_EQ(client.read(), std::string("\0\xFF\1", 3));
    EXPECT_TRUE(client.gotBinary());
    EXPECT_EQ(frame(R"({"text":"ab","repeat":8912896})"), 202U);
    EXPECT_EQ(client.read().size(), 17U << 20U);
    EXPECT_EQ(frame(R"({"text":"[]","count":1000})"), 202U);
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(client.read(), "[]");
    EXPECT_EQ(frame(R"({"close":4001})"), 202U);
    EXPECT_EQ(client.closeCode(), 4001U);

    VisitorClient back(service);
    EXPECT_EQ(frame(R"({"drop":true})"), 202U);
    EXPECT_EQ(back.closeCode(), 0U);
    EXPECT_TRUE(eventually([&] { return service.timeline("disconnect").back() == "Connection lost"; }));
    EXPECT_EQ(frame(R"({"text":"nobody"})"), 409U);
}

TEST(WebSocket, OversizedFramesAndOlderConnectionsAreClosed) {
    Service service;
    VisitorClient older(service);
    VisitorClient newer(service);
    EXPECT_EQ(older.closeCode(), 1000U);
    EXPECT_TRUE(service.timeline("disconnect").empty());
    newer.send(std::string((8U << 20U) + 1, 'x'));
    EXPECT_EQ(newer.closeCode(), 1009U);
    EXPECT_EQ(service.visitor()["state"], "live");
}

}  // namespace
}  // namespace merovanta::devservice::test
