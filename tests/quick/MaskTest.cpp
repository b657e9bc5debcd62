#include <Merovanta/Quick.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "Film.h"
#include "General/Panoptra/Monitoring/MaskedFrame.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Qt/Quick/CoverViewFactoryQuick.h"
#include "Qt/Quick/ViewQuick.h"
#include "Qt/QuickChat/WebViewFactoryQuick.h"

using namespace merovanta;
using namespace merovanta::test;

namespace {

struct Sight {
    int before = 0;
    int after = 0;
    /// How much of the picture is black.
    double black = 0;
};

/// What is secret in a picture before and after masking.
Sight look(Scene& scene, const std::shared_ptr<PrivacyJudge>& judge) {
    std::optional<CapturedFrame> frame;
    EXPECT_TRUE(eventually([&] {
        frame = takePicture(scene.root(), judge);
        return frame.has_value();
    }));
    if (!frame) return {};
    Sight sight{.before = secretPixels(frame->pixels)};
    const MaskedFrame masked(std::move(*frame));
    sight.after = secretPixels(masked.pixels());
    const auto& pixels = masked.pixels();
    const auto all = pixels.width() * pixels.height();
    sight.black = static_cast<double>(std::count(pixels.row(0), pixels.row(0) + all, 0xff000000U)) /
                  static_cast<double>(all);
    return sight;
}

Sight look(Scene& scene) {
    return look(scene, secrets());
}

class Masks : public testing::TestWithParam<const char*> {};

TEST_P(Masks, CoverWhatIsSecretWhereItShows) {
    Scene scene("ApplicationWindow { id: window; color: 'white'\n" + QString(GetParam()) + "}");
    const Sight sight = look(scene);
    EXPECT_GT(sight.before, 20) << "there is nothing to cover";
    EXPECT_EQ(sight.after, 0);
    // Anything else may be told from the picture.
    EXPECT_LT(sight.black, 0.7);
}

// What the scenes of the sentinel's test do not show. Matrices: OpenGL paints what is less than a point away
// from the window's plane.
INSTANTIATE_TEST_SUITE_P(
    Places, Masks,
    testing::Values(
        R"(Item { x: 60; y: 60; transform: Matrix4x4 { matrix: Qt.matrix4x4(1,0,150,0, 0,1,100,0, 0,0,1,0, 0,0,0,1) }
        SecretField { transform: Matrix4x4 { matrix: Qt.matrix4x4(1,0,0,0, 0,1,0,0, .002,.002,1,.1, 0,0,0,1) } } })",
        R"(Item { x: 60; y: 60; width: 150; height: 100; layer.enabled: true
        transform: Matrix4x4 { matrix: Qt.matrix4x4(1,0,150,0, 0,1,100,0, 0,0,1,0, 0,0,0,1) }
        SecretField { transform: Matrix4x4 { matrix: Qt.matrix4x4(1,0,0,0, 0,1,0,0, .002,.002,1,.1, 0,0,0,1) } } })",
        R"(Item { id: s; x: 10; width: 100; height: 100; Merovanta.tag: 7
        Rectangle { id: inner; width: 40; height: 40; color: 'magenta' } }
        ShaderEffectSource { sourceItem: inner; x: 150; y: 200; width: 60; height: 60 })",
        R"(Item { visible: false; Item { id: s; width: 100; height: 100; SecretField {} } }
        Item { visible: false; Item { id: t; width: 70; height: 70
            ShaderEffectSource { sourceItem: s; width: 60; height: 60 } } }
        ShaderEffectSource { sourceItem: t; x: 150; y: 200; width: 90; height: 90 })",
        R"(Item { y: 90; width: 100; height: 60; scale: 3; transformOrigin: Item.TopLeft; layer.enabled: true; layer.smooth: true
        SecretField { width: 30; height: 30; x: 20; y: 10 } })",
        R"(Item { y: 90; width: 100; height: 60; layer.enabled: true; SecretField {}
        layer.effect: Item { property var source
            ShaderEffectSource { sourceItem: parent.source.sourceItem; anchors.fill: parent } } })"));

TEST(MaskedPopups, AreCoveredWithAllThatIsInThem) {
    Scene scene(R"(ApplicationWindow {
        color: "white"
        Dialog { objectName: "dialog"; visible: true; x: 40; y: 60; width: 120; height: 120
            Rectangle { x: -20; width: 100; height: 20; color: "magenta" } }
    })");
    const auto serial = [&] { return platform::current().screenCapture().paintSerial(*scene.root()); };
    EXPECT_GT(look(scene).after, 0);
    QTest::qWait(400);
    const auto before = serial();
    // A popup is no item that could be painted anew.
    quick::setTag(*scene.object("dialog"), 7);
    EXPECT_NE(serial(), before);
    const auto frame = takePicture(scene.root(), secrets());
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->paintSerial, serial()) << "the picture shows it already";
    EXPECT_EQ(look(scene).after, 0);
    quick::setTag(*scene.object("dialog"), 0);
    quick::setMasked(*scene.object("dialog"), true);
    EXPECT_EQ(look(scene, judgeOf({})).after, 0);
}

TEST(MarkedItems, AreCoveredWithoutListsButForTheExceptions) {
    Scene scene(R"(ApplicationWindow {
        color: "white"
        Page {
            anchors.fill: parent
            Merovanta.masked: true
            Text { objectName: "secret"; x: 60; y: 60; text: "secret"; color: "magenta"; font.pixelSize: 40 }
            Rectangle { objectName: "public"; x: 20; y: 200; width: 100; height: 100; color: "#00ff00"
                Merovanta.masked: false
                Rectangle { objectName: "inner"; width: 20; height: 20; color: "magenta"; Merovanta.masked: true } }
        }
    })");
    const auto nothing = judgeOf({});
    Sight sight = look(scene, nothing);
    EXPECT_GT(sight.before, 400);
    EXPECT_EQ(sight.after, 0);
    EXPECT_NEAR(sight.black, 1 - (100.0 * 100 - 20 * 20) / (300 * 400), 0.01);
    // Nothing shows through an exception but plain grounds.
    scene.item("secret")->setPosition({20, 220});
    sight = look(scene, nothing);
    EXPECT_EQ(sight.after, 0);
    scene.item("secret")->setZ(1);
    sight = look(scene, nothing);
    EXPECT_EQ(sight.after, 0);
    scene.item("public")->setProperty("color", "transparent");
    scene.item("secret")->setZ(-1);
    EXPECT_EQ(look(scene, nothing).after, 0);
    quick::setMasked(*scene.item("secret"), false);
    EXPECT_GT(look(scene, nothing).after, 0);
    quick::setMasked(*scene.item("secret"), std::nullopt);
    EXPECT_EQ(look(scene, nothing).after, 0);
}

TEST(Policies, CoverWhatIsOfTheirKindAndHiddenInputsAreAlwaysCovered) {
    const auto* const kinds = R"(ApplicationWindow {
        color: "white"
        component Field: TextField { color: "magenta"; font.pixelSize: 30; text: "12345"; background: null }
        Column {
            Item { width: 200; height: 60; %1 }
        }
    })";
    struct Case {
        const char* qml;
        bool inputs;
        bool texts;
        bool pictures;
    };
    for (const Case& each :
         {Case{"Field {}", true, true, false},
          Case{"Field { echoMode: TextInput.Password }", true, true, true},
          Case{"Label { color: 'magenta'; font.pixelSize: 30; text: 'text' }", false, true, false},
          Case{"TextArea { color: 'magenta'; font.pixelSize: 30; text: 'text' }", true, true, false},
          Case{
              "Canvas { width: 50; height: 50; onPaint: { var c = getContext('2d'); c.fillStyle = 'magenta'; "
              "c.fillRect(0, 0, 50, 50) } }",
              false, false, true},
          Case{"Rectangle { color: 'magenta'; width: 30; height: 30 }", false, false, false}}) {
        Scene scene(QString(kinds).arg(each.qml));
        QTest::qWait(50);
        const bool isHidden = QString(each.qml).contains("echoMode");
        const auto isCovered = [&](PrivacySettings settings) {
            const Sight sight = look(scene, judgeOf({}, settings));
            EXPECT_GT(sight.before, 0) << each.qml;
            return sight.after == 0;
        };
        EXPECT_EQ(isCovered({}), isHidden) << each.qml;
        EXPECT_EQ(isCovered({.masksTextInputs = true}), each.inputs) << each.qml;
        EXPECT_EQ(isCovered({.masksTexts = true}), each.texts) << each.qml;
        EXPECT_EQ(isCovered({.masksPictures = true}), each.pictures) << each.qml;
        quick::setMasked(*scene.window().contentItem(), false);
        EXPECT_EQ(isCovered({true, true, true, true}), isHidden) << "an exception: " << each.qml;
    }
}

TEST(MaskedClasses, AreKnownUnderNamesThatAreRegisteredLater) {
    Scene scene("ApplicationWindow { color: 'white'; SecretField { x: 60; y: 90; Merovanta.tag: 0 } }");
    const auto covers = [&] { return look(scene, judgeOf({{}, {"LateName"}})).after == 0; };
    EXPECT_FALSE(covers());
    qmlRegisterType(QUrl("qrc:/scenes/SecretField.qml"), "Late", 1, 0, "LateName");
    EXPECT_TRUE(covers());
}

TEST(MaskedParticles, AreCoveredWhereverTheyFly) {
    if (QGuiApplication::platformName() != u"xcb") GTEST_SKIP() << "the software renderer paints none";
    Scene scene(R"(import QtQuick.Particles
    ApplicationWindow {
        color: "white"
        Item {
            width: 300; height: 200; clip: true
            ParticleSystem {
                id: system
                Emitter { x: 20; y: 20; width: 200; height: 100; emitRate: 500; size: 50; lifeSpan: 5000 }
                ImageParticle { Merovanta.tag: 7; source: "qrc:///particleresources/glowdot.png"
                    color: "magenta"; colorVariation: 0; alpha: 1 }
            }
        }
    })");
    EXPECT_TRUE(eventually([&] { return look(scene, judgeOf({})).after > 1000; })) << "nothing is named";
    const Sight sight = look(scene);
    EXPECT_GT(sight.before, 1000);
    EXPECT_EQ(sight.after, 0);
    EXPECT_NEAR(sight.black, 0.5, 0.05) << "up to the clip";
}

TEST(MaskedGrabs, AreCoveredWhileAnythingIsNamed) {
    Scene scene(R"(ApplicationWindow {
        id: host; color: "white"
        property int shown
        SecretField { id: secret; objectName: "secret"; y: 10 }
        Image { id: copy; x: 20; y: 90; Drag.active: held.active; Drag.dragType: Drag.Internal
            DragHandler { id: held } onStatusChanged: if (status == Image.Ready) ++host.shown }
        BorderImage { x: 20; y: 200; width: 200; height: 50; source: copy.source
            onStatusChanged: if (status == BorderImage.Ready) ++host.shown }
        ShaderEffectSource { x: 20; y: 270; width: 200; height: 50; live: false; sourceItem: secret }
        function grab() {
            secret.grabToImage(grab => { copy.source = copy.Drag.imageSource = grab.url; secret.visible = false })
        }
    })");
    QMetaObject::invokeMethod(&scene.window(), "grab");
    ASSERT_TRUE(eventually([&] { return scene.window().property("shown") == 2; }));
    EXPECT_EQ(look(scene).after, 0);
    EXPECT_GT(look(scene, judgeOf({})).after, 100) << "nothing is named";
    QTest::mousePress(&scene.window(), Qt::LeftButton, {}, {30, 100});
    for (int step = 1; step < 12; ++step) {
        QTest::mouseMove(&scene.window(), {30 + 10 * step, 100});
        const Sight sight = look(scene, judgeOf({{}, {"NoSuchClass"}}));
        EXPECT_GT(sight.before, 100);
        EXPECT_EQ(sight.after, 0) << "dragged, step " << step;
    }
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, {150, 100});
}

/// What is private beside, partly behind and behind the chat.
struct Chat {
    Scene scene{R"(ApplicationWindow {
        color: "white"
        SecretField { x: 20; y: 20 }
        SecretField { x: 100; y: 90; width: 150; height: 60 }
        SecretField { x: 120; y: 250 }
        Item { objectName: "screen"; x: 50; y: 120; width: 250; height: 280
            OpacityAnimator on opacity { id: fade; from: 0.4; to: 1; duration: 300; running: false }
            YAnimator on y { id: slide; from: 400; to: 120; duration: 300; running: false } }
        ShaderEffectSource { id: copy; x: 290; width: 9; height: 9; hideSource: true }
        function show(item) { copy.sourceItem = item }
        function animate(fades) { (fades ? fade : slide).restart() }
    })"};
    std::unique_ptr<CoverView> cover =
        quick::CoverViewFactoryQuick().create(quick::ViewQuick(scene.item("screen")), "ChatView", {});
    std::unique_ptr<WebView> page = quick::WebViewFactoryQuick().create(*cover->view(), {}, {});

    /// How many pixels are black.
    double black() {
        QTest::qWait(50);
        const Sight sight = look(scene);
        EXPECT_EQ(sight.after, 0);
        return sight.black * 300 * 400;
    }
};

TEST(MaskedBehindTheChat, IsOnlyWhatTheChatDoesNotHide) {
    Chat chat;
    // Each a pixel larger than what it covers.
    constexpr double beside = 122 * 32;
    constexpr double partly = 152 * 62;
    constexpr double behind = 122 * 32;
    EXPECT_EQ(chat.black(), beside + 152 * 32);
    const auto whole = beside + partly + behind;
    QQuickItem& screen = *chat.scene.item("screen");
    screen.setOpacity(0.9);
    EXPECT_EQ(chat.black(), whole);
    screen.setOpacity(1);
    screen.setRotation(3);
    EXPECT_EQ(chat.black(), whole);
    screen.setRotation(0);
    screen.setZ(-1);
    EXPECT_EQ(chat.black(), whole);
    screen.setZ(0);
    screen.setVisible(false);
    EXPECT_EQ(chat.black(), whole);
    screen.setVisible(true);
    screen.setScale(0.5);
    EXPECT_EQ(chat.black(), beside + partly + 5 * 32);
    screen.setScale(1);
    const auto showElsewhere = [&](QQuickItem* item) {
        QMetaObject::invokeMethod(&chat.scene.window(), "show", Q_ARG(QVariant, QVariant::fromValue(item)));
    };
    showElsewhere(&screen);
    EXPECT_EQ(chat.black(), whole);
    showElsewhere(nullptr);
    screen.setClip(true);
    EXPECT_EQ(chat.black(), beside + 152 * 32);
    screen.property("layer").value<QObject*>()->setProperty("enabled", true);
    EXPECT_EQ(chat.black(), whole);
    screen.property("layer").value<QObject*>()->setProperty("enabled", false);
    EXPECT_GT(look(chat.scene, judgeOf({{"7"}, {"ChatView"}})).black, 0.6) << "private itself";
    chat.page.reset();
    EXPECT_EQ(chat.black(), whole) << "the cover alone lets everything through";
}

TEST(MaskedBehindTheChat, IsCoveredWhileAnimatorsMoveTheChat) {
    Chat chat;
    const auto tally = film(chat.scene, 60, [&](int attempt) {
        if (attempt % 30 != 0) return;
        QMetaObject::invokeMethod(&chat.scene.window(), "animate", Q_ARG(QVariant, attempt > 0));
    });
    EXPECT_EQ(tally.leaked, 0);
    EXPECT_EQ(tally.delivered, 60);
}

TEST(MaskedItems, FollowMarksThatChangeWithEachFrame) {
    Scene scene(R"(ApplicationWindow {
        color: "white"
        Item {
            id: outer
            property int frame
            NumberAnimation on frame { from: 0; to: 1000; duration: 5000; loops: Animation.Infinite }
            Merovanta.masked: frame % 2 == 0
            Rectangle { x: 50; y: 50; width: 90; height: 90; color: "magenta"; Merovanta.masked: outer.frame % 2 != 0 || undefined }
        }
    })");
    const auto tally = film(scene, 40, {}, {});
    EXPECT_EQ(tally.leaked, 0);
    EXPECT_EQ(tally.masked, 40);
}

TEST(MaskedItems, SurviveWhatIsNoPlaceAndWhatDies) {
    Scene scene(R"(ApplicationWindow {
        color: "white"
        SecretField { objectName: "secret"; x: 60; y: 90; Merovanta.masked: true
            transform: Translate { objectName: "move" } }
    })");
    EXPECT_LT(look(scene).black, 0.2);
    for (const double nowhere : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        scene.item("secret")->findChild<QObject*>("move")->setProperty("x", nowhere);
        EXPECT_EQ(look(scene).black, 1) << "nobody knows where it is: " << nowhere;
    }
    scene.item("secret")->findChild<QObject*>("move")->setProperty("x", 0);
    EXPECT_LT(look(scene).black, 0.2);
    delete scene.item("secret");
    EXPECT_EQ(look(scene).black, 0);
}

}  // namespace
