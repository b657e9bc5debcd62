#include <gmock/gmock.h>

#include <regex>
#include <thread>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/ConstantUtils.h"
#include "General/DebugPrint.h"
#include "General/Log.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Panoptra.h"
#include "General/Panoptra/Util/IdUtils.h"
#include "General/User/User.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

class ConfigurationTest : public LibraryTest {};

TEST_F(ConfigurationTest, WithoutHostsOnlyTenantTokenAndVisitChange) {
    const ApplicationConfig before = config();
    Merovanta::initConfig("other", "secret");
    EXPECT_EQ(config().tenantId, "other");
    EXPECT_EQ(config().token, "secret");
    EXPECT_EQ(config().hostname, before.hostname);
    EXPECT_EQ(config().cdnPath, before.cdnPath);
    EXPECT_EQ(config().visitConfig->sessionId, before.visitConfig->sessionId);
    EXPECT_NE(config().visitConfig->visitId, before.visitConfig->visitId);
    EXPECT_EQ(config().visitConfig->visitorId, platform->app.vendorIdentifier);
}

TEST_F(ConfigurationTest, ServerAndContentHostsAreKeptApartWithTheirAsymmetry) {
    config().cdnPath.reset();
    CustomConfiguration first("tenant", "token");
    first.setServerUrl("one.example");
    Merovanta::initConfig(first);
    EXPECT_EQ(config().hostname, "one.example");
    EXPECT_EQ(config().cdnPath, "one.example");
    EXPECT_EQ(Merovanta::configuration().cdnPath(), "https://one.example/cdn");

    CustomConfiguration second("tenant", "token");
    second.setServerUrl("two.example");
    Merovanta::initConfig(second);
    EXPECT_EQ(config().hostname, "two.example");
    EXPECT_EQ(config().cdnPath, "one.example");
    EXPECT_EQ(Merovanta::configuration().server(), "two.example");

    second.setCdnUrl("content.two.example");
    Merovanta::initConfig(second);
    EXPECT_EQ(config().cdnPath, "https://content.two.example/cdn");
    EXPECT_EQ(Merovanta::configuration().cdnPath(), "https://content.two.example/cdn");

    Merovanta::configuration().setCdnServer("third.example");
    EXPECT_EQ(Merovanta::configuration().server(), "two.example");
    Merovanta::configuration().setServer("four.example");
    EXPECT_EQ(Merovanta::configuration().cdnPath(), "https://four.example/cdn");
    EXPECT_EQ(config().hostname, "two.example");
}

template <typename... Components>
std::vector<std::shared_ptr<void> (*)()> resolversOf() {
    return {[]() -> std::shared_ptr<void> { return Injection::resolve<Components>(); }...};
}

TEST_F(ConfigurationTest, ComponentsAreMadeOnceInAnyOrderFromAnyThread) {
    auto resolvers =
        resolversOf<ApplicationConfigWrapper, MerovantaAPI, WebChat, Panoptra, InitSender,
                    MessageSenderManager, XhrMessageSender, WebSocketMessageSender, ViewMonitor, PingSender,
                    BidirectionalMessageParser, BidirectionalMessageHandler, HealthCheck, HttpUtil,
                    MonitoringSender, NetworkManager, CoBrowsing, UIStrings, User, Communication>();
    ASSERT_EQ(resolvers.size(), 20);
    for (std::size_t first = 0; first < resolvers.size(); ++first) {
        Injection::discard();
        std::rotate(resolvers.begin(), resolvers.begin() + 1, resolvers.end());
        std::array<std::vector<std::shared_ptr<void>>, 2> resolved;
        const auto resolveAll = [&resolvers](auto begin, auto end, auto& made) {
            std::transform(begin, end, std::back_inserter(made),
                           [](const auto& resolve) { return resolve(); });
        };
        std::thread forwards([&] { resolveAll(resolvers.begin(), resolvers.end(), resolved[0]); });
        std::thread backwards([&] { resolveAll(resolvers.rbegin(), resolvers.rend(), resolved[1]); });
        forwards.join();
        backwards.join();
        std::reverse(resolved[1].begin(), resolved[1].end());
        EXPECT_EQ(resolved[0], resolved[1]);
        EXPECT_THAT(resolved[0], ::testing::Each(::testing::NotNull()));
    }
    EXPECT_EQ(Injection::resolve<MessageSenderManager>()->xhrSender, Injection::resolve<XhrMessageSender>());
    EXPECT_FALSE(Injection::resolve<int>());
    EXPECT_EQ(&Merovanta::panoptra(), &Merovanta::panoptra());
    EXPECT_EQ(&Merovanta::webChat(), &Merovanta::webChat());
}

TEST_F(ConfigurationTest, ConstantsComeFromTheFirstBundleThatHasTheList) {
    EXPECT_EQ(ConstantUtils::value("WebSocketProtocol"), "wss");
    EXPECT_FALSE(ConstantUtils::value("Nothing"));

    auto& lists = platform->bundle().lists;
    lists.clear();
    ConstantUtils::forget();
    EXPECT_FALSE(ConstantUtils::value("Hostname"));
    lists[{"com.merovanta.panoptra.PanoptraConference", "Config"}] = {{"Hostname", "late.example"},
                                                                      {"HttpProtocol", 7}};
    EXPECT_EQ(ConstantUtils::value("Hostname"), "late.example");
    EXPECT_FALSE(ConstantUtils::value("HttpProtocol"));
    lists.clear();
    EXPECT_EQ(ConstantUtils::value("Hostname"), "late.example");
}

TEST_F(ConfigurationTest, WithoutAPlatformEveryCallSaysSoAndDoesNothing) {
    inmemory::PlatformInMemory::uninstall();
    expectError("[ERROR] Merovanta: Cannot find instance of Application Config");
    expectError("[ERROR] MerovantaPanoptra: Cannot find instance of Panoptra", 5);
    expectError("[ERROR] MerovantaPanoptra: Cannot find instance of ApplicationConfigWrapper");
    expectError("[ERROR] MerovantaUser: Cannot find instance of User", 3);
    expectError("[ERROR] MerovantaWebChat: Cannot find instance of WebChat");
    Merovanta::initConfig("tenant", "token");
    Merovanta::user().tag({});
    Merovanta::user().tag({}, [](bool) { FAIL(); });
    Merovanta::user().clear();
    Merovanta::webChat().open("support");
    Merovanta::panoptra().start();
    Merovanta::panoptra().start("tenant", "token");
    Merovanta::panoptra().stop();
    Merovanta::panoptra().tag("x");
    EXPECT_FALSE(Merovanta::panoptra().connected());
    EXPECT_EQ(Merovanta::panoptra().shareId(), "");
}

TEST_F(ConfigurationTest, IdentifiersHaveTheirForms) {
    const std::regex uuid("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(std::regex_match(IdUtils::newUuid(), uuid));
        const int code = std::stoi(IdUtils::newShareCode());
        EXPECT_TRUE(code >= 10000 && code <= 99999);
    }
    EXPECT_NE(IdUtils::newUuid(), IdUtils::newUuid());
}

TEST_F(ConfigurationTest, TheCustomerIdIsMadeOnceAndStored) {
    platform->userDefaults().set("cId", "");
    const std::string id = IdUtils::customerId();
    EXPECT_TRUE(std::regex_match(id, std::regex("[0-9a-f]{32}")));
    EXPECT_EQ(IdUtils::customerId(), id);
    EXPECT_EQ(platform->userDefaults().synchronized().at("cId"), id);
    platform->userDefaults().remove("cId");
    EXPECT_EQ(platform->userDefaults().string("cId"), "");
    EXPECT_NE(IdUtils::customerId(), id);
}

TEST_F(ConfigurationTest, ALogLineNamesItsFileAndStaysOneLine) {
    expectError("[ERROR] ConfigurationTest: two [ERROR] Forged: lines");
    Log::error("two\n[ERROR] Forged: lines");
}

TEST_F(ConfigurationTest, TakesEffectOnceThereIsAnApplication) {
    const auto early = [this] {
        inmemory::PlatformInMemory::uninstall();
        platform::install(platform);
        platform->app.isMade = false;
        platform->app.vendorIdentifier.reset();
        Merovanta::initConfig("early", "token");
        Merovanta::panoptra().start();
        expectError(
            "[ERROR] MerovantaPanoptra: Error when starting Panoptra: There is no application object yet");
        platform->app.isMade = true;
        platform->app.vendorIdentifier = "DEVICE";
    };
    expectError(
        "[ERROR] Merovanta: initConfig was called before the application object was made; it takes effect "
        "afterwards",
        2);
    early();
    advance(4s);
    EXPECT_EQ(config().visitConfig->visitorId, "DEVICE");
    EXPECT_THAT(service.requests("POST", "api/in/co").back().url,
                ::testing::HasSubstr("tId=early&vId=DEVICE"));

    // A host that starts a session at once has the visit that the start gave it.
    early();
    Merovanta::panoptra().start();
    const auto visit = config().visitConfig->visitId;
    advance(4s);
    EXPECT_TRUE(visit);
    EXPECT_EQ(config().visitConfig->visitId, visit);
    EXPECT_EQ(service.requests("POST", "api/in/im/c").size(), 1);
}

TEST_F(ConfigurationTest, TheHostsSinkGetsEveryLineAndSilencesStandardOutputIfItLikes) {
    struct SinkGuard {
        ~SinkGuard() { Merovanta::log().setSink({}, MerovantaLog::StandardOutput::goesOn); }
    } guard;
    std::vector<std::string> lines;
    const auto sink = [&](const LogLine& line) {
        lines.push_back(std::to_string(static_cast<int>(line.level)) + " " + std::string(line.source) + " " +
                        std::string(line.text));
        EXPECT_LT(std::chrono::abs(std::chrono::system_clock::now() - line.time), 1min);
        Log::warning("about " + lines.back());
    };
    Merovanta::log().setSink(sink, MerovantaLog::StandardOutput::goesOn);
    expectError("[ERROR] ConfigurationTest: both");
    Log::error("both");
    EXPECT_TRUE(log.contains("[WARNING] ConfigurationTest: about 2 ConfigurationTest both"));
    Merovanta::log().setSink(sink, MerovantaLog::StandardOutput::isSilent);
    Log::error("quiet\nnow");
    debugPrint("page");
    std::thread([] { Log::debug("from elsewhere"); }).join();
    EXPECT_THAT(lines,
                ::testing::ElementsAre("2 ConfigurationTest both", "2 ConfigurationTest quiet now",
                                       "0 ConfigurationTest \"page\"", "0 ConfigurationTest from elsewhere"));
    EXPECT_FALSE(log.contains("\"page\""));
    Merovanta::log().setSink(
        [held = std::make_shared<int>(7)](const LogLine&) {
            Merovanta::log().setSink({}, MerovantaLog::StandardOutput::isSilent);
            EXPECT_EQ(*held, 7) << "replaced inside its own call";
        },
        MerovantaLog::StandardOutput::isSilent);
    Log::debug("the last");
    Log::debug("back");
    EXPECT_TRUE(log.contains("[DEBUG] ConfigurationTest: back")) << "without a sink there is standard output";
}

TEST_F(ConfigurationTest, AHostThatIsNoneIsSaidWithTheRightForm) {
    CustomConfiguration custom("tenant", "token");
    custom.setServerUrl("https://service.example:8443/api?x#y");
    custom.setCdnUrl(" content.example");
    Merovanta::initConfig(custom);
    Merovanta::configuration().setServer("service.example:8443");
    Merovanta::configuration().setCdnServer("file:///");
    EXPECT_THAT(log.lines("[WARNING] HostName: "),
                ::testing::ElementsAre("[WARNING] HostName: \"https://service.example:8443/api?x#y\" is no "
                                       "host name: use \"service.example:8443\"",
                                       "[WARNING] HostName: \" content.example\" is no host name: use "
                                       "\"content.example\"",
                                       "[WARNING] HostName: \"file:///\" is no host name"));
}

TEST_F(ConfigurationTest, HostsSetBeforeThePlatformGetItsProtocol) {
    inmemory::PlatformInMemory::uninstall();
    Merovanta::configuration().setServer("early.example");
    platform = inmemory::PlatformInMemory::installNew();
    EXPECT_EQ(Merovanta::configuration().cdnPath(), "https://early.example/cdn");
}

TEST_F(ConfigurationTest, ADeviceWithoutIdentifierIsFatal) {
    platform->app.vendorIdentifier.reset();
    EXPECT_DEATH(Merovanta::initConfig("tenant", "token"), "The device has no vendor identifier");
}

}  // namespace
}  // namespace merovanta::testing
