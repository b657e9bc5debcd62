#include <gmock/gmock.h>

#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/View.h"
#include "Scene.h"

using merovanta::ViewUtils;
using merovanta::platform::current;
using merovanta::test::Scene;

namespace {

const auto* const tree = R"(
ApplicationWindow {
    component Badge: Rectangle {}
    Item {
        Merovanta.tag: 1; x: 10; y: 20; width: 100; height: 50
        Rectangle { Merovanta.tag: 2; x: 1; y: 2; width: 4; height: 6; z: 2 }
        Rectangle { Merovanta.tag: 3; property int extra; rotation: 90; width: 10; height: 20 }
        Badge { Merovanta.tag: 4; z: -1 }
    }
    LoginPage { Merovanta.tag: 5; property int extra }
    TextField { Merovanta.tag: 6 }
    Loader { sourceComponent: LoginPage { Merovanta.tag: 8 } }
}
)";

TEST(Views, AreCalledByTheirPlainClassNames) {
    qmlRegisterType(QUrl("qrc:/scenes/LoginPage.qml"), "Bank", 1, 0, "SignIn");
    Scene scene(tree);
    const auto root = scene.root();
    const auto name = [&](long tag) { return ViewUtils::viewWithTag(root, tag)->className(); };
    EXPECT_THAT((std::vector{name(1), name(3), name(4), name(5), name(6), name(8)}),
                testing::ElementsAre("QQuickItem", "QQuickRectangle", "Badge", "LoginPage", "TextField",
                                     "LoginPage"));
    EXPECT_EQ(scene.controller()->className(), "Main");

    const auto is = [&](long tag, std::string_view kind) {
        return ViewUtils::viewWithTag(root, tag)->isKindOf(kind);
    };
    for (const auto* kind : {"LoginPage", "Page", "QQuickPage", "Pane", "Control", "QQuickItem", "Item"}) {
        EXPECT_TRUE(is(5, kind)) << kind;
    }
    for (const auto* kind : {"TextField", "QQuickTextField", "TextInput", "QQuickTextInput"}) {
        EXPECT_TRUE(is(6, kind)) << kind;
    }
    EXPECT_TRUE(is(4, "Rectangle"));
    EXPECT_TRUE(is(5, "SignIn")) << "the name of the type is not that of its file";
    for (const auto* kind : {"", "Login", "LoginPage_QMLTYPE", "TextField", "QQuickRectangle"}) {
        EXPECT_FALSE(is(5, kind)) << kind;
    }

    const auto classExists = [](const std::string& className) -> bool {
        return current().application().classesExist({className}).at(0);
    };
    for (const auto* kind : {"LoginPage", "Badge", "QQuickTextField", "TextField", "Rectangle", "ListView"}) {
        EXPECT_TRUE(classExists(kind)) << kind;
    }
    EXPECT_FALSE(classExists("LoginPage_QMLTYPE_1"));
}

TEST(Views, AreListedInPaintingOrderAndConvertedThroughRotations) {
    Scene scene(tree);
    const auto root = scene.root();
    std::vector<long> tags;
    for (const auto& child : ViewUtils::viewWithTag(root, 1)->subviews())
        tags.push_back(child->tag());
    EXPECT_THAT(tags, testing::ElementsAre(4, 3, 2));

    // Turned by a right angle around its centre (15, 30).
    const auto turned = ViewUtils::viewWithTag(root, 3)->convert({0, 0, 10, 20}, *root);
    EXPECT_NEAR(turned.x, 5, 1e-9);
    EXPECT_NEAR(turned.y, 25, 1e-9);
    EXPECT_NEAR(turned.width, 20, 1e-9);
    EXPECT_NEAR(turned.height, 10, 1e-9);
}

TEST(Views, OfPopupsAnswerForThePopup) {
    Scene scene("ApplicationWindow { PinDialog { visible: true; Merovanta.tag: 9 } }");
    const auto view = ViewUtils::viewWithTag(scene.root(), 9);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->className(), "PinDialog");
    for (const auto* kind : {"PinDialog", "Dialog", "Popup", "QQuickPopup", "Item"}) {
        EXPECT_TRUE(view->isKindOf(kind)) << kind;
    }
}

}  // namespace
