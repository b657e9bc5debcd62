#include <gmock/gmock.h>

#include <Merovanta/Merovanta.h>
#include <Merovanta/QtLog.h>

#include <QtQml/qqml.h>
#include <QtCore/QLoggingCategory>
#include <QtQml/QQmlError>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Scene.h"
#include "qt/PageServer.h"

using merovanta::Merovanta;
using merovanta::MerovantaLog;
using merovanta::test::eventually;
using merovanta::test::PageServer;
using merovanta::test::Scene;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// A service that lets sessions start, and a window that works with it from QML alone.
struct Host {
    explicit Host(const QString& functions) : scene("ApplicationWindow {\n" + common + functions + "\n}") {
        server.set("/api/in/im/c", {R"({"s":true,"h":false,"ip":"","x":false,"ios":{"blacklist":[],)"
                                    R"("blacklistClasses":[]}})",
                                    200});
        server.set("/api/in/i18n", {"{}", 200});
        server.set("/api/ix/m", {"[]", 200});
        server.set("/api/in/io/l", {"", 200});
        server.set("/api/in/co", {"[]", 200});
        scene.window().setProperty(
            "host", QString::fromStdString(server.url().substr(std::string("http://").size())));
        QObject::connect(qmlEngine(&scene.window()), &QQmlEngine::warnings, &scene.window(),
                         [this](const QList<QQmlError>& errors) {
                             for (const auto& error : errors)
                                 warnings.push_back(error.toString().toStdString());
                         });
        call("configure");
    }
    ~Host() { Merovanta::panoptra().stop(); }

    void call(const char* function) { QMetaObject::invokeMethod(&scene.window(), function); }
    [[nodiscard]] std::vector<std::string> told() {
        std::vector<std::string> lines;
        for (const auto& line : scene.window().property("told").toStringList())
            lines.push_back(line.toStdString());
        return lines;
    }
    [[nodiscard]] bool hasTold(const char* line) {
        return eventually([&] { return scene.window().property("told").toStringList().contains(line); });
    }

    PageServer server;
    std::vector<std::string> warnings;
    const QString common = QStringLiteral(R"(
        id: window
        property string host
        property list<string> told
        function tell(line) { told.push(line) }
        function configure() {
            Merovanta.initConfig({tenantId: "tenant", token: "token", serverUrl: host, cdnUrl: host});
        })");
    Scene scene;
};

TEST(Facades, AreAttachedToEveryObjectLikeTheTag) {
    Scene scene(R"(ApplicationWindow {
        property list<string> said
        Item { id: inner; objectName: "item"; Merovanta.tag: 3 + 4 }
        Component.onCompleted: {
            Merovanta.configuration.setServer("one.example");
            Merovanta.configuration.setCdnServer("two.example");
            Merovanta.initConfig("tenant", "token");
            Merovanta.panoptra.preferWebSocket(true);
            inner.Merovanta.tag += 1;
            const {configuration, panoptra} = Merovanta;
            said = [configuration.server(), configuration.cdnPath(), panoptra.shareId, panoptra.connected()];
        }
    })");
    EXPECT_EQ(merovanta::ViewUtils::viewWithTag(scene.root(), 8)->identity(), scene.object("item"));
    EXPECT_EQ(scene.window().property("said").toStringList().join(" ").toStdString(),
              "one.example http://two.example/cdn " + Merovanta::panoptra().shareId() + " false");
    EXPECT_TRUE(
        merovanta::Injection::resolve<merovanta::ApplicationConfigWrapper>()->config.prefersWebSocket);
    Merovanta::panoptra().preferWebSocket(false);
}

TEST(Facades, TheSessionIsBoundAndFollowedFromQml) {
    Host host(R"(
        readonly property string banner: Merovanta.panoptra.running ? "shared " + Merovanta.panoptra.shareId : "private"
        readonly property date since: Merovanta.panoptra.since
        Connections {
            target: window.Merovanta.panoptra
            function onStateChanged() {
                const panoptra = window.Merovanta.panoptra;
                window.tell([panoptra.state, panoptra.endReason, panoptra.startedBy, panoptra.transport].join(" "));
            }
        }
        function start() {
            Merovanta.panoptra.registerCallbacks(() => tell("started"), undefined);
            Merovanta.panoptra.start(error => tell("outcome " + error));
        }
        function startAgain() { Merovanta.panoptra.start(error => tell("outcome " + error)) }
        function stop() { Merovanta.panoptra.stop() }
        function startWith() { Merovanta.coBrowsing.startWith(() => tell("runs"), error => tell("failed " + error)) }
    )");
    host.call("start");
    EXPECT_TRUE(host.hasTold("started"));
    EXPECT_THAT(host.told(), ElementsAre("starting  host ", "outcome undefined",
                                         "sharing  host XhrMessageSender", "started"));
    EXPECT_EQ(host.scene.window().property("banner").toString().toStdString(),
              "shared " + Merovanta::panoptra().shareId());
    EXPECT_LT(host.scene.window().property("since").toDateTime().msecsTo(QDateTime::currentDateTime()),
              60'000);
    host.call("startAgain");
    EXPECT_TRUE(host.hasTold("outcome Panoptra is already started"));
    host.call("stop");
    EXPECT_EQ(host.told().back(), "ended host host XhrMessageSender");
    EXPECT_EQ(host.scene.window().property("banner"), "private");
    host.call("startWith");
    EXPECT_TRUE(host.hasTold("runs"));
    host.call("stop");
    QTest::qWait(10);
    EXPECT_TRUE(host.warnings.empty());
}

TEST(Facades, TheChatIsBoundFromQml) {
    Host host(R"(
        readonly property bool isChatOpen: Merovanta.webChat.isOpen
        onIsChatOpenChanged: tell("bound " + isChatOpen)
        function open() { Merovanta.webChat.open("support", error => tell("outcome " + error)) }
        function close() { Merovanta.webChat.close() }
    )");
    host.server.set("/api/in/wc/c/support", {R"({"params":{}})", 200});
    host.call("open");
    EXPECT_TRUE(host.hasTold("bound true"));
    host.call("close");
    EXPECT_TRUE(host.hasTold("bound false"));
    host.call("open");
    EXPECT_TRUE(eventually([&] { return host.told().size() == 5; }));
    // The visitor, whom the page keeps waiting while it loads.
    EXPECT_TRUE(eventually([&] {
        QTest::keyClick(&host.scene.window(), Qt::Key_Escape);
        return host.told().size() == 6;
    }));
    EXPECT_THAT(host.told(), ElementsAre("outcome undefined", "bound true", "bound false",
                                         "outcome undefined", "bound true", "bound false"));
    Merovanta::user().clear();
}

TEST(Facades, WrongUseFromQmlIsAnErrorAtItsPlace) {
    Host host(R"(
        function refuse(call) { try { call(); tell("taken") } catch (error) { tell(error.name) } }
        function misuse() {
            refuse(() => Merovanta.user.tag(undefined));
            refuse(() => Merovanta.user.tag(null));
            refuse(() => Merovanta.user.tag("4711"));
            refuse(() => Merovanta.user.tag({tags: "gold"}));
            refuse(() => Merovanta.user.tag({tags: ["gold", undefined]}));
            refuse(() => Merovanta.user.tag({id: "4711"}, "callback"));
            refuse(() => Merovanta.panoptra.tag(undefined));
            refuse(() => Merovanta.panoptra.start(42));
            refuse(() => Merovanta.initConfig({tenantId: "tenant"}));
        }
        function fail() { Merovanta.panoptra.tag("a", error => { throw new Error("in my callback: " + error) }) }
    )");
    host.call("misuse");
    EXPECT_THAT(host.told(), testing::AllOf(testing::SizeIs(9), testing::Each("TypeError")));
    EXPECT_FALSE(Merovanta::panoptra().status().isRunning());
    EXPECT_TRUE(host.warnings.empty());
    host.call("fail");
    ASSERT_TRUE(eventually([&] { return !host.warnings.empty(); }));
    EXPECT_THAT(host.warnings.back(), HasSubstr("Main.qml:27"));
    EXPECT_THAT(host.warnings.back(), HasSubstr("in my callback: "));
}

TEST(Facades, TheTagsOfAUserAreAnySequence) {
    const QByteArray path = "/rest/v1/customerstatus/tag/byVisitor/v1";
    Host host(R"(
        property list<string> typed: ["list", "of", "strings"]
        property var variants
        function tagWith(tags) {
            const user = {id: "v1", firstname: "Ünal", lastname: null, tags: tags, other: 1};
            Merovanta.user.tag(user, () => tell("done"), error => tell(error));
        }
        function tagArray() { tagWith(["array"]) }
        function tagTyped() { tagWith(typed) }
        function tagVariants() { tagWith(variants) }
    )");
    host.server.set(path, {"", 200});
    const auto tagged = [&](const char* function) {
        host.scene.window().setProperty("told", QStringList());
        host.call(function);
        EXPECT_TRUE(host.hasTold("done"));
        return host.server.request(path).toStdString();
    };
    EXPECT_THAT(tagged("tagArray"), testing::EndsWith(R"({"id":"v1","firstname":"Ünal","tags":["array"]})"));
    EXPECT_THAT(tagged("tagTyped"), HasSubstr(R"("tags":["list","of","strings"])"));
    host.scene.window().setProperty("variants", QStringList{"string", "list"});
    EXPECT_THAT(tagged("tagVariants"), HasSubstr(R"("tags":["string","list"])"));
    host.scene.window().setProperty("variants", QVariantList{"variant", 7});
    EXPECT_THAT(tagged("tagVariants"), HasSubstr(R"("tags":["variant","7"])"));
    host.server.set(path, {"", 500});
    host.call("tagArray");
    EXPECT_TRUE(host.hasTold("HTTP status 500"));
    Merovanta::user().clear();
}

QStringList qtLines;

TEST(Facades, TheLogComesInQtsCategories) {
    merovanta::qt::logToCategories();
    const auto former =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            qtLines << QString::number(type) + " " + context.category + " " + text;
        });
    Merovanta::configuration().setServer("http://service.example");
    QLoggingCategory::setFilterRules("merovanta.*=false");
    Merovanta::configuration().setServer("http://other.example");
    QLoggingCategory::setFilterRules("");
    qInstallMessageHandler(former);
    Merovanta::log().setSink({}, MerovantaLog::StandardOutput::goesOn);
    EXPECT_EQ(qtLines, QStringList(QString::number(QtWarningMsg) +
                                   " merovanta.HostName \"http://service.example\" is no host name: use "
                                   "\"service.example\""));
}

}  // namespace
