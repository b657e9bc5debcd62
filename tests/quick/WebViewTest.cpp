#include "Platform/WebView.h"

#include <gmock/gmock.h>

#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <csignal>
#include <utility>

#include "Film.h"
#include "General/WebChat/DownloadScript.h"
#include "Qt/Quick/TapPlayerQuick.h"
#include "Qt/Quick/ViewQuick.h"
#include "Qt/QuickChat/WebViewFactoryQuick.h"
#include "Scene.h"
#include "qt/PageServer.h"
#include "support/LogCapture.h"

using merovanta::ScriptMessage;
using merovanta::StringError;
using merovanta::WebView;
using merovanta::quick::WebViewFactoryQuick;
namespace platform = merovanta::platform;
using merovanta::test::eventually;
using merovanta::test::PageServer;
using merovanta::test::Scene;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int patience = 30'000;

std::string told(const ScriptMessage& message) {
    const auto* const sender = message.sender == ScriptMessage::Sender::page ? "page " : "script ";
    return sender + message.name + " " + message.body.value_or("(none)").substr(0, 300);
}

struct Browser {
    explicit Browser(const QByteArray& page = {}, const QByteArray& headers = {}, int status = 200) {
        server.set("/chat.html", {page, status, headers});
        WebView::Delegate delegate;
        delegate.didReceiveScriptMessage = [this](const ScriptMessage& message) {
            messages.push_back(told(message));
            last = message;
            onMessage();
            if (closesOnMessage) webView.reset();
        };
        delegate.decidePolicyForNavigationAction = [this](const std::string& url) {
            asked.push_back(url);
            if (closesWhenAsked) webView.reset();
            return policy;
        };
        delegate.mayChooseFiles = [this] {
            ++choices;
            return allowsFiles;
        };
        delegate.didReceiveNavigationResponse = [this](int code) { statuses.push_back(code); };
        delegate.didFailNavigation = [this](const StringError& error) { failures.push_back(error.mMsg); };
        webView = WebViewFactoryQuick().create(*scene.root(), {"openDocument", "jsError"}, delegate);
    }
    void load(const std::string& path = "/chat.html?1#d=x") { webView->load(server.url(path)); }
    /// Whether so many messages came.
    bool hears(std::size_t count) {
        return eventually([&] { return messages.size() >= count; }, patience);
    }
    /// Clicks until the condition holds: the page takes clicks only once it has been painted.
    template <typename Condition>
    bool clickUntil(QPoint place, Condition condition) {
        return eventually(
            [&] {
                QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, place);
                return eventually(condition, 500);
            },
            patience);
    }
    /// Whether a picture of the window is to be had.
    bool isCaptured() {
        std::optional<bool> result;
        platform::current().screenCapture().capture(scene.root(), {}, merovanta::test::judgeOf({}),
                                                    [&](const auto& frame) { result = frame.has_value(); });
        scene.window().update();
        EXPECT_TRUE(eventually([&] { return result.has_value(); }));
        return result.value_or(false);
    }
    std::optional<std::string> evaluate(const std::string& script) {
        std::optional<std::optional<StringError>> result;
        webView->evaluateJavaScript(script, [&](const auto& error) { result = error; });
        EXPECT_TRUE(eventually([&] { return result.has_value(); }, patience)) << script;
        if (!result) return "no answer";
        return *result ? std::optional((*result)->mMsg) : std::nullopt;
    }

    PageServer server;
    Scene scene{"ApplicationWindow {}"};
    std::vector<std::string> messages;
    ScriptMessage last;
    std::function<void()> onMessage = [] {};
    std::vector<std::string> asked;
    std::vector<int> statuses;
    std::vector<std::string> failures;
    WebView::Policy policy = WebView::Policy::cancel;
    bool allowsFiles = false;
    int choices = 0;
    bool closesOnMessage = false;
    bool closesWhenAsked = false;
    std::unique_ptr<WebView> webView;
};

TEST(WebView, CarriesMessagesBothWays) {
    Browser browser(R"(<body bgcolor="#ff0080"><script>
        const handlers = webkit.messageHandlers;
        handlers.openDocument.postMessage("a;\u{1F600}\n\"<" + typeof qt);
        handlers.jsError.postMessage({toString: () => "no string"});
        handlers.jsError.postMessage(7);
        handlers.jsError.postMessage("");
        handlers.jsError.postMessage(String(handlers.other) + Object.keys(handlers));
    </script>)",
                    "Content-Security-Policy: script-src 'unsafe-inline'\r\n");
    browser.load();
    ASSERT_TRUE(browser.hears(5));
    EXPECT_THAT(browser.messages, ElementsAre("page openDocument a;\U0001F600\n\"<undefined",
                                              "page jsError (none)", "page jsError (none)", "page jsError ",
                                              "page jsError undefinedopenDocument,jsError"));
    EXPECT_EQ(browser.evaluate("webkit.messageHandlers.jsError.postMessage('own ' + location.hash + typeof "
                               "handlers)"),
              std::nullopt);
    ASSERT_TRUE(browser.hears(6));
    EXPECT_EQ(browser.messages.back(), "script jsError own #d=xundefined");
    EXPECT_THAT(browser.evaluate("throw new Error('bad')").value_or(""), testing::HasSubstr("bad"));
    EXPECT_TRUE(browser.evaluate("1 +* 2").has_value());
    EXPECT_EQ(browser.evaluate("null"), std::nullopt);
    EXPECT_THAT(browser.asked, IsEmpty());
    EXPECT_THAT(browser.failures, IsEmpty());
    EXPECT_TRUE(eventually(
        [&] { return browser.scene.window().grabWindow().pixelColor(150, 200) == QColor("#ff0080"); }));
}

TEST(WebView, DownloadsWhatAPageLinksTo) {
    Browser browser("<script>document.cookie = 'key=1'</script><i id=contentDispositon><i id=contentType>");
    browser.load();
    ASSERT_TRUE(eventually([&] { return browser.statuses.size() == 1; }, patience));
    struct Download {
        PageServer::Page page;
        std::vector<std::string> messages;
    };
    const QByteArray named = "Content-Disposition: attachment; filename=";
    const std::string url = browser.server.url("/d");
    const Download downloads[] = {
        {{"A", 200, named + "\"a; b%20.pdf\"; x=y\r\n"},
         {"openDocument a; b%20.pdf;data:text/html;base64,QQ=="}},
        {{"A", 200, "Content-Disposition: FileName=../b.pdf\r\n"},
         {"openDocument ../b.pdf;data:text/html;base64,QQ=="}},
        {{"", 200, named + "empty\r\n"}, {"openDocument empty;data:;base64,"}},
        {{"A", 200, named + "\"\"\r\n", "application/json;x"},
         {"openDocument unnamed.pdf;data:application/json;base64,QQ=="}},
        {{"A", 200, "Content-Disposition: inline\r\n", "image/tiff"},
         {"jsError content-disposition header could not be matched against regex, content-disposition: "
          "inline url: " +
              url,
          "openDocument unnamed.tiff;data:image/tiff;base64,QQ=="}},
        {{"A", 200, named + ";\r\n"},
         {"jsError Could not determine filename from content-disposition nor content-type"}},
        {{"A"}, {"jsError content-disposition header missing, url: " + url}},
        {{QByteArray(merovanta::maximumDocumentBytes + 1, 'x'), 200, named + "x\r\n"},
         {"jsError " + std::string(merovanta::documentTooLargeError) + url}},
        {{"A", 404}, {"jsError Response status was not ok, status: 404, url: " + url}},
    };
    for (const auto& [page, messages] : downloads) {
        browser.server.set("/d", page);
        browser.messages.clear();
        EXPECT_EQ(browser.evaluate(merovanta::downloadScript(url)), std::nullopt);
        ASSERT_TRUE(browser.hears(messages.size())) << messages.back();
        for (std::size_t i = 0; i < messages.size(); ++i)
            EXPECT_THAT(browser.messages[i], testing::StartsWith("script " + messages[i]));
    }
    EXPECT_TRUE(browser.server.request("/d").contains("key=1"));
    browser.messages.clear();
    browser.evaluate(merovanta::downloadScript("http://127.0.0.1:1/d"));
    ASSERT_TRUE(browser.hears(1));
    EXPECT_THAT(browser.messages[0], testing::StartsWith("script jsError fetch threw, error: "));
}

TEST(WebView, GivesTheHandlersToNoOtherPage) {
    // Says to the server whether it has handlers, and tries what a page with them does.
    const QByteArray stranger = R"(<script>
        dispatchEvent(new CustomEvent("merovanta-message", {detail: "jsError:s:stranger"}));
        fetch("/tell/" + typeof webkit + typeof qt);
    </script>)";
    const QByteArray told = "/tell/undefinedundefined";
    PageServer elsewhere;
    elsewhere.set("/chat.html", {stranger});
    const QByteArray foreign = QByteArray::fromStdString(elsewhere.url("/chat.html"));
    const struct {
        const char* name;
        QByteArray page;
        QByteArray headers = {};
        int status = 200;
        bool isFrame = false;
    } ways[] = {
        {"frame", "<iframe src='/other/chat.html'></iframe>", {}, 200, true},
        {"foreign frame", "<iframe src='" + foreign + "'></iframe>", {}, 200, true},
        {"foreign redirect", "", "Location: " + foreign + "\r\n", 302},
        {"redirect of the page's own", "<meta http-equiv=refresh content='0;url=/other/chat.html'>"},
        {"link", "<script>location = '/other/chat.html'</script>"},
        {"foreign link", "<script>location = '" + foreign + "'</script>"},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.name);
        elsewhere.forget();
        Browser browser(way.page, way.headers, way.status);
        browser.server.set("/other/chat.html", {stranger});
        browser.policy = WebView::Policy::allow;
        browser.load();
        EXPECT_TRUE(eventually(
            [&] { return !(elsewhere.request(told) + browser.server.request(told)).isEmpty(); }, patience));
        EXPECT_EQ(browser.evaluate("webkit.messageHandlers.jsError.postMessage('own')").has_value(),
                  !way.isFrame);
        EXPECT_TRUE(way.isFrame ? browser.hears(1) : browser.messages.empty());
        EXPECT_TRUE(browser.messages.empty() ||
                    browser.messages == std::vector<std::string>{"script jsError own"});
        EXPECT_EQ(browser.asked.size(), 1);
    }
}

TEST(WebView, KnowsThePageUnderEveryAddressThatItTakes) {
    const QByteArray named = "Content-Disposition: attachment; filename=x\r\n";
    const QByteArray page = R"(<script>
        history.pushState({}, "", "/room/7");
        webkit.messageHandlers.jsError.postMessage("hello from " + location.pathname + location.hash);
    </script>)";
    Browser browser("", "Location: /v2/chat.html?3\r\n", 302);
    browser.policy = WebView::Policy::allow;
    browser.server.set("/v2/chat.html", {"", 301, "Location: /v3/chat.html\r\n"});
    browser.server.set("/v3/chat.html", {page});
    browser.server.set("/d", {"A", 200, named});
    browser.load();
    ASSERT_TRUE(browser.hears(1));
    EXPECT_EQ(browser.messages.front(), "page jsError hello from /room/7");
    EXPECT_EQ(browser.evaluate(merovanta::downloadScript(browser.server.url("/d"))), std::nullopt);
    ASSERT_TRUE(browser.hears(2));
    EXPECT_EQ(browser.messages.back(), "script openDocument x;data:text/html;base64,QQ==");
    EXPECT_THAT(browser.asked, ElementsAre(browser.server.url("/v2/chat.html?3#d=x"),
                                           browser.server.url("/v3/chat.html#d=x")));
    EXPECT_THAT(browser.failures, IsEmpty());

    // There and back again is not the same page any more; and one that never comes to an end is none.
    PageServer elsewhere;
    elsewhere.set(
        "/chat.html",
        {"", 302, "Location: " + QByteArray::fromStdString(browser.server.url("/v3/chat.html")) + "\r\n"});
    browser.server.set(
        "/chat.html",
        {"", 302, "Location: " + QByteArray::fromStdString(elsewhere.url("/chat.html")) + "\r\n"});
    browser.server.set("/v3/chat.html", {"<script>fetch('/tell/' + typeof webkit)</script>"});
    browser.messages.clear();
    browser.load();
    EXPECT_TRUE(eventually([&] { return !browser.server.request("/tell/undefined").isEmpty(); }, patience));
    browser.server.set("/chat.html", {"", 302, "Location: /chat.html?again\r\n"});
    browser.load();
    EXPECT_TRUE(eventually([&] { return !browser.failures.empty(); }, patience));
    EXPECT_THAT(browser.failures, ElementsAre("Too many redirects"));
    EXPECT_THAT(browser.messages, IsEmpty());
}

TEST(WebView, LetsNoPageFloodIt) {
    const merovanta::testing::LogCapture log;
    Browser browser(R"(<script>
        const post = text => webkit.messageHandlers.jsError.postMessage(text);
        for (let i = 0; i < 100000; ++i) post(String(i));
        post("x".repeat(50 * 1024 * 1024));
    </script>)");
    // Everything else that is queued gets its turn between two messages.
    int turns = 0;
    QTimer others;
    QObject::connect(&others, &QTimer::timeout, [&] { ++turns; });
    others.start(0);
    int turnsOfLast = -1;
    browser.onMessage = [&] { EXPECT_NE(std::exchange(turnsOfLast, turns), turns); };
    browser.load();
    ASSERT_TRUE(browser.hears(1));
    EXPECT_EQ(browser.evaluate("webkit.messageHandlers.openDocument.postMessage('still here')"),
              std::nullopt);
    EXPECT_TRUE(eventually([&] { return browser.last.name == "openDocument"; }, patience));
    ASSERT_TRUE(browser.hears(65)) << "what waited";
    EXPECT_EQ(log.lines("[WARNING] ScriptReceiverQuick: ").size(), 1);
    turns = 0;
    EXPECT_EQ(browser.evaluate("webkit.messageHandlers.jsError.postMessage('é'.repeat(5000000) + 'end')"),
              std::nullopt);
    EXPECT_TRUE(eventually([&] { return browser.last.body->size() > 10; }, patience));
    EXPECT_EQ(browser.last.body->size(), 10'000'003);
    EXPECT_TRUE(browser.last.body->ends_with("éend"));
    EXPECT_LE(browser.messages.size(), 67) << "of 100000";
    EXPECT_GT(turns, 15) << "came in pieces";
}

TEST(WebView, AsksBeforeAnythingElseIsOpened) {
    Browser browser(R"(<style>a { position: fixed; left: 0; width: 300px; height: 50px }</style>
        <a style="top: 0" target="_blank" href="/blank">b</a>
        <a style="top: 100px" onclick="window.open('/opened');">o</a>
        <a style="top: 200px" href="/down%27'load?q">d</a>
        <script>webkit.messageHandlers.jsError.postMessage(alert() + prompt() + document.cookie)</script>)",
                    "Set-Cookie: s=1; HttpOnly\r\n");
    browser.load();
    ASSERT_TRUE(browser.hears(1)) << "no dialog holds the page";
    const auto windows = QGuiApplication::topLevelWindows().size();
    for (const int y : {25, 125, 225}) {
        const auto before = browser.asked.size();
        EXPECT_TRUE(browser.clickUntil({50, y}, [&] { return browser.asked.size() > before; }));
    }
    EXPECT_EQ(browser.asked.front(), browser.server.url("/blank"));
    EXPECT_THAT(browser.asked, testing::Contains(browser.server.url("/opened")));
    EXPECT_EQ(browser.asked.back(), browser.server.url("/down%27'load?q"));
    EXPECT_EQ(QGuiApplication::topLevelWindows().size(), windows);
    EXPECT_EQ(browser.evaluate("fetch('/document', {credentials: 'include'})"), std::nullopt);
    EXPECT_TRUE(eventually([&] { return browser.server.request("/document").contains("s=1"); }, patience));
    for (const auto* path : {"/blank", "/opened", "/down%27'load"})
        EXPECT_TRUE(browser.server.request(path).isEmpty());
    EXPECT_THAT(browser.failures, IsEmpty());
    EXPECT_THAT(browser.statuses, ElementsAre(200));
}

TEST(WebView, GivesThePageNoFileButWhatTheVisitorChooses) {
    Browser browser(R"html(<style>input { position: fixed; inset: 0; height: 300px; background: red }</style>
        <input type="file" onchange="for (const file of this.files) file.text().then(text =>
            webkit.messageHandlers.jsError.postMessage(file.name + ' ' + text))">)html");
    browser.load();
    const auto chooser = [&] {
        return merovanta::quick::ViewQuick::itemOf(*browser.webView->view())
            ->findChild<QObject*>("fileChooser");
    };
    ASSERT_TRUE(browser.clickUntil({100, 100}, [&] { return browser.choices > 0; }));
    EXPECT_FALSE(eventually([&] { return chooser() != nullptr; }, 300)) << "not unless the host allows it";

    browser.allowsFiles = true;
    ASSERT_TRUE(browser.clickUntil({100, 100}, [&] { return chooser() != nullptr; }));
    QTest::qWait(300);
    merovanta::quick::TapPlayerQuick agent;
    EXPECT_FALSE(agent.tap(*browser.scene.root(), {100, 100})) << "the choice is the visitor's alone";
    EXPECT_FALSE(browser.isCaptured()) << "nobody sees the names of files";
    QTemporaryDir directory;
    QFile file(directory.filePath("letter ü.txt"));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("Dear bank");
    file.close();
    // What the toolkit's dialog says when a file was chosen in it.
    const QVariantList chosen{QUrl::fromLocalFile(file.fileName())};
    QMetaObject::invokeMethod(chooser(), "answered", Q_ARG(QVariant, chosen));
    ASSERT_TRUE(browser.hears(1));
    EXPECT_EQ(browser.messages.front(), "page jsError letter ü.txt Dear bank");
    EXPECT_TRUE(eventually([&] { return chooser() == nullptr && browser.isCaptured(); }));

    ASSERT_TRUE(browser.clickUntil({100, 100}, [&] { return chooser() != nullptr; }));
    const QPointer<QObject> left(chooser());
    browser.webView.reset();
    EXPECT_EQ(left, nullptr) << "goes with the chat";
    EXPECT_FALSE(browser.isCaptured()) << "what was captured before may still show it";
    EXPECT_TRUE(eventually([&] { return browser.isCaptured(); }));
}

TEST(WebView, GivesNoFileToAnotherPage) {
    PageServer elsewhere;
    elsewhere.set("/chat.html", {R"html(<style>input { position: fixed; inset: 0; height: 300px }</style>
        <input type="file" onclick="fetch('/clicked')">)html"});
    Browser browser("<script>location = '" + QByteArray::fromStdString(elsewhere.url("/chat.html")) +
                    "'</script>");
    browser.policy = WebView::Policy::allow;
    browser.allowsFiles = true;
    browser.load();
    EXPECT_TRUE(browser.clickUntil({100, 100}, [&] { return !elsewhere.request("/clicked").isEmpty(); }));
    EXPECT_FALSE(eventually([&] { return browser.choices > 0; }, 300));
}

TEST(WebView, TellsWhyAPageIsNotShown) {
    for (const int status : {200, 399, 400, 500}) {
        Browser browser("<p>text", {}, status);
        browser.load();
        EXPECT_TRUE(eventually([&] { return !browser.statuses.empty(); }, patience));
        EXPECT_THAT(browser.statuses, ElementsAre(status));
        EXPECT_THAT(browser.failures, IsEmpty());
    }
    for (const auto* url : {"http://127.0.0.1:1/chat.html", "file:///etc/chat.html", "https://"}) {
        Browser browser;
        browser.webView->load(url);
        EXPECT_THAT(browser.failures, IsEmpty()) << "not inside the call";
        EXPECT_TRUE(eventually([&] { return !browser.failures.empty(); }, patience)) << url;
    }
    Browser browser("<script>webkit.messageHandlers.jsError.postMessage('')</script>");
    browser.load();
    ASSERT_TRUE(browser.hears(1));
    auto* const item = merovanta::quick::ViewQuick::itemOf(*browser.webView->view());
    kill(item->property("renderProcessPid").value<pid_t>(), SIGKILL);
    EXPECT_TRUE(browser.evaluate("for (;;) {}").has_value());
    EXPECT_EQ(browser.failures.size(), 1);
}

TEST(WebView, MayBeDestroyedInItsOwnCallbacks) {
    for (const bool whenAsked : {false, true}) {
        Browser browser(
            "<script>webkit.messageHandlers.jsError.postMessage(''); location = '/other'</script>");
        browser.closesOnMessage = !whenAsked;
        browser.closesWhenAsked = whenAsked;
        browser.load();
        const auto view = browser.webView->view();
        ASSERT_TRUE(eventually([&] { return browser.webView == nullptr && !view->isAlive(); }, patience));
        QTest::qWait(100);
        EXPECT_THAT(browser.scene.root()->subviews(), testing::Each(testing::Truly([&](const auto& other) {
                        return other->className() != "CommunicatingWKWebView";
                    })));
    }
}

}  // namespace
