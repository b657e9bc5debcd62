#include <gtest/gtest.h>

#include <Merovanta/Merovanta.h>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Scene.h"
#include "qt/PageServer.h"

using merovanta::Merovanta;
using merovanta::ViewUtils;
using merovanta::test::eventually;
using merovanta::test::Scene;

namespace {

TEST(Module, GivesTheFacadesAndTheTag) {
    Scene scene(R"(ApplicationWindow {
        property string shareCode
        property bool connected: true
        property string server
        property string cdn
        Item { id: inner; objectName: "item"; Merovanta.tag: 3 + 4 }
        Component.onCompleted: {
            Merovanta.configuration.setServer("one.example");
            Merovanta.configuration.setCdnServer("two.example");
            Merovanta.initConfig("tenant", "token");
            Merovanta.panoptra.preferWebSocket(true);
            server = Merovanta.configuration.server();
            cdn = Merovanta.configuration.cdnPath();
            shareCode = Merovanta.panoptra.shareId;
            connected = Merovanta.panoptra.connected();
            inner.Merovanta.tag += 1;
        }
    })");
    EXPECT_EQ(ViewUtils::viewWithTag(scene.root(), 8)->identity(), scene.object("item"));
    EXPECT_EQ(scene.window().property("server"), "one.example");
    EXPECT_EQ(scene.window().property("cdn"), QString::fromStdString(Merovanta::configuration().cdnPath()));
    EXPECT_TRUE(scene.window().property("cdn").toString().contains("two.example"));
    EXPECT_EQ(scene.window().property("shareCode"), QString::fromStdString(Merovanta::panoptra().shareId()));
    EXPECT_EQ(scene.window().property("connected"), false);
    const auto wrapper = merovanta::Injection::resolve<merovanta::ApplicationConfigWrapper>();
    EXPECT_TRUE(wrapper->config.prefersWebSocket);
}

TEST(Module, TellsWhoTheVisitorIs) {
    const QByteArray path = "/rest/v1/customerstatus/tag/byVisitor/v1";
    merovanta::test::PageServer server;
    server.set(path, {"", 200});
    Scene scene(R"(ApplicationWindow {
        property bool isTagged
        function tagUser() {
            const user = {id: "v1", firstname: "Ünal", lastname: null, tags: ["a", "b"], other: 1};
            Merovanta.user.tag(user, isDone => isTagged = isDone);
        }
        function forgetUser() { Merovanta.user.clear() }
    })");
    Merovanta::configuration().setServer(server.url().substr(std::string("http://").size()));
    QMetaObject::invokeMethod(&scene.window(), "tagUser");
    EXPECT_TRUE(eventually([&] { return scene.window().property("isTagged").toBool(); }));
    for (const auto* part : {"\"v1\"", "Ünal", "[\"a\",\"b\"]"})
        EXPECT_TRUE(server.request(path).contains(part)) << server.request(path).toStdString();
    EXPECT_FALSE(server.request(path).contains("lastname"));
    QMetaObject::invokeMethod(&scene.window(), "forgetUser");
}

}  // namespace
