#include <gtest/gtest.h>

#include <chrono>

#include "Service.h"

namespace merovanta::devservice::test {
namespace {

using nlohmann::json;

constexpr const char* kFaults = "/console/api/faults";

// Everything up to the service's closing, and its body.
std::pair<std::string, std::string> get(Service& service, const std::string& path) {
    const std::string all =
        service.exchange("GET " + path + " HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");
    const std::size_t head = all.find("\r\n\r\n");
    return {all.substr(0, head), head == std::string::npos ? "" : all.substr(head + 4)};
}

unsigned put(Service& service, const std::string& faults) {
    return service.request("PUT", kFaults, faults).status;
}

TEST(Faults, EachKindMisbehavesInItsWay) {
    Service service;
    const std::string plain = get(service, "/api/in/i18n").second;
    const auto faulty = [&](const char* fault) {
        EXPECT_EQ(put(service, R"({"i18n":)" + std::string(fault) + "}"), 200U) << fault;
        return get(service, "/api/in/i18n");
    };
    EXPECT_EQ(faulty(R"({"kind":"drop"})").first, "");
    EXPECT_EQ(faulty(R"({"kind":"status","value":418})").first.find("HTTP/1.1 418"), 0U);
    EXPECT_EQ(faulty(R"({"kind":"status","value":204})").second, "");
    EXPECT_NE(faulty(R"({"kind":"empty"})").first.find("Content-Length: 0"), std::string::npos);
    EXPECT_FALSE(json::accept(faulty(R"({"kind":"garbage"})").second));

    const auto [head, half] = faulty(R"({"kind":"truncate"})");
    EXPECT_NE(head.find("Content-Length: " + std::to_string(plain.size())), std::string::npos);
    EXPECT_EQ(half, plain.substr(0, plain.size() / 2));

    const std::string large = faulty(R"({"kind":"large"})").second;
    EXPECT_EQ(large.size(), 17U << 20U);
    EXPECT_EQ(json::parse(large, nullptr, false), json::parse(plain));

    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(faulty(R"({"kind":"delay","value":80})").second, plain);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(80));
}

TEST(Faults, MeetTheirEndpointOnlyAndAsOftenAsAsked) {
    Options options;
    ASSERT_TRUE(options.faults.set("*=status:500"));
    ASSERT_TRUE(options.faults.set("ic/h=status:503,2"));
    ASSERT_TRUE(options.faults.set("ix/m:post=garbage"));
    ASSERT_TRUE(options.faults.set("im/c=empty"));
    ASSERT_TRUE(options.faults.set("ix/m:get=delay:1"));
    Service service(options);
    for (const unsigned status : {503U, 503U, 500U})
        EXPECT_EQ(service.request("GET", "/api/ic/h").status, status);
    EXPECT_EQ(service.request("POST", "/api/in/co").status, 500U);
    service.startSession();
    const Reply reply = service.post(ProtoMessageList());
    EXPECT_EQ(reply.status, 200U);
    EXPECT_TRUE(reply.json().is_discarded());
    EXPECT_EQ(service.visitor()["counters"]["posts"], 1) << "only the reply is at fault";
    EXPECT_EQ(service.request("DELETE", Service::kStream).status, 500U);
    EXPECT_EQ(service.visitor()["state"], "live") << "the request has not been served";
    const std::string upgrade =
        "GET /api/in/imws HTTP/1.1\r\nHost: x\r\nConnection: upgrade\r\nUpgrade: websocket\r\n"
        "Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\nSec-WebSocket-Version: 13\r\n\r\n";
    EXPECT_EQ(service.exchange(upgrade).find("HTTP/1.1 500"), 0U);
    EXPECT_EQ(put(service, R"({"imws":{"kind":"drop"}})"), 200U);
    EXPECT_EQ(service.exchange(upgrade), "");

    EXPECT_EQ(service.request("DELETE", kFaults).status, 200U);
    EXPECT_EQ(service.request("GET", "/api/ic/h").status, 200U);
}

TEST(Faults, AreTakenAsAWholeOrNotAtAll) {
    Service service;
    EXPECT_EQ(put(service, R"({"ic/h":{"kind":"status","count":3}})"), 200U);
    const json before = service.request("GET", kFaults).json();
    EXPECT_EQ(before["ic/h"], json::parse(R"({"kind":"status","value":503,"count":3})"));
    EXPECT_TRUE(before["*"].is_null());
    for (const char* bad :
         {"[]", "{", R"({"ic/h":null,"nowhere":null})", R"({"ic/h":null,"co":{"kind":"boom"}})",
          R"({"ic/h":null,"co":{"kind":"status","value":99}})",
          R"({"ic/h":null,"co":{"kind":"drop","value":1}})",
          R"({"ic/h":null,"co":{"kind":"delay","value":"1"}})",
          R"({"ic/h":null,"co":{"kind":"drop","count":0}})", R"({"ic/h":null,"co":{"value":1}})"}) {
        EXPECT_EQ(put(service, bad), 400U) << bad;
    }
    EXPECT_EQ(service.request("GET", kFaults).json(), before);
    for (const char* bad : {"ic/h", "ic/h=", "nowhere=drop", "ic/h=status:", "ic/h=status:5x", "ic/h=drop,0"})
        EXPECT_FALSE(Faults().set(bad)) << bad;
}

}  // namespace
}  // namespace merovanta::devservice::test
