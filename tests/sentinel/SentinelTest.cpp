#include <Merovanta/Merovanta.h>
#include <Merovanta/Quick.h>
#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlError>
#include <QtQml/QQmlPropertyMap>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>
#include <algorithm>

#include "Photographer.h"

// Whether a private view ever shows in a picture. Each file in scenes/ is a window as a host's developer
// might lay it out, whose private views carry the tag 7 and paint magenta, the sentinel. It is set going,
// pictures are taken, and no pixel of them may be of that colour; while nothing is named, the same window
// must show it.
//
// The environment: MEROVANTA_SENTINEL_PICTURES is how many pictures each scene is given for each way of
// naming its views, MEROVANTA_SENTINEL_SAVE a folder for the pictures that leak.

namespace merovanta::test {
namespace {

SpyPlatform* spyPlatform = nullptr;

int pictures() {
    bool isSet = false;
    const int number = qEnvironmentVariableIntValue("MEROVANTA_SENTINEL_PICTURES", &isSet);
    return isSet ? number : 3;
}

/// How the private views are named, if they are.
struct Naming {
    const char* name;
    IOSConfig lists;
    bool marks = false;
    bool fixedRectangles = true;
};

struct Tally {
    int delivered = 0;
    /// How many had something to hide, and how many still showed it.
    int painted = 0;
    int leaked = 0;
    int open = 0;
};

class Stage {
 public:
    explicit Stage(const QUrl& scene) {
        mNaming.insert(QStringLiteral("mark"), {});
        mEngine.rootContext()->setContextProperty(QStringLiteral("naming"), &mNaming);
        QObject::connect(&mEngine, &QQmlEngine::warnings, [](const QList<QQmlError>& warnings) {
            for (const QQmlError& warning : warnings)
                ADD_FAILURE() << qPrintable(warning.toString());
        });
        QQmlComponent component(&mEngine, scene);
        mWindow.reset(qobject_cast<QQuickWindow*>(component.create()));
        if (component.isError()) ADD_FAILURE() << qPrintable(component.errorString());
        if (!mWindow) return;
        mWindow->show();
        mWindow->requestActivate();
        mIsShown = QTest::qWaitForWindowExposed(mWindow.get());
    }

    [[nodiscard]] bool isShown() const { return mIsShown; }

    [[nodiscard]] QVariant property(const char* name) const { return mWindow->property(name); }

    /// Whether the window has it on the screen.
    [[nodiscard]] bool showsSentinel() {
        const QImage image = mWindow->grabWindow().convertToFormat(QImage::Format_RGB32);
        const auto* const pixels = reinterpret_cast<const std::uint32_t*>(image.constBits());
        return std::any_of(pixels, pixels + image.sizeInBytes() / 4, isSentinel);
    }

    void mark(bool marked) { mNaming.insert(QStringLiteral("mark"), marked ? QVariant(true) : QVariant()); }

    /// One step on.
    void drive() {
        QMetaObject::invokeMethod(mWindow.get(), "drive", Q_ARG(QVariant, mStep++));
        // Long enough for animations to get somewhere between two pictures.
        QTest::qWait(5);
    }

 private:
    QQmlPropertyMap mNaming;
    QQmlEngine mEngine;
    std::unique_ptr<QQuickWindow> mWindow;
    bool mIsShown = false;
    int mStep = 0;
};

class Sentinel : public testing::TestWithParam<std::string> {
 protected:
    static Tally film(Stage& stage, const Naming& naming) {
        Merovanta::privacy().setFixedRectangles(naming.fixedRectangles);
        stage.mark(naming.marks);
        Photographer photographer(*spyPlatform, naming.lists);
        Tally tally;
        for (int attempt = 0; tally.delivered < pictures() && attempt < 40 * pictures(); ++attempt) {
            stage.drive();
            const auto exposure = photographer.take();
            if (!exposure) continue;
            ++tally.delivered;
            tally.painted += exposure->painted > 0 ? 1 : 0;
            tally.open += exposure->open > 0 ? 1 : 0;
            const bool leaks = exposure->leaked > 0 || exposure->leakedAsJpeg;
            const bool isControl = naming.lists.blacklist.empty() && !naming.marks;
            if (leaks != isControl) save(photographer.picture(), naming.name, tally.delivered);
            tally.leaked += leaks ? 1 : 0;
        }
        return tally;
    }

 private:
    static void save(const PixelBuffer& picture, const char* naming, int number) {
        const QString folder = qEnvironmentVariable("MEROVANTA_SENTINEL_SAVE");
        if (folder.isEmpty()) return;
        const QImage image(reinterpret_cast<const uchar*>(picture.row(0)), static_cast<int>(picture.width()),
                           static_cast<int>(picture.height()), QImage::Format_RGB32);
        image.save(QStringLiteral("%1/%2-%3-%4.png")
                       .arg(folder, QString::fromStdString(GetParam()), naming)
                       .arg(number));
    }
};

TEST_P(Sentinel, IsInNoPicture) {
    Stage stage(QUrl::fromLocalFile(QString::fromStdString(MEROVANTA_SCENES "/" + GetParam() + ".qml")));
    ASSERT_TRUE(stage.isShown());

    // Some renderers do not show all of a scene, such as the software renderer's layers at most scales.
    Tally control;
    // On a busy machine a scene may take its time to show anything.
    for (int tries = 0; tries < 5 && control.leaked == 0; ++tries)
        control = film(stage, {"nothing", {}});
    if (control.leaked == 0 && !stage.showsSentinel()) GTEST_SKIP() << "this renderer does not show it";
    EXPECT_GT(control.leaked, 0) << "what is not named shows, or the scene proves nothing";

    const IOSConfig lists{{"7"}, {}};
    const bool isAllHidden = stage.property("allHidden").toBool();
    int painted = 0;
    for (const Naming& naming : {Naming{"lists", lists}, Naming{"lists-true-areas", lists, false, false},
                                 Naming{"marks", {}, true}}) {
        const Tally tally = film(stage, naming);
        EXPECT_EQ(tally.leaked, 0) << "of " << tally.delivered << " pictures, named by " << naming.name;
        EXPECT_EQ(tally.delivered, pictures()) << "named by " << naming.name;
        if (isAllHidden) {
            EXPECT_EQ(tally.open, 0) << "named by " << naming.name;
        } else if (naming.marks || !naming.fixedRectangles) {
            EXPECT_GT(tally.open, 0) << "covers more than is private, named by " << naming.name;
        }
        painted += tally.painted;
    }
    EXPECT_GT(painted, 0) << "there was something to hide";
}

/// The black part of the last picture, which must be one upright rectangle. In pixels.
QRect blackRectangle(const PixelBuffer& picture) {
    QRect around;
    std::size_t pixels = 0;
    for (std::size_t y = 0; y < picture.height(); ++y) {
        for (std::size_t x = 0; x < picture.width(); ++x) {
            if (picture.row(y)[x] != 0xff000000) continue;
            around |= QRect(static_cast<int>(x), static_cast<int>(y), 1, 1);
            ++pixels;
        }
    }
    EXPECT_EQ(pixels, static_cast<std::size_t>(around.width()) * static_cast<std::size_t>(around.height()));
    return around;
}

/// What is black when the service names the view in the scene; in pixels.
QRect blackIn(const char* scene, bool fixedRectangles) {
    Stage stage(
        QUrl::fromLocalFile(QStringLiteral(MEROVANTA_SCENES "/parts/%1.qml").arg(QLatin1String(scene))));
    Merovanta::privacy().setFixedRectangles(fixedRectangles);
    Photographer photographer(*spyPlatform, {{"7"}, {}});
    if (!photographer.take()) {
        ADD_FAILURE() << "no picture";
        return {};
    }
    return blackRectangle(photographer.picture());
}

TEST(FixedRectangle, IsPaintedToThePixelUnlessTheHostChoosesOtherwise) {
    const double scale = qGuiApp->devicePixelRatio();
    // In points: its origin divided by the scale, its size as it is.
    const QRectF points(30 / scale, 60 / scale, 100, 40);
    EXPECT_EQ(blackIn("Framed", true), QRectF(points.topLeft() * scale, points.size() * scale).toRect());
    EXPECT_TRUE(blackIn("Framed", false).isEmpty());
}

std::vector<std::string> scenes() {
    std::vector<std::string> names;
    const auto files = QDir(QStringLiteral(MEROVANTA_SCENES)).entryList({QStringLiteral("*.qml")});
    for (const QString& file : files)
        names.push_back(file.chopped(4).toStdString());
    return names;
}

INSTANTIATE_TEST_SUITE_P(Scenes, Sentinel, testing::ValuesIn(scenes()),
                         [](const auto& scene) { return scene.param; });

}  // namespace
}  // namespace merovanta::test

int main(int argc, char** argv) {
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    testing::InitGoogleTest(&argc, argv);
    merovanta::quick::initialize();
    const auto platform = std::make_shared<merovanta::test::SpyPlatform>();
    merovanta::platform::install(platform);
    merovanta::test::spyPlatform = platform.get();
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
