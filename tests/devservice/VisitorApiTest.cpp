#include <gtest/gtest.h>

#include "Service.h"

namespace merovanta::devservice::test {
namespace {

using nlohmann::json;

// One message of each kind, a second apart.
ProtoMessageList oneOfEach() {
    ProtoMessageList list;
    for (const std::uint64_t time : {0U, 1000U, 2000U, 3000U, 4000U, 5000U})
        list.add_messages()->set_time(time);
    list.mutable_messages(1)->set_pagechange("AccountsPage");
    list.mutable_messages(2)->add_screenshotevent()->set_image(jpeg(390, 844));
    auto* tap = list.mutable_messages(3)->add_clickevent();
    tap->set_x(31);
    tap->set_y(60);
    list.mutable_messages(4)->set_tag("mortgage");
    auto* identity = list.mutable_messages(5)->add_usertag();
    identity->set_firstname("Ada");
    identity->add_label("vip");
    return list;
}

TEST(VisitorApi, InitialisationReplyFollowsTheSettings) {
    Options options;
    options.initReply.maskedTags = {"12"};
    Service service(options);
    const json reply = service.request("POST", "/api/in/im/c", R"({"sId":"S","tId":"T"})").json();
    EXPECT_EQ(reply, json::parse(R"({"s":true,"h":false,"ip":"127.0.0.1","ios":{"blacklist":["12"],
        "blacklistClasses":[]},"x":false,"st":"u","fsTy":"l"})"));

    const std::string changes = R"({"s":false,"st":null,"x":true,"fsTy":"m","pnWS":true,"cA":false,
        "blacklist":[],"blacklistClasses":["Password"]})";
    EXPECT_EQ(service.request("PUT", "/console/api/settings", changes).status, 200U);
    EXPECT_EQ(service.request("POST", "/api/in/im/c", R"({"sId":"S","tId":"T"})").json(),
              json::parse(R"({"s":false,"h":false,"ip":"127.0.0.1","ios":{"blacklist":[],
        "blacklistClasses":["Password"]},"x":true,"fsTy":"m","pnWS":true,"cA":false})"));
}

TEST(VisitorApi, InitialisationRecordIsCheckedKeyByKey) {
    Service service;
    service.request("POST", "/api/in/im/c", R"({"sId":"S","tId":"T","start":"soon","page":{"width":390}})");
    const auto warnings = service.timeline("warning");
    const auto named = [&](const std::string& key) {
        return std::any_of(warnings.begin(), warnings.end(), [&](const std::string& text) {
            return text.find('"' + key + '"') != std::string::npos;
        });
    };
    for (const char* key :
         {"shId", "qdu", "url", "start", "init", "vId", "viId", "optin", "height", "docHeight"}) {
        EXPECT_TRUE(named(key)) << key;
    }
    EXPECT_FALSE(named("sId"));
    EXPECT_FALSE(named("width"));
}

TEST(VisitorApi, CountsAndShowsWhatASessionStreams) {
    Service service;
    service.startSession();
    const Reply reply = service.post(oneOfEach());
    EXPECT_EQ(reply.body, "[]");

    const json visitor = service.visitor();
    const json& counters = visitor["counters"];
    for (const char* key :
         {"frames", "pages", "taps", "pings", "tags", "userTags", "posts", "gets", "inits"}) {
        EXPECT_EQ(counters[key], 1) << key;
    }
    EXPECT_EQ(counters["bytes"], oneOfEach().ByteSizeLong());
    EXPECT_EQ(counters["warnings"], 0) << service.request("GET", "/console/api/visitors/1/timeline").body;
    EXPECT_EQ(visitor["state"], "live");
    EXPECT_EQ(visitor["page"], "AccountsPage");
    EXPECT_EQ(visitor["shareId"], "48213");
    EXPECT_EQ(visitor["picture"], json::parse(R"({"width":390,"height":844})"));
    EXPECT_EQ(visitor["userTag"], json::parse(R"({"firstname":"Ada","label":["vip"]})"));

    std::vector<std::string> kinds;
    for (const json& entry : service.request("GET", "/console/api/visitors/1/timeline").json()) {
        kinds.push_back(entry["kind"]);
        if (kinds.back() == "tap") {
            EXPECT_EQ(entry["time"], 3000);
            EXPECT_EQ(entry["detail"]["x"], 31);
            EXPECT_EQ(entry["detail"]["frame"]["width"], 390);
        }
    }
    EXPECT_EQ(kinds,
              (std::vector<std::string>{"init", "connect", "page", "picture", "tap", "tag", "userTag"}));
    EXPECT_EQ(service.request("GET", "/console/api/visitors/1/frame.jpg").body, jpeg(390, 844));
}

TEST(VisitorApi, DeleteEndsTheSessionAndALateRoundDoesNotReviveIt) {
    Service service;
    service.startSession();
    EXPECT_EQ(service.request("DELETE", Service::kStream, {}, {{"X-QD-SSID", "S"}}).status, 200U);
    EXPECT_EQ(service.post(oneOfEach()).status, 200U);
    EXPECT_EQ(service.visitor()["state"], "ended");
    EXPECT_EQ(service.visitor()["counters"]["pages"], 1);
    EXPECT_EQ(service.request("POST", "/console/api/visitors/1/messages", "{}").status, 409U);
}

TEST(VisitorApi, SessionHeaderIsCompared) {
    Service service;
    service.startSession();
    for (int i = 0; i < 5; ++i)
        service.request("POST", Service::kStream, {}, {{"X-QD-SSID", "OTHER"}});
    EXPECT_EQ(service.timeline("warning"),
              std::vector<std::string>{"Header X-QD-SSID is \"OTHER\", not the session id"});
    EXPECT_EQ(service.visitor()["counters"]["warnings"], 5);
}

TEST(VisitorApi, PageNamesArriveEncodedOrNot) {
    Service service;
    const std::string raw =
        "GET /api/ix/m?id=I&sId=S&tId=T&vId=V&url=My pag\xC3\xA9 100%&fsTy=l HTTP/1.1\r\nHost: x\r\n\r\n";
    const std::string health = "GET /api/ic/h HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n";
    const std::string replies = service.exchange(raw + health);
    EXPECT_EQ(replies.find("HTTP/1.1 200"), 0U);
    EXPECT_NE(replies.find("HTTP/1.1 200", 1), std::string::npos)
        << "the pipelined request has its reply, too";
    EXPECT_EQ(service.visitor()["page"], "My pag\xC3\xA9 100%");
    service.request("GET", "/api/ix/m?sId=S&tId=T&url=%C3%9Cbersicht%20A+B");
    EXPECT_EQ(service.visitor()["page"],
              "\xC3\x9C"
              "bersicht A+B");
}

TEST(VisitorApi, TextsHealthAndActivity) {
    Service service;
    const json english = service.request("GET", "/api/in/i18n?tId=T&lang=fr").json();
    const json german = service.request("GET", "/api/in/i18n?tId=T&lang=de-AT").json();
    for (const char* key : {"ui.mobile.confirm.title", "ui.mobile.confirm.message", "ui.confirm.accept",
                            "ui.confirm.decline", "ui.mobile.connecting", "ui.mobile.error"}) {
        ASSERT_TRUE(english[key].is_string()) << key;
        ASSERT_TRUE(german[key].is_string()) << key;
        EXPECT_NE(english[key], german[key]);
    }
    EXPECT_EQ(service.request("GET", "/api/ic/h").status, 200U);
    service.startSession();
    const char* const record = R"({"c":"c","t":"cs","m":{"tId":"T","vId":"V","sId":"S"}})";
    EXPECT_EQ(service.request("POST", "/api/in/io/l", record).status, 200U);
    EXPECT_EQ(service.timeline("activity"), std::vector<std::string>{"Co-browsing started"});
}

}  // namespace
}  // namespace merovanta::devservice::test
