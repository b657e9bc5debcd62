#include <gmock/gmock.h>

#include <cmath>

#include "General/Panoptra/Monitoring/ViewMonitor.h"
#include "General/Panoptra/Util/ClickUtil.h"
#include "Scene.h"
#include "support/LogCapture.h"
#include "support/Recipient.h"

using merovanta::ClickUtil;
using merovanta::test::eventually;
using merovanta::test::Scene;
using testing::SizeIs;

namespace {

TEST(PrivateTaps, AreNeitherReportedNorPlayedBack) {
    Scene scene(R"(ApplicationWindow {
        id: host
        property int taps
        component Key: MouseArea { width: 40; height: 40; onPressed: ++host.taps }
        Key { width: 300; height: 400 }
        Item { x: 20; y: 40; width: 80; height: 80; rotation: 45; Merovanta.tapsPrivate: true
            Key { width: 80; height: 80 } Key { x: 100 } }
        Row { x: 150; y: 20; Merovanta.tapsPrivate: true; Key {} Key {} Key { visible: false } }
        Item { x: 20; y: 200; Merovanta.tapsPrivate: true; Key {} }
        Item { x: 100; y: 200; width: 40; height: 40; clip: true; Merovanta.tapsPrivate: true; Key { width: 80 } }
        Popup { objectName: "popup"; x: 200; y: 300; width: 80; height: 80; padding: 0
            Merovanta.tapsPrivate: true; Key {} }
        Popup { objectName: "modal"; x: 20; y: 200; width: 80; height: 80; modal: true; padding: 0; Key {} }
    })");
    const auto recipient = std::make_shared<merovanta::test::Recipient>();
    const auto monitor =
        std::make_shared<merovanta::ViewMonitor>(std::make_shared<merovanta::ApplicationConfigWrapper>());
    bool isStarted = false;
    const merovanta::testing::LogCapture log;
    monitor->start(recipient, [&](const auto& error) { isStarted = !error; });
    ASSERT_TRUE(eventually([&] { return isStarted; }));
    const double scale = scene.window().effectiveDevicePixelRatio();

    const auto expectTap = [&](QPoint place, bool isPrivate) {
        SCOPED_TRACE(testing::Message() << place.x() << ", " << place.y());
        recipient->clicks = 0;
        scene.window().setProperty("taps", 0);
        QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, place);
        EXPECT_EQ(scene.window().property("taps"), 1) << "the visitor is never kept from it";
        QTest::qWait(1);
        EXPECT_EQ(recipient->clicks, isPrivate ? 0 : 1);
        ClickUtil::playBack({.x = std::lround(place.x() * scale), .y = std::lround(place.y() * scale)});
        EXPECT_EQ(scene.window().property("taps"), isPrivate ? 1 : 2);
    };
    expectTap({60, 80}, true);
    expectTap({25, 45}, false);   // The corner of an upright rectangle around it.
    expectTap({131, 122}, true);  // In it, but outside of its bounds.
    expectTap({220, 40}, true);
    expectTap({250, 40}, false);
    expectTap({40, 220}, true);  // In a group without a size.
    expectTap({120, 220}, true);
    expectTap({160, 220}, false);  // Cut off.
    scene.object("popup")->setProperty("visible", true);
    QTest::qWait(50);
    expectTap({220, 320}, true);
    scene.object("popup")->setProperty("visible", false);
    scene.object("modal")->setProperty("visible", true);
    QTest::qWait(300);
    expectTap({40, 220}, false);  // What is behind cannot be tapped.
    EXPECT_THAT(log.lines("[WARNING] ViewMonitor: Taps in views"), SizeIs(1));
    EXPECT_THAT(log.lines("[WARNING] ClickUtil: Clicks in views"), SizeIs(1));
    monitor->stop();
}

}  // namespace
