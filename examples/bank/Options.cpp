#include "Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QUrl>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr double longestRunSeconds = 30.0 * 24 * 60 * 60;

[[noreturn]] void refuse(const QString& message) {
    std::fprintf(stderr, "merovanta-bank: %s\n", qPrintable(message));
    std::exit(EXIT_FAILURE);
}

std::chrono::milliseconds parseSeconds(const QString& text) {
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(seconds) || seconds <= 0 || seconds > longestRunSeconds)
        refuse(QStringLiteral("--exit-after wants a number of seconds above 0, not \"%1\"").arg(text));
    return std::chrono::milliseconds(std::llround(seconds * 1000));
}

QString parseServer(const QString& text) {
    const QUrl url(QStringLiteral("http://") + text, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty() || url.authority() != text)
        refuse(QStringLiteral("--server wants HOST[:PORT], not \"%1\"").arg(text));
    return text;
}

bool parseTransport(const QString& text) {
    if (text != u"polling" && text != u"websocket")
        refuse(QStringLiteral("--transport wants polling or websocket, not \"%1\"").arg(text));
    return text == u"websocket";
}

}  // namespace

Options Options::parse(const QCoreApplication& app) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Alderbrook Bank, the example application: a phone-sized banking app whose screen can be shared."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption server(QStringLiteral("server"),
                                    QStringLiteral("Service to share the screen with."),
                                    QStringLiteral("HOST[:PORT]"));
    const QCommandLineOption tenant(QStringLiteral("tenant"), QStringLiteral("Tenant identifier."),
                                    QStringLiteral("ID"), QStringLiteral("alderbrook"));
    const QCommandLineOption token(QStringLiteral("token"), QStringLiteral("Access token."),
                                   QStringLiteral("TOKEN"), QStringLiteral("demo-token"));
    const QCommandLineOption transport(
        QStringLiteral("transport"),
        QStringLiteral("How to stream the screen: polling, or websocket where the service allows it."),
        QStringLiteral("NAME"), QStringLiteral("polling"));
    const QCommandLineOption start(QStringLiteral("start"), QStringLiteral("Share the screen at once."));
    const QCommandLineOption tour(
        QStringLiteral("tour"),
        QStringLiteral("Walk through the screens with real input events, again and again until the end."));
    const QCommandLineOption sentinel(QStringLiteral("sentinel"),
                                      QStringLiteral("Paint every private item on pure magenta (#ff00ff)."));
    const QCommandLineOption dark(QStringLiteral("dark"),
                                  QStringLiteral("Look as on a system with a dark theme."));
    const QCommandLineOption exitAfter(QStringLiteral("exit-after"), QStringLiteral("End after this time."),
                                       QStringLiteral("SECONDS"));
    const QCommandLineOption screenshotDir(QStringLiteral("screenshot-dir"),
                                           QStringLiteral("Save a picture of each screen of the tour there."),
                                           QStringLiteral("DIR"));
    const QCommandLineOption control(
        QStringLiteral("control"),
        QStringLiteral(
            "Obey lines on standard input: start and stop share the screen or no longer, hide and show "
            "send the app to the background and back, where and tap find and touch an item by its name, "
            "picture saves what the window shows, stalls tells for how long the GUI thread was busy at "
            "most since the last time, quit ends the app."));
    parser.addOptions(
        {server, tenant, token, transport, start, tour, sentinel, dark, control, exitAfter, screenshotDir});
    parser.process(app);

    if (!parser.positionalArguments().isEmpty())
        refuse(QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst()));
    Options options;
    options.tenant = parser.value(tenant);
    options.token = parser.value(token);
    options.start = parser.isSet(start);
    options.tour = parser.isSet(tour);
    options.sentinel = parser.isSet(sentinel);
    options.dark = parser.isSet(dark);
    options.control = parser.isSet(control);
    options.webSocket = parseTransport(parser.value(transport));
    if (parser.isSet(server)) options.server = parseServer(parser.value(server));
    if (parser.isSet(exitAfter)) options.exitAfter = parseSeconds(parser.value(exitAfter));
    if (parser.isSet(screenshotDir)) options.screenshotDir = parser.value(screenshotDir);
    return options;
}
