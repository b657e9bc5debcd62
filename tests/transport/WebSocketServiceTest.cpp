#include <Merovanta/Merovanta.h>
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <QtGui/QGuiApplication>
#include <algorithm>

#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Network/Message/MessageSenderManager.h"
#include "Qt/Quick/PlatformQuick.h"
#include "ServiceProcess.h"
#include "support/LogCapture.h"

namespace merovanta::test {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Clock = EventLoop::Clock;
using Lines = std::vector<std::string>;

constexpr auto longestStall = 50ms;

double inMilliseconds(Clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

long peakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

constexpr auto unknownError = "[WARNING] Connection closed with unknown error";

class WebSocketServiceTest : public ::testing::Test {
 protected:
    ~WebSocketServiceTest() override {
        sender.reset();
        Injection::discard();
        platform::install(nullptr);
    }

    void TearDown() override {
        const auto stall = loop.takeLongestTurn();
        std::printf("Longest stall of the main thread: %.1f ms\n", inMilliseconds(stall));
        EXPECT_LT(stall, longestStall);
    }

    void start() {
        service = std::make_unique<ServiceProcess>(loop);
        platform::install(std::make_shared<quick::PlatformQuick>());
        sender = Injection::resolve<MessageSenderManager>()->webSocketSender;
        loop.takeLongestTurn();
    }

    /// The outcome, once it is known.
    std::string connect() {
        CustomConfiguration custom("tenant", "token");
        custom.setServerUrl("127.0.0.1:" + service->port());
        Merovanta::initConfig(custom);
        config().panoptraConfig->shareId = "12345";
        config().panoptraConfig->storageType = "l";
        const auto before = outcomes.size();
        sender->connect(
            "Page", [this] { outcomes.emplace_back("open"); }, [this] { outcomes.emplace_back("failed"); });
        loop.runUntil([&] { return outcomes.size() > before; });
        return outcomes.empty() ? "" : outcomes.back();
    }

    static ApplicationConfig& config() { return Injection::resolve<ApplicationConfigWrapper>()->config; }

    [[nodiscard]] std::string address() const {
        const VisitConfig& visit = *config().visitConfig;
        return "[DEBUG] Connect to ws://127.0.0.1:" + service->port() +
               "/api/in/imws?tId=tenant&sId=" + *visit.sessionId + "&vId=" + *visit.visitorId +
               "&t=token&id=" + *visit.visitId + "&shrId=12345&vsId=" + *visit.sessionId + "&url=Page&fsTy=l";
    }

    /// The sender's log lines that were not yet taken, without its name.
    Lines takeLines() {
        static const std::string name = " WebSocketMessageSender:";
        Lines lines = log.lines();
        std::erase_if(lines, [](const auto& line) { return line.find("]" + name) == std::string::npos; });
        lines.erase(lines.begin(), lines.begin() + takenLines);
        takenLines += static_cast<std::ptrdiff_t>(lines.size());
        for (auto& line : lines)
            line.erase(line.find(name), name.size());
        return lines;
    }

    /// Lets the agent say this, and waits until it is handled; the time that took.
    Clock::duration converse(json message) {
        auto& isHandled = config().panoptraConfig->increasedPollingFrequency;
        isHandled.reset();
        message["co"] = {{"b", true}};
        const auto begin = Clock::now();
        service->send(message);
        EXPECT_TRUE(loop.runUntil([&] { return isHandled.has_value(); })) << message;
        return Clock::now() - begin;
    }

    /// Closes; two connections tell the service of it, and either may be first.
    void close() {
        sender->close();
        json endings;
        EXPECT_TRUE(loop.runUntil([&] {
            endings = json::array();
            for (const json& entry : service->timeline()) {
                if (entry.at("kind") == "disconnect" || entry.at("kind") == "end")
                    endings.push_back(entry.at("text"));
            }
            return endings.size() == 2;
        }));
        EXPECT_THAT(endings, ::testing::UnorderedElementsAre("", "Code 1000"));
        EXPECT_EQ(service->counters().at("deletes"), 1);
        EXPECT_THAT(takeLines(), IsEmpty());
    }

    EventLoop loop;
    std::unique_ptr<ServiceProcess> service;
    std::shared_ptr<WebSocketMessageSender> sender;
    /// Those that the sender reported.
    std::vector<std::string> outcomes;
    testing::LogCapture log;
    std::ptrdiff_t takenLines = 0;
};

TEST_F(WebSocketServiceTest, CarriesAThousandEventsUpAndAThousandMessagesDown) {
    start();
    ASSERT_EQ(connect(), "open");
    EXPECT_THAT(takeLines(), ElementsAre(address(), "[DEBUG] Connection opened"));

    constexpr int many = 1000;
    Lines sent;
    Lines errors;
    for (int count = 0; count < many; ++count) {
        sent.push_back(std::to_string(count));
        sender->sendTag(sent.back(), 0, [&](const auto& error) {
            if (error) errors.push_back(error->errorDescription());
        });
    }
    EXPECT_TRUE(loop.runUntil([&] { return service->counters().at("tags") >= many; }));
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_EQ(service->recordedTags(), sent);
    EXPECT_EQ(service->counters().at("socketFrames"), many);
    EXPECT_EQ(service->counters().at("warnings"), 0);
    EXPECT_EQ(service->visitors().at(0).at("transport"), "websocket");

    Lines handled;
    std::vector<Clock::duration> times;
    const std::string line = "[DEBUG] BidirectionalMessageHandler: Handle message: BidirectionalMessage(";
    for (int count = 0; count < many; ++count) {
        handled.push_back(line + "bidirectional: true, click: " + std::to_string(count) + ", 2)");
        times.push_back(converse({{"x", count}, {"y", 2}}));
    }
    // As fast as they can be sent.
    service->sendFrame({{"text", R"({"x":3,"y":4})"}, {"count", many}});
    converse(json::object());
    handled.insert(handled.end(), many, line + "click: 3, 4)");
    handled.push_back(line + "bidirectional: true)");
    EXPECT_EQ(log.lines(line), handled);
    std::sort(times.begin(), times.end());
    std::printf("Agent message queued to handled: median %.2f ms, 99 %% %.2f ms, longest %.2f ms\n",
                inMilliseconds(times[many / 2]), inMilliseconds(times[many * 99 / 100]),
                inMilliseconds(times.back()));

    close();
    EXPECT_EQ(service->counters().at("sockets"), 1);
    EXPECT_THAT(outcomes, ElementsAre("open"));
}

TEST_F(WebSocketServiceTest, ComesBackWhenTheServiceDoes) {
    start();
    ASSERT_EQ(connect(), "open");
    takeLines();
    EXPECT_EQ(service->stop(), 0);
    loop.runFor(500ms);
    service->start();
    EXPECT_TRUE(loop.runUntil([&] { return !service->visitors().empty(); }));
    converse(json::object());

    // The first at once, but no more than four a second.
    auto lines = takeLines();
    const auto attempts = std::count(lines.begin(), lines.end(), "[DEBUG] Connect again");
    std::printf("Attempts to connect: %td\n", attempts);
    EXPECT_GE(attempts, 1);
    EXPECT_LE(attempts, 8);
    ASSERT_EQ(lines.back(), "[DEBUG] Connection opened");
    lines.pop_back();
    Lines expected;
    for (auto attempt = attempts; attempt > 0; --attempt)
        expected.insert(expected.end(), {unknownError, "[DEBUG] Connect again"});
    EXPECT_EQ(lines, expected);
    EXPECT_THAT(outcomes, ElementsAre("open"));

    sender->sendTag("back", 0);
    EXPECT_TRUE(loop.runUntil([&] { return service->counters().at("tags") == 1; }));
    EXPECT_THAT(service->recordedTags(), ElementsAre("back"));
}

TEST_F(WebSocketServiceTest, RefusesWhatIsTooLargeBeforeItHasArrived) {
    constexpr auto limit = WebSocket::maximumMessageBytes;
    start();
    ASSERT_EQ(connect(), "open");
    takeLines();
    const auto memory = peakKilobytes();
    int connections = 1;
    for (const auto* frame : {R"({"text":"x"})", R"({"binary":"AA=="})"}) {
        json tooLarge = json::parse(frame);
        tooLarge["repeat"] = limit + 1;
        service->sendFrame(tooLarge);
        ++connections;
        ASSERT_TRUE(loop.runUntil([&] { return service->counters().at("sockets") == connections; })) << frame;
        converse(json::object());
        EXPECT_THAT(takeLines(), ElementsAre("[WARNING] Connection closed: 1009", "[DEBUG] Connect again",
                                             "[DEBUG] Connection opened"));
    }
    EXPECT_LT(peakKilobytes() - memory, static_cast<long>(limit / 1024));
}

}  // namespace
}  // namespace merovanta::test

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
