#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <span>

#include "General/Panoptra/Communication/ClientRegistry.h"
#include "General/Panoptra/Injection.h"
#include "support/LibraryTest.h"

namespace merovanta::testing {
namespace {

using inmemory::HttpSessionInMemory;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class WebChatTest : public LibraryTest {
 protected:
    WebChatTest() {
        service.override = [this](const HttpRequest& request) -> std::optional<HttpReply> {
            if (FakeService::path(request) != "api/in/wc/c/support") return std::nullopt;
            return configuration;
        };
    }

    void open() {
        Merovanta::webChat().open("support");
        advance(1s);
    }

    [[nodiscard]] std::size_t fetches() const {
        return service.requests("GET", "api/in/wc/c/support").size();
    }

    [[nodiscard]] bool isOpen() const {
        return !screen->subviews.empty() && screen->subviews.back()->classNames.front() == "ChatView";
    }

    [[nodiscard]] inmemory::WebViewsInMemory::Shown& page() const { return *platform->webViews()->shown(); }

    /// Hands a document over as a script of this sender does; the names of the files there are afterwards.
    std::vector<std::string> openDocument(
        const std::string& body, ScriptMessage::Sender sender = ScriptMessage::Sender::evaluatedScript) {
        page().delegate.didReceiveScriptMessage({"openDocument", body, sender});
        advance(10s);
        std::vector<std::string> names;
        for (const auto& file : std::filesystem::directory_iterator(directory))
            names.push_back(file.path().filename());
        return names;
    }

    HttpReply configuration = HttpSessionInMemory::reply(
        200, R"({"params":{"color":"#0a7","hint":"Write…","title":"Q & A","message":null},"more":1})");
    std::string directory = platform->fileManager().temporaryDirectory();
};

TEST_F(WebChatTest, OpensThePageOnceUnderTheVisitorsId) {
    Merovanta::user().tag({.id = "4711"});
    platform->time->post([] { Merovanta::webChat().open("support"); }, /*onMain=*/false);
    Merovanta::webChat().open("support");
    advance(1s);
    open();
    EXPECT_EQ(fetches(), 2);
    EXPECT_TRUE(log.contains("[DEBUG] HttpUtil: GET https://service.example/api/in/wc/c/support"));
    EXPECT_EQ(platform->webViews()->made, 1);
    EXPECT_EQ(screen->subviews.back()->classNames.front(), "ChatView");
    EXPECT_THAT(page().handlers, ElementsAre("openDocument", "jsError"));
    const auto seconds = std::to_string(platform->clock().sinceEpoch() / 1s - 2);
    EXPECT_THAT(page().loaded, ElementsAre("https://service.example/cdn/chat/chat.html?" + seconds +
                                           "#d=service.example&tId=tenant&vId=4711&title=Q%20&%20A&message="
                                           "&hint=Write%E2%80%A6&color=%230a7&n=true&eU=true"));
    EXPECT_EQ(ClientRegistry::clients().count("STATUS"), 1);
}

TEST_F(WebChatTest, TellsWhatBecameOfItAndIsClosedByTheHost) {
    std::vector<std::string> outcomes;
    const auto note = [&](const std::optional<std::string>& error) {
        outcomes.push_back(error.value_or("ok"));
    };
    Merovanta::webChat().open("support", note);
    advance(1s);
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(Merovanta::webChat().isOpen());
    Merovanta::webChat().open("support", note);
    advance(1s);
    EXPECT_THAT(outcomes, ElementsAre("ok", "ok"));
    Merovanta::webChat().close();
    advance(0s);
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(Merovanta::webChat().isOpen());

    outcomes.clear();
    Merovanta::webChat().open("support", note);
    advance(0s);
    Merovanta::webChat().close();
    advance(1s);
    EXPECT_FALSE(isOpen());
    Merovanta::webChat().open("support", note);
    advance(0s);
    platform->app.root->view.reset();
    screen.reset();
    advance(1s);
    configuration = HttpSessionInMemory::reply(500);
    screen = inmemory::NativeView::make({0, 0, 390, 844}, 0xFFFFFFFF, {"Screen"});
    platform->app.root = inmemory::NativeController::make("HomePage", screen);
    Merovanta::webChat().open("support", note);
    advance(1s);
    expectError("[ERROR] WebChat: Get WebChat configuration failed: HTTP status 500");
    platform->app.root.reset();
    Merovanta::webChat().open("support", note);
    advance(1s);
    EXPECT_THAT(outcomes, ElementsAre("The chat was closed while it opened", "The screen is gone",
                                      "HTTP status 500", "Cannot find view of controller"));
}

TEST_F(WebChatTest, TheHostIsToldWhoeverOpensAndClosesIt) {
    std::string told;
    const auto observation =
        Merovanta::webChat().observe([&](bool isOpenNow) { told += isOpenNow ? "open " : "closed "; });
    std::unique_ptr<Observation> once = Merovanta::webChat().observe([&](bool) {
        told += "once ";
        once.reset();
    });
    open();
    platform->tapRecognizers().tap({195, 10});
    advance(1s);
    open();
    Merovanta::webChat().close();
    Merovanta::webChat().open("support");
    advance(1s);
    EXPECT_EQ(told, "open once closed open closed open ");
    platform->app.root->view.reset();
    screen.reset();
    advance(1s);
    EXPECT_FALSE(Merovanta::webChat().isOpen());
    EXPECT_EQ(platform->webViews()->shown(), nullptr);
    EXPECT_EQ(told, "open once closed open closed open closed ") << "gone with its screen";
}

TEST_F(WebChatTest, AConfigurationThatLacksWhatItShouldHoldOpensNothing) {
    configuration = HttpSessionInMemory::reply(200, "{}");
    open();
    EXPECT_TRUE(isOpen());
    EXPECT_THAT(page().loaded, IsEmpty());
    EXPECT_TRUE(log.contains("[WARNING] ChatView: Cannot construct URL"));
    platform->tapRecognizers().tap({195, 10});
    EXPECT_FALSE(isOpen());

    const std::string failed = "[ERROR] WebChat: Get WebChat configuration failed: ";
    const std::pair<HttpReply, std::string> cases[] = {
        {HttpSessionInMemory::failure("lost"), "lost"},
        {HttpSessionInMemory::reply(404, "{}"), "HTTP status 404"},
        {HttpSessionInMemory::reply(200), "Data is nil"},
        {HttpSessionInMemory::reply(200, "[]"), "Cannot decode reply: it is not an object"},
        {HttpSessionInMemory::reply(200, R"({"params":{"title":1}})"),
         "Cannot decode reply: \"title\" has the wrong type or is too long"},
    };
    for (const auto& [reply, error] : cases) {
        configuration = reply;
        expectError(failed + error);
        open();
        EXPECT_FALSE(isOpen()) << error;
    }
}

TEST_F(WebChatTest, ATapInTheTopFifthClosesIt) {
    open();
    platform->tapRecognizers().tap({195, 0.21 * 844});
    EXPECT_TRUE(isOpen());
    platform->tapRecognizers().tap({195, 0.19 * 844});
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(platform->webViews()->shown(), nullptr);
    EXPECT_EQ(platform->tapRecognizers().attached(), 0);
    open();
    EXPECT_TRUE(isOpen());
    page().delegate.didReceiveScriptMessage({"openDocument", "late;data:,QQ=="});
    platform->coverViews().dismiss();
    EXPECT_FALSE(isOpen());
    advance(1s);
    EXPECT_THAT(platform->documentPreviews()->presented(), IsEmpty());
}

TEST_F(WebChatTest, ALinkIsDownloadedBesideThePageAndCannotBreakOutOfItsText) {
    open();
    const auto decide = page().delegate.decidePolicyForNavigationAction;
    EXPECT_EQ(decide("https://service.example/cdn/chat/chat.html?2#x"), WebView::Policy::allow);
    EXPECT_EQ(decide(R"(https://service.example/d/it's\%20"`${x}`";)"
                     "\n\xC3\xBC"),
              WebView::Policy::cancel);
    ASSERT_THAT(page().evaluated, SizeIs(1));
    EXPECT_THAT(page().evaluated[0],
                ::testing::StartsWith("    (async function download() {\n        const url = "
                                      "'https://service.example/d/it%27s%5C%20\"`${x}`\";%0A%C3%BC';\n"));
    platform->webViews()->evaluationError = StringError("no page");
    decide("https://service.example/d/too-soon");
    advance(1s);
    decide("https://service.example/d/" + std::string(10'000, 'x'));
    EXPECT_THAT(page().evaluated, SizeIs(1));
    decide("https://service.example/d/1");
    advance(1s);
    EXPECT_TRUE(log.contains("\"JS ERR: no page\""));
}

TEST_F(WebChatTest, AnErrorIsShownFromStatus400On) {
    open();
    page().delegate.didReceiveNavigationResponse(399);
    EXPECT_THAT(platform->alerts().presented, IsEmpty());
    page().delegate.didReceiveNavigationResponse(400);
    page().delegate.didFailNavigation(StringError("refused"));
    ASSERT_THAT(platform->alerts().presented, SizeIs(1));
    const AlertTexts texts = platform->alerts().presented[0];
    EXPECT_EQ(texts.title + "/" + texts.message + "/" + texts.accept, "Error/An error occurred/Dismiss");
    EXPECT_FALSE(texts.decline);
    platform->alerts().answer(true);
    advance(1s);
    page().delegate.didFailNavigation(StringError("refused"));
    EXPECT_THAT(platform->alerts().presented, SizeIs(2));
}

TEST_F(WebChatTest, ADocumentIsWrittenForItsOwnerAloneInsideItsDirectory) {
    open();
    EXPECT_THAT(openDocument("../../a%20b%2F../%C3%BC.pdf;data:a/b;base64,JVBERg=="), ElementsAre("ü.pdf"));
    const std::string path = directory + "/ü.pdf";
    EXPECT_THAT(platform->documentPreviews()->presented(), ElementsAre(path));
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    std::string bytes;
    std::getline(std::ifstream(path), bytes);
    EXPECT_EQ(bytes, "%PDF");

    // A name that is taken by a link: what it points to stays.
    const std::string victim = directory + "-victim";
    std::filesystem::create_symlink(victim, directory + "/link");
    openDocument("link;data:,QQ==");
    EXPECT_FALSE(std::filesystem::exists(victim));
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(directory + "/link")));

    const std::string refused[] = {"", ".", "..", "%2E%2E", "a/", "a%2F", "a%00b", std::string(300, 'x')};
    for (const auto& name : refused)
        EXPECT_THAT(openDocument(name + ";data:,QQ=="), SizeIs(2)) << name;
    for (const auto& name : std::span(refused).first(7))
        EXPECT_TRUE(log.contains(R"("Could not write document: \")" + name + R"(\" is no file name")"));
    EXPECT_TRUE(log.contains("\"Could not write document: File name too long\""));
    for (const std::string payload : {"QQ=", "Q Q=", "\xFF\xFF=="})
        EXPECT_THAT(openDocument("a;data:," + payload), SizeIs(2)) << payload;
    EXPECT_TRUE(log.contains("\"Could not construct data from base64\""));
    EXPECT_THAT(openDocument("100%;data:,"), SizeIs(3));
    EXPECT_TRUE(std::filesystem::exists(directory + "/100%"));
    EXPECT_THAT(openDocument("ten;data:," + std::string(10 << 20, 'A')), SizeIs(4));
    EXPECT_EQ(std::filesystem::file_size(directory + "/ten"), (10 << 20) / 4 * 3);
    EXPECT_THAT(openDocument("large;data:," + std::string(48 << 20, 'A')), SizeIs(4));
    EXPECT_THAT(platform->documentPreviews()->presented(), SizeIs(4));
    platform->fileManager().isBroken = true;
    EXPECT_THAT(openDocument("b;data:,QQ=="), SizeIs(4));
}

TEST_F(WebChatTest, WhatAPageSaysIsFollowedOnlyAsFarAsItMaySay) {
    open();
    const auto receive = page().delegate.didReceiveScriptMessage;
    receive({"openDocument", std::nullopt});
    receive({"jsError", "gone\n[ERROR] forged"});
    EXPECT_TRUE(log.contains("\"did receive message jsError\""));
    EXPECT_TRUE(log.contains(R"("gone\n[ERROR] forged")"));
    // Ten documents in one turn: more than a chat has.
    for (int i = 0; i < 9; ++i)
        receive({"openDocument", std::to_string(i) + ";data:,QQ=="});
    EXPECT_THAT(openDocument("9;data:,QQ=="), SizeIs(4));
    const auto page = ScriptMessage::Sender::page;
    EXPECT_THAT(openDocument("no data URL", page), SizeIs(4));
    EXPECT_THAT(openDocument("x;data:no comma", page), SizeIs(4));
    for (int i = 0; i < 9; ++i) {
        receive({"openDocument", "again;data:,QQ=="});
        advance(1s);
    }
    EXPECT_THAT(platform->documentPreviews()->presented(), SizeIs(4 + 5));
    EXPECT_DEATH(openDocument("x;data:no comma"), "A document came without a data URL");
}

TEST_F(WebChatTest, ATagReloadsAnOpenChatForTheNewVisitor) {
    open();
    platform->time->post([] { Merovanta::user().tag({.id = "new"}); }, /*onMain=*/false);
    advance(1s);
    EXPECT_EQ(platform->webViews()->made, 2);
    EXPECT_THAT(page().loaded, ElementsAre(HasSubstr("&vId=new&")));
    EXPECT_THAT(screen->subviews.back()->subviews, SizeIs(1));
    platform->tapRecognizers().tap({195, 10});
    Merovanta::user().tag({.id = "newer"});
    advance(1s);
    EXPECT_EQ(platform->webViews()->made, 2);
}

TEST_F(WebChatTest, WhatArrivesForAFormerVisitorIsNotShownToTheNext) {
    Merovanta::user().tag({.id = "former"});
    open();
    openDocument("read.pdf;data:,QQ==");
    const auto late = page().delegate.didReceiveScriptMessage;
    const auto arrives = [&](const std::string& name) {
        late({"openDocument", name + ";data:,QQ==", ScriptMessage::Sender::evaluatedScript});
    };
    const auto presented = [&] { return platform->documentPreviews()->presented().size(); };
    arrives("writing.pdf");
    service.override = [](const HttpRequest&) { return HttpSessionInMemory::failure("no service"); };
    Merovanta::user().tag({.id = "next"});
    arrives("after.pdf");
    advance(40s);
    EXPECT_EQ(presented(), 1) << "the service may not know yet who it is";
    EXPECT_EQ(platform->documentPreviews()->open(), 1) << "the visitor reads on";
    EXPECT_TRUE(log.contains("\"Could not write document: it is an earlier visitor's\""));

    service.override = nullptr;
    Merovanta::user().tag({.id = "next"});
    advance(1s);
    EXPECT_EQ(platform->webViews()->made, 2);
    openDocument("own.pdf;data:,QQ==");
    Merovanta::user().tag({.id = "next", .email = "n@x.example"});
    advance(1s);
    openDocument("own too.pdf;data:,QQ==");
    EXPECT_EQ(presented(), 3);
    EXPECT_EQ(platform->documentPreviews()->open(), 1);
    Merovanta::user().clear();
    openDocument("gone.pdf;data:,QQ==");
    EXPECT_EQ(presented(), 3);
    platform->tapRecognizers().tap({195, 10});
    EXPECT_EQ(platform->documentPreviews()->open(), 0);
}

TEST_F(WebChatTest, SaysToTheVisitorWhyADocumentIsNotShown) {
    const auto& alerts = platform->alerts().presented;
    service.override = [other = service.override](const HttpRequest& request) -> std::optional<HttpReply> {
        if (FakeService::path(request) != "api/in/i18n") return other(request);
        return HttpSessionInMemory::reply(200, R"({"ui.mobile.document.large":"Zu groß"})");
    };
    const auto script = ScriptMessage::Sender::evaluatedScript;
    const std::string tooLarge =
        "res.blob() threw, error: RangeError: The document is too large, url: https://service.example/d";
    open();
    page().delegate.didReceiveScriptMessage({"jsError", tooLarge, script});
    platform->tapRecognizers().tap({195, 10});
    advance(1s);
    EXPECT_THAT(alerts, IsEmpty()) << "the texts came when the chat was closed";
    open();
    const auto receive = page().delegate.didReceiveScriptMessage;
    receive({"jsError", tooLarge, ScriptMessage::Sender::page});
    receive({"jsError", "fetch threw, error: TypeError: Failed to fetch, url: " + tooLarge, script});
    advance(1s);
    EXPECT_THAT(alerts, IsEmpty());
    receive({"jsError", tooLarge, script});
    receive({"jsError", tooLarge, script});
    advance(1s);
    ASSERT_THAT(alerts, SizeIs(1));
    EXPECT_EQ(alerts[0].title + "/" + alerts[0].message + "/" + alerts[0].accept,
              "The document is not shown/Zu groß/Dismiss");
    advance(1h);
    receive({"jsError", tooLarge, script});
    advance(1s);
    EXPECT_THAT(alerts, SizeIs(1)) << "one at a time";
    platform->alerts().answer(true);
    advance(2s);
    receive({"jsError", tooLarge, script});
    advance(1s);
    EXPECT_THAT(alerts, SizeIs(1)) << "there is time to close the chat";

    for (int i = 0; i < 6; ++i) {
        receive({"openDocument", std::to_string(i) + ";data:,QQ=="});
        advance(1s);
    }
    ASSERT_THAT(alerts, SizeIs(2));
    EXPECT_EQ(alerts[1].message, "Too many documents came at once. Wait a moment, then open this one again.");
    platform->tapRecognizers().tap({195, 10});
    platform->alerts().answer(true);
    advance(1s);
    open();
    page().delegate.didReceiveScriptMessage({"openDocument", "9;data:," + std::string(48 << 20, 'A')});
    EXPECT_THAT(alerts, SizeIs(3)) << "of a chat of its own";
    platform->alerts().answer(true);
    for (int i = 0; i < 7; ++i)
        openDocument("large;data:," + std::string(44'000'000, 'A'));
    EXPECT_THAT(alerts, SizeIs(3));
    openDocument("small;data:,QQ==");
    ASSERT_THAT(alerts, SizeIs(4));
    EXPECT_THAT(alerts[3].message, HasSubstr("as many documents as it can"));
}

TEST_F(WebChatTest, AnAgentsTapInTheTopFifthClosesItToo) {
    startSession();
    open();
    const double scale = platform->app.screen.scale;
    const auto tap = [&](double y) {
        service.agentMessages.push_back({{"x", 195 * scale}, {"y", y * scale}});
        advance(1s);
    };
    const auto clicks = [&] {
        const auto messages = service.messages();
        return std::count_if(messages.begin(), messages.end(),
                             [](const auto& each) { return each.clickevent_size() > 0; });
    };
    const auto before = clicks();
    tap(0.21 * 844);
    EXPECT_TRUE(isOpen());
    tap(0.19 * 844);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(clicks(), before) << "the visitor did not tap";
}

TEST_F(WebChatTest, AVisitorMayAttachFilesOnceTheHostAllowsIt) {
    open();
    EXPECT_FALSE(page().delegate.mayChooseFiles());
    Merovanta::webChat().setAttachmentsAllowed(true);
    EXPECT_TRUE(page().delegate.mayChooseFiles());
}

TEST_F(WebChatTest, ThePushTokenGoesWithTheIdentityOfASession) {
    Merovanta::webChat().setMobileDeviceToken("push");
    Merovanta::user().tag({.id = "4711"});
    startSession();
    for (const auto& message : service.messages()) {
        if (message.usertag_size() == 0) continue;
        EXPECT_EQ(message.usertag(0).id(), "4711");
        EXPECT_EQ(message.usertag(0).mobiledevicetoken(), "push");
        return;
    }
    FAIL() << "no identity was sent";
}

TEST_F(WebChatTest, WhatCannotBeShownOrClosedLeavesNothingOverTheScreen) {
    platform->hasChat = false;
    open();
    EXPECT_EQ(fetches(), 0);
    EXPECT_FALSE(config().activeUserTag) << "nobody is identified for a chat that there is not";
    expectError("[ERROR] WebChat: This application is built without the chat");
    platform->hasChat = true;
    platform->webViews()->isBroken = true;
    open();
    EXPECT_FALSE(isOpen());
    platform->webViews()->isBroken = false;
    platform->tapRecognizers().isBroken = true;
    open();
    EXPECT_FALSE(isOpen());
    EXPECT_THAT(log.lines("[WARNING] ChatView: Cannot show the web view"), SizeIs(2));
}

TEST_F(WebChatTest, SaysWhatItsAddressLacksAndOpensUnderTheDevice) {
    config().activeUserTag = ActiveUser{.email = "a@b.example"};
    // The host's own view of that name is not the chat.
    screen->add(inmemory::NativeView::make({0, 0, 9, 9}, 0xFFFFFFFF, {"ChatView"}));
    open();
    EXPECT_THAT(page().loaded, ElementsAre(HasSubstr("&vId=" + *platform->app.vendorIdentifier + "&")));
    platform->tapRecognizers().tap({195, 10});
    config().tenantId.reset();
    open();
    EXPECT_TRUE(log.contains("[WARNING] ChatView: No tenantId set"));
    platform->tapRecognizers().tap({195, 10});
    config().tenantId = "tenant";
    Merovanta::configuration().setCdnServer("host:port:1");
    open();
    EXPECT_TRUE(log.contains("[WARNING] ChatView: Cannot parse URL"));
    EXPECT_THAT(page().loaded, IsEmpty());
    Merovanta::configuration().setCdnServer("service.example");
}

TEST_F(WebChatTest, EachScreenHasItsOwn) {
    open();
    const auto other = inmemory::NativeView::make({0, 0, 390, 844}, 0xFFFFFFFF, {"Other"});
    platform->app.root->presented = inmemory::NativeController::make("Other", other);
    open();
    EXPECT_THAT(other->subviews, SizeIs(1));
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(fetches(), 2);
}

}  // namespace
}  // namespace merovanta::testing
