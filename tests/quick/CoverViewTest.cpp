#include "Platform/CoverView.h"

#include <gmock/gmock.h>

#include <algorithm>

#include <QtGui/QWheelEvent>

#include "Qt/Quick/CoverViewFactoryQuick.h"
#include "Qt/Quick/WidgetViewFactoryQuick.h"
#include "Scene.h"

using merovanta::quick::CoverViewFactoryQuick;
using merovanta::quick::WidgetViewFactoryQuick;
using merovanta::test::Scene;

namespace {

struct Host {
    /// What the host noticed of a visitor who does everything there is.
    std::string noticed() {
        scene.window().setProperty("noticed", QStringList());
        const QPoint place(150, 200);
        QTest::mouseMove(&scene.window(), place);
        QTest::mouseMove(&scene.window(), place + QPoint(3, 3));
        const bool isHovered = scene.window().property("isHovered").toBool();
        for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::BackButton})
            QTest::mouseClick(&scene.window(), button, {}, place);
        QWheelEvent wheel(place, scene.window().mapToGlobal(place), {}, {0, 120}, {}, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&scene.window(), &wheel);
        QTest::touchEvent(&scene.window(), touchScreen.get()).press(0, place).press(1, place / 2);
        QTest::touchEvent(&scene.window(), touchScreen.get()).release(0, place).release(1, place / 2);
        for (const auto key : {Qt::Key_A, Qt::Key_Tab, Qt::Key_B})
            QTest::keyClick(&scene.window(), key);
        QTest::qWait(20);
        QStringList names = scene.window().property("noticed").toStringList();
        names.removeDuplicates();
        if (isHovered) names.append("hover");
        names.sort();
        return names.join(' ').toStdString();
    }

    Scene scene{R"(ApplicationWindow {
        id: root
        property list<string> noticed
        property bool isAsking: false
        property bool isHovered: hover.hovered
        function notice(what) { noticed.push(what) }
        MouseArea {
            anchors.fill: parent; acceptedButtons: Qt.AllButtons; 
            onClicked: root.notice("click"); onWheel: root.notice("wheel")
        }
        Item {
            anchors.fill: parent
            TapHandler { acceptedDevices: PointerDevice.TouchScreen; onTapped: root.notice("touch") }
            HoverHandler { id: hover }
        }
        TextField { focus: true; onTextChanged: root.notice("key") }
        Dialog { modal: true; visible: root.isAsking }
    })"};
    std::unique_ptr<QPointingDevice> touchScreen{QTest::createTouchDevice()};
};

TEST(CoverView, LetsNothingThroughWhileItIsThere) {
    Host host;
    const auto* const everything = "click hover key touch wheel";
    EXPECT_EQ(host.noticed(), everything);
    auto cover = CoverViewFactoryQuick().create(*host.scene.root(), "ChatView", {});
    ASSERT_NE(cover, nullptr);
    EXPECT_EQ(cover->view()->className(), "ChatView");
    EXPECT_TRUE(cover->view()->isKindOf("ChatView"));
    EXPECT_EQ(host.noticed(), "");
    host.scene.window().resize(500, 200);
    EXPECT_TRUE(merovanta::test::eventually([&] {
        return cover->view()->frame() == merovanta::Rect{0, 0, 500, 200};
    }));
    host.scene.window().resize(300, 400);
    const auto view = cover->view();
    cover.reset();
    EXPECT_FALSE(view->isAlive());
    QTest::qWait(20);
    EXPECT_EQ(host.noticed(), everything) << "the keyboard's focus is back too";
    cover = CoverViewFactoryQuick().create(*host.scene.root(), "ChatView", [&] { cover.reset(); });
    for (const bool isAsking : {true, false}) {
        host.scene.window().setProperty("isAsking", isAsking);
        QTest::qWait(500);
    }
    EXPECT_EQ(host.noticed(), "") << "a dialog gives the focus back to the cover";
    QTest::keyClick(&host.scene.window(), Qt::Key_Escape);
    EXPECT_TRUE(merovanta::test::eventually([&] { return !cover; }));
    cover = CoverViewFactoryQuick().create(*host.scene.root(), "ChatView", {});
    host.scene.close();
    EXPECT_FALSE(cover->view()->isAlive());
}

TEST(CoverView, IsBehindTheWidgetAndLaterPopups) {
    Host host;
    const auto root = host.scene.root();
    const auto ask = [&](bool isAsking) {
        host.scene.window().setProperty("isAsking", isAsking);
        QTest::qWait(500);
    };
    ask(true);
    const auto widget = WidgetViewFactoryQuick().create(*root, {});
    const auto cover = CoverViewFactoryQuick().create(*root, "ChatView", {});
    const auto isOrdered = [&](const std::vector<std::string>& expected) {
        return merovanta::test::eventually([&] {
            std::vector<std::string> names;
            for (const auto& view : root->subviews()) {
                const auto name = view->className();
                if (std::find(expected.begin(), expected.end(), name) != expected.end())
                    names.push_back(name);
            }
            return names == expected;
        });
    };
    EXPECT_TRUE(isOrdered({"QQuickOverlay", "ChatView", "DefaultUIView"}));
    ask(false);
    ask(true);
    EXPECT_TRUE(isOrdered({"ChatView", "QQuickOverlay", "DefaultUIView"}));
}

}  // namespace
