#include <gtest/gtest.h>

#include <Merovanta/Merovanta.h>

#include "Scene.h"

using merovanta::Merovanta;
using merovanta::test::Scene;
using merovanta::test::viewWithTag;

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
            server = Merovanta.configuration.server();
            cdn = Merovanta.configuration.cdnPath();
            shareCode = Merovanta.panoptra.shareId();
            connected = Merovanta.panoptra.connected();
            inner.Merovanta.tag += 1;
        }
    })");
    EXPECT_EQ(viewWithTag(scene.root(), 8)->identity(), scene.object("item"));
    EXPECT_EQ(scene.window().property("server"), "one.example");
    EXPECT_EQ(scene.window().property("cdn"), QString::fromStdString(Merovanta::configuration().cdnPath()));
    EXPECT_TRUE(scene.window().property("cdn").toString().contains("two.example"));
    EXPECT_EQ(scene.window().property("shareCode"), QString::fromStdString(Merovanta::panoptra().shareId()));
    EXPECT_EQ(scene.window().property("connected"), false);
}

}  // namespace
