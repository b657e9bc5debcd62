#include <gmock/gmock.h>

#include "Scene.h"

using merovanta::ViewController;
using merovanta::test::eventually;
using merovanta::test::Scene;

namespace {

std::vector<std::string> entryNames(const ViewController& controller) {
    std::vector<std::string> names;
    if (const auto entries = controller.viewControllers()) {
        for (const auto& entry : *entries)
            names.push_back(entry->className());
    }
    return names;
}

std::string selectedName(const ViewController& controller) {
    const auto selected = controller.selectedViewController();
    return selected == nullptr ? "" : selected->className();
}

TEST(ViewControllers, FindTheStackThatFillsTheWindow) {
    for (const auto* shell :
         {"ApplicationWindow { header: ToolBar {} %1 }", "Window { Rectangle { anchors.fill: parent } %1 }",
          "Window { Page { anchors.fill: parent; footer: TabBar {} %1 } }",
          "Window { Loader { anchors.fill: parent; sourceComponent: Item { %1 } } }",
          "Window { Item { anchors.fill: parent; %1 Item { width: 10; height: 10 } } }"}) {
        Scene scene(QString(shell).arg("StackView { anchors.fill: parent; initialItem: LoginPage {} }"));
        const auto root = scene.controller();
        EXPECT_EQ(root->className(), "Main");
        EXPECT_THAT(entryNames(*root), testing::ElementsAre("LoginPage")) << shell;
        EXPECT_EQ(selectedName(*root), "") << shell;
    }
    Scene part("Window { StackView { width: 100; height: 100; initialItem: LoginPage {} } Loader {} }");
    EXPECT_EQ(part.controller()->viewControllers(), std::nullopt);
}

TEST(ViewControllers, SelectThePageThatATabShows) {
    for (const auto* container : {"SwipeView", "StackLayout"}) {
        Scene scene(QString(R"(ApplicationWindow {
            footer: TabBar {}
            %1 {
                objectName: "tabs"
                anchors.fill: parent
                LoginPage {}
                Loader { source: "SecretPage.qml" }
                Loader {}
            }
        })")
                        .arg(container));
        const auto select = [&](int index) {
            scene.object("tabs")->setProperty("currentIndex", index);
            return selectedName(*scene.controller());
        };
        EXPECT_EQ(select(0), "LoginPage") << container;
        EXPECT_EQ(select(1), "SecretPage") << container;
        EXPECT_EQ(select(2), "") << container;
        EXPECT_EQ(scene.controller()->viewControllers(), std::nullopt);
    }
}

TEST(ViewControllers, PresentTheTopmostModalPopup) {
    Scene scene(R"(ApplicationWindow {
        Dialog { modal: true; visible: true }
        PinDialog { objectName: "pin"; z: 1; visible: true }
        Popup { visible: true; z: 2 }
        Drawer { objectName: "drawer"; width: 100; height: 400 }
    })");
    const auto presented = scene.controller()->presentedViewController();
    ASSERT_NE(presented, nullptr);
    EXPECT_EQ(presented->className(), "PinDialog");
    EXPECT_EQ(presented->view()->identity(), scene.window().contentItem());

    const auto presentedName = [&] {
        const auto controller = scene.controller()->presentedViewController();
        return controller == nullptr ? std::string() : controller->className();
    };
    QMetaObject::invokeMethod(scene.object("pin"), "close");
    EXPECT_TRUE(eventually([&] { return presentedName() == "Dialog"; }));
    delete scene.object("pin");
    EXPECT_EQ(presentedName(), "Dialog");
}

TEST(ViewControllers, PresentAChildWindow) {
    Scene scene(R"(ApplicationWindow {
        id: main
        Window { objectName: "child"; transientParent: main; width: 80; height: 60; visible: true }
        Window { transientParent: main; flags: Qt.ToolTip; visible: true }
    })");
    scene.window().requestActivate();
    ASSERT_TRUE(eventually([&] { return QGuiApplication::focusWindow() == &scene.window(); }));
    const auto presented = scene.controller()->presentedViewController();
    ASSERT_NE(presented, nullptr);
    auto* const child = qobject_cast<QQuickWindow*>(scene.object("child"));
    EXPECT_EQ(presented->view()->identity(), child->contentItem());
}

TEST(ViewControllers, AreGoneWithTheirWindow) {
    Scene scene("ApplicationWindow {}");
    const auto controller = scene.controller();
    scene.close();
    EXPECT_EQ(controller->className(), "");
    EXPECT_EQ(controller->view(), nullptr);
    EXPECT_EQ(controller->viewControllers(), std::nullopt);
    EXPECT_EQ(controller->presentedViewController(), nullptr);
}

}  // namespace
