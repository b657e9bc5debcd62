#include <gmock/gmock.h>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"
#include "General/User/UserUtil.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::SizeIs;

class UserTest : public LibraryTest {
 protected:
    void tag(const ActiveUser& user) {
        Merovanta::user().tag(user, [this](bool isTagged) { answers.push_back(isTagged); });
        advance(1s);
    }

    [[nodiscard]] std::vector<HttpRequest> tags() const {
        std::vector<HttpRequest> found;
        for (const auto& request : platform->httpSession().requests) {
            if (FakeService::path(request).starts_with("rest/v1/customerstatus/tag/byVisitor/"))
                found.push_back(request);
        }
        return found;
    }

    std::vector<bool> answers;
};

TEST_F(UserTest, ATagNamesTheVisitorAndAnUnnamedOneIsNew) {
    const VisitConfig before = *config().visitConfig;
    tag({.id = "4711", .firstname = "Ann", .tags = std::vector<std::string>{"gold"}});
    ASSERT_THAT(tags(), SizeIs(1));
    EXPECT_EQ(tags()[0].url, "https://service.example/rest/v1/customerstatus/tag/byVisitor/4711?tId=tenant");
    EXPECT_EQ(tags()[0].body, R"({"id":"4711","firstname":"Ann","tags":["gold"]})");
    EXPECT_EQ(config().visitConfig->sessionId, before.sessionId);

    tag({.email = "a@b.example"});
    const VisitConfig after = *config().visitConfig;
    EXPECT_NE(after.sessionId, before.sessionId);
    EXPECT_NE(after.visitId, before.visitId);
    EXPECT_NE(after.visitorId, "4711");
    EXPECT_TRUE(tags()[1].url.ends_with("byVisitor/" + *after.visitorId + "?tId=tenant"));
    tag({.id = ".."});
    EXPECT_TRUE(tags()[2].url.ends_with("byVisitor/%2E%2E?tId=tenant"));
    config().visitConfig.reset();
    tag({.id = "4712"});
    EXPECT_TRUE(tags()[3].url.ends_with("byVisitor/?tId=tenant"));
    EXPECT_EQ(answers, std::vector(4, true));
}

TEST_F(UserTest, AFailedTagStandsHereAndIsNotAnswered) {
    service.override = [](const HttpRequest&) { return HttpSessionInMemory::failure("lost"); };
    config().panoptraConfig->optIn = true;
    tag({.id = "4711"});
    service.override = [](const HttpRequest&) { return HttpSessionInMemory::reply(500); };
    tag({.id = "4711"});
    EXPECT_TRUE(answers.empty());
    EXPECT_TRUE(log.contains("[WARNING] User: Cannot send tag: lost"));
    EXPECT_TRUE(log.contains("[WARNING] User: Cannot send tag: HTTP status 500"));
    EXPECT_EQ(config().activeUserTag->id, "4711");
    EXPECT_EQ(config().panoptraConfig->optIn, false);
    std::vector<std::string> failures;
    const auto failure = [&](const std::string& error) { failures.push_back(error); };
    Merovanta::user().tag(
        {.id = "\xff"}, [](bool) { FAIL(); }, failure);
    Merovanta::user().tag(
        {.id = "4711"}, [](bool) { FAIL(); }, failure);
    EXPECT_TRUE(failures.empty()) << "told later, never inside the call";
    advance(1s);
    EXPECT_THAT(failures, ::testing::UnorderedElementsAre(::testing::_, "HTTP status 500"));
}

TEST_F(UserTest, ARestartKeepsTheHostsCallbacksAndWaitsForAStartUnderWay) {
    int closed = 0;
    Merovanta::panoptra().registerCallbacks({}, [&] { ++closed; });
    Merovanta::panoptra().start();
    Merovanta::user().tag({.id = "4711"});
    advance(1s);
    EXPECT_THAT(service.requests("POST", "api/in/im/c"), SizeIs(2));
    EXPECT_NE(service.requests("POST", "api/in/im/c")[1].body.find(R"("vId":"4711")"), std::string::npos);
    EXPECT_EQ(timers(), 4);
    Injection::resolve<Panoptra>()->runStopCallback();
    EXPECT_EQ(closed, 1);

    service.override = [](const HttpRequest& request) -> std::optional<HttpReply> {
        if (FakeService::path(request) != "api/in/im/c") return std::nullopt;
        return HttpSessionInMemory::reply(500);
    };
    tag({.id = "4712"});
    EXPECT_TRUE(log.contains("[WARNING] User: Cannot restart Panoptra"));
    EXPECT_FALSE(Injection::resolve<Panoptra>()->isRunning());
}

/// A part of the host's that must not be touched off the main thread.
struct OfTheHost {
    OfTheHost() = default;
    OfTheHost(const OfTheHost& /*other*/) { check(); }
    OfTheHost& operator=(const OfTheHost&) = delete;
    ~OfTheHost() { check(); }
    static void check() { EXPECT_TRUE(platform::current().mainQueue().isCurrent()); }
};

TEST_F(UserTest, TheHostsCallbackStaysOnTheMainThread) {
    Merovanta::user().tag({.id = "4711"}, [part = OfTheHost()](bool) { OfTheHost::check(); });
    advance(1s);
    service.override = [](const HttpRequest&) { return HttpSessionInMemory::failure("lost"); };
    Merovanta::user().tag({.id = "4711"}, [part = OfTheHost()](bool) { OfTheHost::check(); });
    advance(1s);
}

TEST_F(UserTest, AClearedVisitorComesBackAsAnother) {
    startSession();
    UserUtil::tagUserIfNeeded([](bool) {});
    advance(1s);
    const std::string id = *config().activeUserTag->id;
    Merovanta::user().clear();
    EXPECT_FALSE(Injection::resolve<Panoptra>()->isRunning());
    EXPECT_FALSE(config().activeUserTag.has_value());
    UserUtil::tagUserIfNeeded([this](bool isTagged) { answers.push_back(isTagged); });
    advance(1s);
    EXPECT_NE(config().activeUserTag->id, id);
    UserUtil::tagUserIfNeeded([this](bool isTagged) { answers.push_back(isTagged); });
    EXPECT_EQ(answers, std::vector(2, true));
    EXPECT_THAT(tags(), SizeIs(2));

    // What is answered after the clearing restarts nothing.
    Merovanta::user().tag({.id = "gone"});
    Merovanta::user().clear();
    const auto starts = service.requests("POST", "api/in/im/c").size();
    startSession();
    EXPECT_THAT(service.requests("POST", "api/in/im/c"), SizeIs(starts + 1));
}

}  // namespace
}  // namespace merovanta::testing
