#include <gmock/gmock.h>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class BackgroundTest : public LibraryTest {
 protected:
    void stayInBackground(std::chrono::nanoseconds duration) {
        platform->app.resignActive();
        advance(duration);
        platform->app.becomeActive();
    }

    [[nodiscard]] std::size_t count(const std::string& method, const std::string& path) const {
        return service.requests(method, path).size();
    }

    [[nodiscard]] std::vector<HttpRequest> inits() const { return service.requests("POST", "api/in/im/c"); }
};

TEST_F(BackgroundTest, AShortAbsenceChangesNothing) {
    startSession();
    const VisitConfig visit = *config().visitConfig;
    for (int i = 0; i < 3; ++i) {
        stayInBackground(5s - 1ns);
        advance(10s);
    }
    EXPECT_EQ(config().visitConfig->visitId, visit.visitId);
    EXPECT_EQ(config().visitConfig->sessionId, visit.sessionId);
    EXPECT_THAT(inits(), SizeIs(1));
    EXPECT_EQ(count("DELETE", "api/ix/m"), 0);
    EXPECT_THAT(service.screenshots(), SizeIs(1));
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(BackgroundTest, ALongAbsenceClosesTheStreamAndTheReturnOpensANewOne) {
    startSession();
    const VisitConfig visit = *config().visitConfig;
    const auto sender = Injection::resolve<Panoptra>()->messageSender();
    platform->app.resignActive();
    advance(5s);
    EXPECT_EQ(count("DELETE", "api/ix/m"), 1);
    EXPECT_TRUE(Injection::resolve<Panoptra>()->isRunning());
    advance(200ms);
    const auto posts = count("POST", "api/ix/m");
    std::optional<std::string> refusal;
    Merovanta::panoptra().tag("said to nobody", [&](const auto& error) { refusal = error; });
    advance(1h);
    EXPECT_EQ(refusal, "The application is in the background");
    EXPECT_EQ(count("POST", "api/ix/m"), posts);

    service.initReply["fsTy"] = "m";
    platform->app.becomeActive();
    advance(1s);
    EXPECT_NE(config().visitConfig->visitId, visit.visitId);
    EXPECT_NE(config().visitConfig->sessionId, visit.sessionId);
    EXPECT_EQ(config().visitConfig->visitorId, visit.visitorId);
    ASSERT_THAT(inits(), SizeIs(2));
    EXPECT_NE(inits()[1].body.find(R"("init":true)"), std::string::npos);
    EXPECT_NE(inits()[1].body.find(*config().visitConfig->sessionId), std::string::npos);
    EXPECT_EQ(Injection::resolve<Panoptra>()->messageSender(), sender);
    EXPECT_EQ(config().panoptraConfig->storageType, "m");

    // The screen has not changed, yet the new visit begins with its picture.
    EXPECT_THAT(service.screenshots(), SizeIs(2));
    const HttpRequest last = service.requests("POST", "api/ix/m").back();
    EXPECT_NE(last.url.find("?id=" + *config().visitConfig->visitId + "&"), std::string::npos);
    for (const auto& message : service.messages())
        EXPECT_NE(message.tag(), "said to nobody");
    EXPECT_EQ(timers(), timersOfASession);
    const std::vector<std::string> expected{
        "[DEBUG] Panoptra: App goes in background", "[DEBUG] Panoptra: Timeout; Close sender",
        "[DEBUG] Panoptra: Call init sender", "[DEBUG] Panoptra: WebSocket reconnect success"};
    const auto lines = log.lines("[DEBUG] Panoptra: ");
    EXPECT_EQ(std::vector<std::string>(lines.end() - 4, lines.end()), expected);
}

TEST_F(BackgroundTest, AFailedReturnLeavesTheSessionClosedUntilTheNextStart) {
    expectError("[ERROR] Panoptra: Cannot restart session after close: No route to host");
    startSession();
    service.override = [](const HttpRequest& request) -> std::optional<HttpReply> {
        if (FakeService::path(request) != "api/in/im/c") return std::nullopt;
        return HttpSessionInMemory::failure("No route to host");
    };
    stayInBackground(6s);
    advance(10s);
    service.override = {};
    stayInBackground(6s);
    const auto posts = count("POST", "api/ix/m");
    advance(1min);
    EXPECT_EQ(count("POST", "api/ix/m"), posts);
    Injection::resolve<CoBrowsing>()->invited();
    advance(2s);
    const auto invited = count("POST", "api/ix/m");
    EXPECT_GT(invited, posts) << "an agent's invitation replaces it";
    Merovanta::panoptra().stop();
    startSession();
    EXPECT_GT(count("POST", "api/ix/m"), invited);
    EXPECT_EQ(timers(), timersOfASession);
}

TEST_F(BackgroundTest, StopLeavesThePendingCloseAlone) {
    startSession();
    platform->app.resignActive();
    advance(1s);
    Merovanta::panoptra().stop();
    EXPECT_EQ(count("DELETE", "api/ix/m"), 1);
    advance(4s);
    EXPECT_THAT(log.lines("[DEBUG] Panoptra: Timeout; Close sender"), SizeIs(1));
    EXPECT_EQ(count("DELETE", "api/ix/m"), 2);
    advance(1s);
    EXPECT_EQ(timers(), 0);
}

}  // namespace
}  // namespace merovanta::testing
