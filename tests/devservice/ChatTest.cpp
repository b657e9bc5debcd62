#include <gtest/gtest.h>

#include <vector>

#include "ContactRegistry.h"
#include "DocumentStore.h"
#include "SocketClient.h"

namespace merovanta::devservice::test {
namespace {

using nlohmann::json;
using std::chrono::seconds;

constexpr Moment kStart{seconds(1'700'000'000)};
constexpr const char* kContacts = "/console/api/contacts";

/// A visitor's chat page.
class Page : public SocketClient {
 public:
    Page(Service& service, const std::string& visitor, const Service::Headers& headers = {})
        : SocketClient(service, "/api/in/wc/ws?tId=T&vId=" + visitor, headers) {}

    void write(const json& text, const std::string& key) {
        send(json{{"type", "message"}, {"text", text}, {"key", key}}.dump());
    }

    /// The texts of the next messages; of all there are, on a page that was just opened.
    std::vector<std::string> texts() {
        const json news = next([](const json& message) { return message["type"] == "messages"; });
        std::vector<std::string> result;
        for (const json& message : news["messages"])
            result.push_back(message["text"]);
        return result;
    }
};

using Texts = std::vector<std::string>;

json contact(Service& service, const std::string& visitorId) {
    for (const json& each : service.request("GET", kContacts).json()) {
        if (each["visitorId"] == visitorId) return each;
    }
    return {};
}

std::string at(const json& contact, const std::string& what) {
    return std::string(kContacts) + "/" + contact["id"].get<std::string>() + "/" + what;
}

TEST(Chat, BothSidesWriteAndOnlyTheSameVisitorSeesItAgain) {
    Service service;
    Page page(service, "V");
    EXPECT_EQ(page.texts(), Texts{});
    page.write("Hello", "k1");
    EXPECT_EQ(page.texts(), Texts{"Hello"});
    page.write("Hello", "k1");
    const json known = contact(service, "V");
    EXPECT_EQ(known["unread"], 1) << "a message that was sent again counts once";
    EXPECT_TRUE(known["chatOpen"]);
    EXPECT_EQ(service.request("POST", at(known, "messages"), R"({"text":"Good day"})").status, 201U);
    EXPECT_EQ(page.texts(), Texts{"Good day"});
    EXPECT_EQ(service.request("POST", at(known, "read"), R"({"upTo":1})").json()["unread"], 0);

    EXPECT_EQ(Page(service, "V").texts(), (Texts{"Hello", "Good day"}));
    EXPECT_EQ(Page(service, "OTHER").texts(), Texts{});
    page.disconnect();
    service.request("POST", "/api/in/co?tId=T&vId=PRESENT", R"({"c":["S"],"m":[]})");
    const json present = contact(service, "PRESENT");
    EXPECT_EQ(service.request("POST", at(present, "messages"), R"({"text":"Can we help?"})").status, 201U);
    EXPECT_EQ(Page(service, "PRESENT").texts(), Texts{"Can we help?"});
}

TEST(Chat, DocumentsAreServedUnderTheHeadersAskedFor) {
    struct Case {
        const char *name, *form, *disposition;
    };
    Service service;
    Page page(service, "V");
    EXPECT_EQ(page.texts(), Texts{});
    const std::string share = at(contact(service, "V"), "documents?name=");
    for (const auto& [name, form, disposition] :
         {Case{"A%20b%25c%22%2F%C3%BC.pdf", "encoded", "attachment; filename=\"A b%25c%22%2F%C3%BC.pdf\""},
          Case{"a%22b%25%C3%BC%2F..%2Fx.pdf", "quoted", "attachment; filename=\"a\"b%\xC3\xBC/../x.pdf\""},
          Case{"a.pdf", "unquoted", "attachment; filename=a.pdf"}, Case{"a.pdf", "nameless", "attachment"},
          Case{"a.pdf", "none", nullptr}}) {
        const std::string content = std::string("\0%PDF", 5) + form;
        const Reply reply = service.request("POST", share + name + "&as=" + form, content,
                                            {{"Content-Type", "application/pdf"}});
        ASSERT_EQ(reply.status, 201U) << form;
        const std::string url = reply.json()["document"]["url"];
        const Reply document = service.request("GET", url);
        EXPECT_EQ(document.body, content);
        EXPECT_EQ(document.headers.at("Content-Type"), "application/pdf");
        EXPECT_NE(document.headers.at("Content-Security-Policy").find("sandbox"), std::string::npos);
        const auto header = document.headers.find("Content-Disposition");
        EXPECT_EQ(header == document.headers.end() ? "none" : header->second,
                  disposition == nullptr ? "none" : disposition);
        EXPECT_EQ(page.next([](const json& m) {
            return m["type"] == "messages";
        })["messages"][0]["document"]["url"],
                  url);
    }
    for (const std::string& bad : {std::string("a%0D%0Ab&as=quoted"), std::string("a%00&as=none"),
                                   std::string("a&as=other"), std::string(600, 'a') + "&as=none"}) {
        EXPECT_EQ(service.request("POST", share + bad, "x").status, 400U) << bad;
    }
    EXPECT_EQ(service.request("POST", share + "a&as=none", std::string((16U << 20U) + 1, 'x')).status, 413U);
    EXPECT_EQ(service.request("GET", "/api/in/wc/d/1").status, 404U);
}

TEST(Chat, VisitorsAttachFiles) {
    Service service;
    Page page(service, "V");
    EXPECT_EQ(page.texts(), Texts{});
    const std::string attach = "/api/in/wc/d?tId=T&vId=V&name=a%20b.txt";
    const Service::Headers type{{"Content-Type", "text/plain"}};
    ASSERT_EQ(service.request("POST", attach + "&key=k1", "Dear bank", type).status, 201U);
    const json shown = page.next([](const json& m) { return m["type"] == "messages"; })["messages"][0];
    EXPECT_EQ(shown["from"], "visitor");
    EXPECT_EQ(shown["key"], "k1");
    EXPECT_EQ(shown["document"]["name"], "a b.txt");
    EXPECT_EQ(service.request("GET", shown["document"]["url"]).body, "Dear bank");
    EXPECT_EQ(contact(service, "V")["unread"], 1);
    EXPECT_EQ(service.request("POST", attach, "x", type).status, 400U);
    EXPECT_EQ(service.request("POST", attach + "&key=" + std::string(65, 'k'), "x", type).status, 400U);
    EXPECT_EQ(service.request("POST", "/api/in/wc/d?tId=T&key=k&name=a", "x", type).status, 400U);
    EXPECT_EQ(service.request("POST", attach + "&key=k2", std::string((16U << 20U) + 1, 'x'), type).status,
              413U);
    EXPECT_EQ(service
                  .request("POST", attach + "&key=k3", "x",
                           {{"Content-Type", "text/plain"}, {"Origin", "http://elsewhere.example"}})
                  .status,
              403U);
}

TEST(Chat, HostilePagesHarmNobody) {
    Service service;
    EXPECT_EQ(Page(service, "").status(), 400U);
    EXPECT_EQ(Page(service, "V", {{"Origin", "http://evil.example"}}).status(), 403U);
    EXPECT_EQ(service.request("GET", "/cdn/chat/chat.html", {}, {{"Host", "rebound.example"}}).status, 403U);
    Page page(service, "V");
    EXPECT_EQ(page.texts(), Texts{});
    const auto refused = [&] {
        return page.next([](const json& m) { return m["type"] == "refused"; })["key"].get<std::string>();
    };
    page.send("{");
    page.send("[]");
    page.send(R"({"type":"message","text":"no key"})");
    page.send(R"({"type":"message","text":"x","key":")" + std::string(65, 'k') + "\"}");
    page.write(7, "number");
    EXPECT_EQ(refused(), "number");
    page.write(" \n", "blank");
    EXPECT_EQ(refused(), "blank");
    page.write(std::string(4097, 'x'), "long");
    EXPECT_EQ(refused(), "long");
    page.write(std::string(4096, '\x01'), "full");
    EXPECT_EQ(page.texts(), Texts{std::string(4096, '\x01')});
    for (int i = 0; i < 300; ++i)
        page.write(std::string(2000, 'f'), std::to_string(i));
    const auto isLast = [](const json& m) {
        return m["type"] == "messages" && m["messages"].back()["key"] == "299";
    };
    page.next(isLast);
    EXPECT_LE(Page(service, "V").texts().size(), ChatHistory::kMaxBytes / 2000) << "the history is bounded";
    page.send(std::string(40'000, 'x'));
    EXPECT_EQ(page.closeCode(), 1009U);

    const std::string say = at(contact(service, "V"), "messages");
    for (const char* bad : {"", "[]", "{}", R"({"text":1})", R"({"text":" "})"})
        EXPECT_EQ(service.request("POST", say, bad).status, 400U) << bad;
}

TEST(Chat, ConfigurationHasTextsUnlessToldOtherwise) {
    Service service;
    const json params = service.request("GET", "/api/in/wc/c/support").json()["params"];
    for (const char* key : {"color", "hint", "title", "message"})
        EXPECT_TRUE(params[key].is_string()) << key;
    EXPECT_TRUE(service.request("GET", "/api/in/wc/c/x%2Fy").json()["params"]["title"].is_string());
    EXPECT_EQ(service.request("GET", "/api/in/wc/c/empty").body, "{}");
    ASSERT_EQ(service
                  .request("PUT", "/console/api/faults",
                           R"({"wc/c":{"kind":"garbage"},"chat":{"kind":"status","value":400}})")
                  .status,
              200U);
    EXPECT_TRUE(service.request("GET", "/api/in/wc/c/support").json().is_discarded());
    EXPECT_EQ(service.request("GET", "/cdn/chat/chat.html").status, 400U);
}

TEST(Identity, IsKeptUnderTheVisitorAndTellsWhoGoesOnAsWhom) {
    Service service;
    const auto tag = [&](const std::string& visitor, const std::string& body) {
        return service
            .request("POST", "/rest/v1/customerstatus/tag/byVisitor/" + visitor + "?tId=T", body,
                     {{"X-QD-SSID", "S"}})
            .status;
    };
    service.startSession();
    EXPECT_EQ(tag("a%2Fb", R"({"id":"a/b","firstname":"Ada","lastname":null,"tags":["vip"],"other":1})"),
              200U);
    const json ada = contact(service, "a/b");
    EXPECT_EQ(ada["identity"], json::parse(R"({"id":"a/b","firstname":"Ada","tags":["vip"]})"));
    EXPECT_EQ(contact(service, "V")["continuedAs"], ada["id"]) << "known by the session";
    EXPECT_EQ(tag("V", "{}"), 200U);
    EXPECT_TRUE(contact(service, "V")["continuedAs"].is_null()) << "and back again";
    EXPECT_EQ(contact(service, "a/b")["continuedAs"], contact(service, "V")["id"]);

    const auto before = service.request("GET", kContacts).json().size();
    EXPECT_EQ(tag("", "{}"), 200U);
    for (const char* bad : {"", "[]", R"({"id":1})", R"({"tags":"vip"})", R"({"tags":[1]})"})
        EXPECT_EQ(tag("NEW", bad), 400U) << bad;
    EXPECT_EQ(service.request("GET", kContacts).json().size(), before);
}

TEST(ContactRegistry, IsBoundedAndKeepsThoseWhoChatLongest) {
    ContactRegistry registry([](const Contact&) {});
    registry.pageOpened(registry.obtain("T", "open", kStart));
    registry.addMessage(registry.obtain("T", "chatted", kStart), {.text = "x", .key = {}, .document = {}});
    for (std::size_t i = 0; i < ContactRegistry::kCapacity; ++i)
        registry.obtain("T", std::to_string(i), kStart + seconds(static_cast<int>(i) + 1));
    EXPECT_EQ(registry.toJson().size(), ContactRegistry::kCapacity);
    EXPECT_NE(registry.find("1"), nullptr);
    EXPECT_NE(registry.find("2"), nullptr);
    EXPECT_EQ(registry.find("3"), nullptr);
}

TEST(DocumentStore, IsBoundedByNumberAndBytes) {
    DocumentStore store;
    const std::string first =
        store.add({.name = "first", .contentType = {}, .contentDisposition = {}, .content = "x"});
    ASSERT_NE(store.find(first), nullptr);
    std::string last;
    for (int i = 0; i < 4; ++i) {
        last = store.add({.name = {},
                          .contentType = {},
                          .contentDisposition = {},
                          .content = std::string(SharedDocument::kMaxBytes, 'x')});
    }
    EXPECT_EQ(store.find(first), nullptr);
    EXPECT_NE(store.find(last), nullptr);
}

}  // namespace
}  // namespace merovanta::devservice::test
