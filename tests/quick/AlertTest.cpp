#include "Platform/Alert.h"

#include <gtest/gtest.h>

#include <QtGui/QAccessible>
#include <QtQml/QQmlComponent>

#include "Qt/Quick/AlertFactoryQuick.h"
#include "Qt/Quick/TapPlayerQuick.h"
#include "Scene.h"

using merovanta::AlertTexts;
using merovanta::quick::AlertFactoryQuick;
using merovanta::test::eventually;
using merovanta::test::Scene;

namespace {

const AlertTexts question{"Title", "<b>Message</b>", "Allow", "Not now"};

struct Asked {
    explicit Asked(const AlertTexts& texts = question, QSize size = {300, 400})
        : scene("ApplicationWindow { TextField { objectName: \"field\"; focus: true } }") {
        scene.window().resize(size);
        alert = AlertFactoryQuick().present(*scene.controller(), texts, [this](bool accepted) {
            answers.push_back(accepted);
            alert.reset();
        });
        EXPECT_TRUE(eventually([&] { return dialog() != nullptr && dialog()->property("opened").toBool(); }));
    }
    QObject* dialog() { return scene.window().findChild<QObject*>(QString("alert")); }
    QQuickItem* item(const char* name) {
        return dialog()->property("contentItem").value<QQuickItem*>()->findChild<QQuickItem*>(name);
    }
    /// The question takes no answer at first.
    void waitUntilAnswerable() {
        EXPECT_TRUE(eventually([&] { return content()->property("isAnswerable").toBool(); }));
    }
    QObject* content() { return dialog()->property("contentItem").value<QObject*>(); }
    void click(const char* name) {
        const QPointF centre = item(name)->mapToScene(item(name)->boundingRect().center());
        QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, centre.toPoint());
    }
    void key(Qt::Key key) { QTest::keyClick(&scene.window(), key); }

    Scene scene;
    std::unique_ptr<merovanta::Alert> alert;
    std::vector<bool> answers;
};

TEST(Alert, IsAnsweredOnceHoweverItCloses) {
    const struct {
        const char* name;
        bool isAccepted;
        void (*close)(Asked&);
    } ways[] = {
        {"accept button", true, [](Asked& asked) { asked.click("accept"); }},
        {"decline button", false, [](Asked& asked) { asked.click("decline"); }},
        {"return", false, [](Asked& asked) { asked.key(Qt::Key_Return); }},
        {"tab and enter", true, [](Asked& asked) { asked.key(Qt::Key_Tab), asked.key(Qt::Key_Enter); }},
        {"escape", false, [](Asked& asked) { asked.key(Qt::Key_Escape); }},
        {"hidden window", false, [](Asked& asked) { asked.scene.window().close(); }},
        {"destroyed dialog", false, [](Asked& asked) { delete asked.dialog(); }},
        {"destroyed window", false, [](Asked& asked) { asked.scene.close(); }},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.name);
        Asked asked;
        asked.waitUntilAnswerable();
        way.close(asked);
        EXPECT_TRUE(eventually([&] { return !asked.answers.empty(); }));
        QTest::qWait(20);
        EXPECT_EQ(asked.answers, std::vector{way.isAccepted});
    }
}

TEST(Alert, IsNotAnsweredByWhatWasMeantForSomethingElse) {
    Asked asked;
    asked.click("accept");
    asked.key(Qt::Key_Return);
    ASSERT_FALSE(asked.content()->property("isAnswerable").toBool());
    asked.waitUntilAnswerable();
    EXPECT_TRUE(asked.answers.empty());
}

TEST(Alert, WithoutDeclineCanOnlyBeAcceptedByTheVisitor) {
    Asked asked({"Title", "Message", "OK", std::nullopt});
    asked.key(Qt::Key_Escape);
    QTest::mouseClick(&asked.scene.window(), Qt::LeftButton, {}, {2, 2});
    const QPointF accept = asked.item("accept")->mapToScene({20, 20});
    for (const auto& point : {merovanta::Point{accept.x(), accept.y()}, merovanta::Point{2, 2}})
        EXPECT_FALSE(merovanta::quick::TapPlayerQuick().tap(*asked.scene.root(), point));
    QTest::qWait(50);
    EXPECT_TRUE(asked.answers.empty());
    EXPECT_FALSE(asked.item("decline")->isVisible());
    asked.alert.reset();
    EXPECT_EQ(asked.scene.controller()->presentedViewController(), nullptr);
    EXPECT_TRUE(asked.scene.item("field")->hasActiveFocus());
    QTest::qWait(50);
    EXPECT_TRUE(asked.answers.empty()) << "taken away without an answer";
}

TEST(Alert, FitsAndTellsScreenReaders) {
    const std::string longText = QString("Ünïcode & <i>more</i> ").repeated(100'000).toStdString();
    for (const QSize size : {QSize(320, 480), QSize(568, 320), QSize(240, 240)}) {
        Asked asked({longText, longText, longText, longText}, size);
        for (const auto* name : {"accept", "decline"}) {
            QQuickItem* const button = asked.item(name);
            const QRectF place = button->mapRectToScene(button->boundingRect());
            EXPECT_TRUE(QRectF({}, QSizeF(size)).contains(place)) << size.width() << name;
            EXPECT_GE(std::min(place.width(), place.height()), 44);
        }
    }
    Asked asked;
    const auto spoken = [&](const char* name) {
        return QAccessible::queryAccessibleInterface(asked.item(name))->text(QAccessible::Name);
    };
    EXPECT_EQ(spoken("accept"), "Allow");
    EXPECT_EQ(spoken("message"), "<b>Message</b>");
}

TEST(Alert, NeedsNoEngineOfTheHostAndSurvivesIts) {
    auto engine = std::make_unique<QQmlEngine>();
    QQmlComponent component(engine.get());
    component.setData("import QtQuick\nWindow {}", {});
    for (const bool hasEngine : {false, true}) {
        const std::unique_ptr<QObject> object(hasEngine ? component.create() : new QQuickWindow());
        auto& window = *qobject_cast<QQuickWindow*>(object.get());
        window.show();
        window.requestActivate();
        ASSERT_TRUE(eventually([&] { return QGuiApplication::focusWindow() == &window; }));
        std::vector<bool> answers;
        const auto alert = AlertFactoryQuick().present(
            *merovanta::platform::current().application().keyWindowRootViewController(), question,
            [&](bool accepted) { answers.push_back(accepted); });
        ASSERT_TRUE(eventually([&] { return window.activeFocusItem()->objectName() == "decline"; }));
        QTest::qWait(550);
        QTest::keyClick(&window, Qt::Key_Tab);
        if (hasEngine) {
            engine.reset();
        } else {
            QTest::keyClick(&window, Qt::Key_Return);
        }
        EXPECT_TRUE(eventually([&] { return answers == std::vector{!hasEngine}; }));
    }
}

}  // namespace
