#include <gtest/gtest.h>

#include <set>

#include "Controls.h"
#include "SocketClient.h"

namespace merovanta::devservice::test {
namespace {

using nlohmann::json;
using std::chrono::seconds;

constexpr Moment kStart{std::chrono::hours(500'000)};

TEST(Controls, PassToWhoAsksAndAreFreeWhenTheirHolderIsAway) {
    int changes = 0;
    Controls controls([&] { ++changes; });
    std::set<std::string> watching = {"ada", "bo"};
    const auto watches = [&](const std::string& agent, std::uint32_t) { return watching.contains(agent); };
    EXPECT_TRUE(controls.claim(1, "ada", kStart));
    EXPECT_FALSE(controls.claim(1, "bo", kStart));
    EXPECT_TRUE(controls.claim(2, "bo", kStart)) << "another visitor";

    controls.ask(1, "bo", kStart);
    controls.answer(1, "bo", true, kStart);
    EXPECT_EQ(controls.holder(1), "ada") << "who asks cannot answer";
    controls.answer(1, "ada", false, kStart);
    EXPECT_EQ(controls.toJson()["1"], (json{{"holder", "ada"}, {"asker", nullptr}, {"askedAt", nullptr}}));
    controls.ask(1, "bo", kStart);
    controls.answer(1, "ada", true, kStart);
    EXPECT_EQ(controls.holder(1), "bo");

    controls.ask(1, "ada", kStart);
    controls.expire(kStart + Controls::kAnswerTime, watches);
    EXPECT_EQ(controls.holder(1), "bo");
    controls.expire(kStart + Controls::kAnswerTime + seconds(1), watches);
    EXPECT_EQ(controls.holder(1), "ada") << "no answer";

    controls.ask(1, "bo", kStart + seconds(30));
    watching = {"ada"};
    controls.expire(kStart + seconds(60), watches);
    EXPECT_EQ(controls.holder(1), "ada") << "who asked has gone";
    watching.clear();
    controls.expire(kStart + seconds(60) + Controls::kAwayTime, watches);
    EXPECT_EQ(controls.holder(1), "ada") << "a page that is loaded anew";
    controls.expire(kStart + seconds(61) + Controls::kAwayTime, watches);
    EXPECT_EQ(controls.holder(1), "");
    const int before = changes;
    controls.expire(kStart + seconds(90), watches);
    controls.forget(7);
    EXPECT_EQ(changes, before);
}

/// What a browser sends after it has opened the console.
Service::Headers browser(Service& service) {
    const std::string cookie = service.request("GET", "/").headers.at("Set-Cookie");
    return {{"Cookie", cookie.substr(0, cookie.find(';'))}};
}

TEST(Agents, OneActsAtATimeAndWhatEachDoesBearsItsName) {
    Service service;
    service.startSession();
    const auto ada = browser(service), bo = browser(service);
    const auto rename = [&](const std::string& name) {
        return service.request("PUT", "/console/api/agent", json{{"name", name}}.dump(), ada).status;
    };
    for (const std::string& bad :
         {std::string(), std::string("  "), std::string("a\nb"), std::string(61, 'a')})
        EXPECT_EQ(rename(bad), 400U) << bad;
    EXPECT_EQ(rename("Ada"), 200U);
    EXPECT_EQ(service.request("GET", "/console/api/agent", {}, ada).json()["name"], "Ada");
    EXPECT_EQ(service.request("GET", "/console/api/agent").status, 409U) << "a program";

    const std::string messages = "/console/api/visitors/1/messages", tap = R"({"x":1,"y":2})";
    EXPECT_EQ(service.request("POST", messages, tap, ada).status, 202U);
    const Reply refused = service.request("POST", messages, tap, bo);
    EXPECT_EQ(refused.status, 423U);
    EXPECT_EQ(refused.json()["error"], "Ada acts for this visitor");
    EXPECT_EQ(service.request("POST", messages, tap).status, 202U);
    EXPECT_EQ(service.request("POST", messages + "?again=true", tap, ada).status, 202U);
    const json entries = service.request("GET", "/console/api/visitors/1/timeline").json();
    std::vector<json> names;
    for (const auto& entry : entries)
        if (entry["kind"] == "agent")
            names.push_back(entry["detail"]["agent"].is_null() ? json() : entry["detail"]["agent"]["name"]);
    EXPECT_EQ(names, (std::vector<json>{"Ada", nullptr}));

    const std::string control = "/console/api/visitors/1/control";
    EXPECT_EQ(service.request("POST", control, R"({"do":"steal"})", bo).status, 400U);
    EXPECT_EQ(service.request("POST", control, R"({"do":"ask"})").status, 409U);
    EXPECT_TRUE(service.request("POST", control, R"({"do":"ask"})", bo).json()["1"]["asker"].is_string());
    service.request("POST", control, R"({"do":"give"})", ada);
    EXPECT_EQ(service.request("POST", messages, tap, bo).status, 202U);
}

TEST(Agents, PagesAreToldWhoWatchesWhom) {
    Service service;
    service.startSession();
    const auto ada = browser(service);
    SocketClient page(service, "/console/ws", ada);
    page.send(R"({"type":"watch","visitor":"1"})");
    const auto isAgents = [](const json& message) {
        return message["type"] == "agents" && !message["agents"].empty() &&
               !message["agents"][0]["watching"].empty();
    };
    const json told = page.next(isAgents);
    EXPECT_EQ(told["agents"][0]["watching"], json::array({"1"}));
    EXPECT_EQ(told["agents"][0]["id"], told["you"]);
    EXPECT_EQ(ada.at("Cookie").find(told["you"].get<std::string>()), std::string::npos)
        << "an id is no cookie";
    SocketClient other(service, "/console/ws", browser(service));
    page.disconnect();
    const json left = other.next(
        [](const json& message) { return message["type"] == "agents" && message["agents"].size() == 1; });
    EXPECT_EQ(left["agents"][0]["id"], left["you"]);
}

}  // namespace
}  // namespace merovanta::devservice::test
