#include <gtest/gtest.h>

#include "PresenceRegistry.h"
#include "Service.h"

namespace merovanta::devservice::test {
namespace {

using nlohmann::json;
using std::chrono::seconds;

constexpr Moment kStart{seconds(1'700'000'000)};
constexpr const char* kPoll = "/api/in/co?tId=T&vId=V&sId=S&cId=";
constexpr const char* kPresent = "/console/api/present";
constexpr const char* kListening = R"({"c":["SCB"],"m":[]})";

TEST(Channels, PresentVisitorIsInvitedOnceAndItsSessionTellsSo) {
    Service service;
    const std::string status =
        R"({"c":["S","SCB"],"m":[{"c":"S","p":"{\"u\":\"HomePage\",\"t\":\"CONFERENCE\",)"
        R"(\"dT\":\"MOBILE\",\"cId\":\"c7\",\"sId\":\"S\"}"}],)"
        R"("ad":"k=v&joinedTimestamp=1700000000123"})";
    EXPECT_EQ(service.request("POST", kPoll, status).body, "[]");
    EXPECT_EQ(service.request("POST", kPoll, R"({"c":["S"],"m":[]})").body, "[]");
    const json present = service.request("GET", kPresent).json();
    ASSERT_EQ(present.size(), 1U);
    EXPECT_EQ(present[0]["page"], "HomePage");
    EXPECT_EQ(present[0]["customerId"], "c7");
    EXPECT_EQ(present[0]["joinedAt"], 1'700'000'000'123);
    EXPECT_EQ(service.request("GET", "/console/api/visitors").body, "[]");

    const std::string invite = std::string(kPresent) + "/1/invitation";
    EXPECT_EQ(service.request("POST", invite).status, 409U) << "it does not listen at present";
    service.request("POST", kPoll, kListening);
    EXPECT_EQ(service.request("POST", invite).status, 202U);
    EXPECT_EQ(service.request("POST", invite).status, 202U);
    EXPECT_EQ(service.request("POST", "/api/in/co?tId=T&vId=OTHER", kListening).body, "[]");
    EXPECT_EQ(service.request("POST", kPoll, R"({"c":["S"],"m":[]})").body, "[]");
    EXPECT_EQ(service.request("POST", kPoll, kListening).json(), json::parse(R"([{"c":"SCB","p":"{}"}])"));
    EXPECT_EQ(service.request("POST", kPoll, kListening).body, "[]");
    service.startSession();
    service.startSession();
    EXPECT_EQ(service.timeline("agent"), std::vector<std::string>{"Invited to co-browse"});
}

TEST(Channels, HostilePollsHarmNobody) {
    Service service;
    const std::string nest(100'000, '[');
    for (const std::string& bad : {std::string(), std::string("[]"), std::string(R"({"c":["SCB"]})"),
                                   std::string(R"({"c":[1],"m":[]})"), std::string(R"({"c":"SCB","m":[]})"),
                                   R"({"m":[],"c":)" + nest + std::string(nest.size(), ']') + "}"}) {
        EXPECT_EQ(service.request("POST", kPoll, bad).status, 400U) << bad.substr(0, 40);
    }
    EXPECT_EQ(service.request("POST", "/api/in/co?tId=T", kListening).body, "[]");
    EXPECT_EQ(service.request("GET", kPresent).body, "[]");
    const std::string junk = R"({"c":["?","SCB"],"m":[1,{"c":"S"},{"c":"S","p":"{"},{"c":"S","p":"[]"}],)"
                             R"("ad":"joinedTimestamp=&=&&joinedTimestamp=9x"})";
    EXPECT_EQ(service.request("POST", kPoll, junk).body, "[]");
    EXPECT_TRUE(service.request("GET", kPresent).json()[0]["joinedAt"].is_null());
}

TEST(PresenceRegistry, IsBoundedAndForgetsWhoStopsPolling) {
    int changes = 0;
    PresenceRegistry registry([&] { ++changes; });
    const ChannelPoll listening{{"SCB"}, std::nullopt};
    for (std::size_t i = 0; i <= PresenceRegistry::kCapacity; ++i) {
        registry.poll("T", "V" + std::to_string(i), listening, kStart + seconds(static_cast<int>(i) / 10));
    }
    EXPECT_EQ(registry.toJson().size(), PresenceRegistry::kCapacity);
    EXPECT_EQ(registry.find("1"), nullptr) << "the longest silent makes room";
    Presence& last = *registry.find(std::to_string(PresenceRegistry::kCapacity + 1));
    const int before = changes;
    const Moment later = kStart + PresenceRegistry::kTimeout + seconds(6);
    registry.poll(last.tenantId, last.visitorId, listening, later);
    EXPECT_EQ(changes, before);
    registry.invite(last, {"a1", "Ada"}, later);
    registry.expire(later + seconds(1));
    ASSERT_EQ(registry.toJson().size(), 1U);
    EXPECT_FALSE(registry.takeDelivered("T", last.visitorId, later)) << "nothing has been delivered yet";
    registry.poll("T", last.visitorId, listening, later + seconds(2));
    EXPECT_FALSE(
        registry.takeDelivered("T", last.visitorId, later + PresenceRegistry::kInvitationHolds + seconds(3)));
}

TEST(AgentMessages, RideOnTheNextReplyInABoundedQueue) {
    Service service;
    service.startSession();
    const std::string messages = "/console/api/visitors/1/messages";
    const auto drawing = [](std::size_t bytes) {
        return json{{"d", {{"u", "data:image/png;base64," + std::string(bytes, 'A')}}}}.dump();
    };
    const std::string large = drawing(3'900'000);
    EXPECT_EQ(service.request("POST", messages, drawing(4U << 20U)).status, 413U);
    EXPECT_EQ(service.request("POST", messages, large).status, 202U);
    EXPECT_EQ(service.request("POST", messages, large).status, 202U);
    EXPECT_EQ(service.request("POST", messages, large).status, 429U) << "the queue is bounded by bytes";
    EXPECT_EQ(service.timeline("agent").at(0), R"({"d":{"u":"3900022 bytes"}})");
    const json reply = json::parse(service.post(ProtoMessageList()).json()[0].get<std::string>());
    ASSERT_EQ(reply.size(), 2U);
    EXPECT_EQ(reply[1], json::parse(large));
    EXPECT_EQ(service.post(ProtoMessageList()).body, "[]");
    for (int i = 0; i < 64; ++i)
        EXPECT_EQ(service.request("POST", messages, "{}").status, 202U);
    EXPECT_EQ(service.request("POST", messages, "{}").status, 429U) << "and by number";

    const std::string nest(100'000, '[');
    EXPECT_EQ(
        service.request("POST", messages, R"({"d":)" + nest + std::string(nest.size(), ']') + "}").status,
        400U);
}

}  // namespace
}  // namespace merovanta::devservice::test
