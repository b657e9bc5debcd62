#include <Merovanta/CustomConfiguration.h>
#include <Merovanta/Merovanta.h>
#include <Merovanta/QuickChat.h>

#include <QFont>
#include <QGuiApplication>
#include <QLocale>
#include <QPalette>
#include <QQmlApplicationEngine>
#include <QTimer>
#include <cstdio>

#include "Control.h"
#include "ControlCommands.h"
#include "Options.h"
#include "StallMeter.h"
#include "Tour.h"

using namespace std::chrono_literals;

namespace {

void renderOffscreenWithoutDisplay() {
    if (qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
        qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND")) qputenv("QT_QUICK_BACKEND", "software");
    std::fprintf(stderr, "merovanta-bank: no display, drawing offscreen\n");
}

void setUpLooks() {
    QFont font;
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Roboto"), QStringLiteral("Liberation Sans"),
                      QStringLiteral("sans-serif")});
    QGuiApplication::setFont(font);
    // The bank is Irish; a system that names no country gets its formats.
    if (QLocale().language() == QLocale::C) QLocale::setDefault(QLocale(QLocale::English, QLocale::Ireland));
}

// What a platform with a dark theme tells its applications.
void darken() {
    QPalette palette(QColor(0x26, 0x2a, 0x2c));
    palette.setColor(QPalette::Window, QColor(0x1d, 0x20, 0x22));
    QGuiApplication::setPalette(palette);
}

void configureMerovanta(const Options& options) {
    merovanta::CustomConfiguration config(options.tenant.toStdString(), options.token.toStdString());
    if (options.server) config.setServerUrl(options.server->toStdString());
    merovanta::Merovanta::initConfig(config);
    merovanta::Merovanta::panoptra().preferWebSocket(options.webSocket);
}

void reportState(Qt::ApplicationState state) {
    std::puts(state == Qt::ApplicationActive ? "in front" : "not in front");
    std::fflush(stdout);
}

void startTour(Tour& tour) {
    QObject::connect(&tour, &Tour::roundFinished, [](int round) {
        std::printf("merovanta-bank: tour round %d finished\n", round);
        std::fflush(stdout);
    });
    QObject::connect(&tour, &Tour::failed, [](const QString& step) {
        std::fprintf(stderr, "merovanta-bank: the tour got stuck at \"%s\"\n", qPrintable(step));
        QCoreApplication::exit(EXIT_FAILURE);
    });
    tour.start();
}

}  // namespace

int main(int argc, char** argv) {
    renderOffscreenWithoutDisplay();
    merovanta::quick::initializeChat();
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("merovanta-bank"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Alderbrook Bank"));
    QGuiApplication::setApplicationVersion(QStringLiteral("1.0"));
    setUpLooks();
    const Options options = Options::parse(app);
    if (options.dark) darken();
    configureMerovanta(options);

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.setInitialProperties(
        {{QStringLiteral("sentinel"), options.sentinel}, {QStringLiteral("shareAtOnce"), options.start}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Bank/Main.qml")));
    if (engine.rootObjects().isEmpty()) return EXIT_FAILURE;
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());

    std::optional<Tour> tour;
    if (options.tour) {
        tour.emplace(window, options.screenshotDir);
        startTour(*tour);
    }
    std::optional<StallMeter> stalls;
    std::optional<Control> control;
    if (options.control) {
        control.emplace(controlCommands(*window, stalls.emplace()));
        reportState(QGuiApplication::applicationState());
        QObject::connect(&app, &QGuiApplication::applicationStateChanged, reportState);
    }
    if (options.exitAfter)
        QTimer::singleShot(*options.exitAfter, window, [window] { exitGracefully(*window); });
    return QGuiApplication::exec();
}
