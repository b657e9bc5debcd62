#include "ControlCommands.h"

#include <Merovanta/Merovanta.h>

#include <QCoreApplication>
#include <QMetaEnum>
#include <QTimer>
#include <cstdio>

#include "FindItem.h"
#include "InputDriver.h"

using namespace std::chrono_literals;

namespace {

void say(const QString& line) {
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

void tellPlace(const QQuickWindow& window, const QString& objectName) {
    const auto* item = findVisibleItem(window, objectName);
    if (!item || !isReady(*item)) return say(objectName + QStringLiteral(" is not there"));
    const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
    say(QStringLiteral("%1 at %2 %3 %4 %5")
            .arg(objectName)
            .arg(place.x())
            .arg(place.y())
            .arg(place.width())
            .arg(place.height()));
}

void tellText(const QQuickWindow& window, const QString& objectName) {
    const auto* item = findVisibleItem(window, objectName);
    if (!item) return say(objectName + QStringLiteral(" is not there"));
    say(QStringLiteral("%1 reads %2").arg(objectName, item->property("text").toString()));
}

void tap(QQuickWindow& window, const QString& objectName) {
    const auto* item = findVisibleItem(window, objectName);
    if (!item) return say(objectName + QStringLiteral(" is not there"));
    InputDriver input(&window);
    const QPointF middle = item->mapToScene({item->width() / 2, item->height() / 2});
    input.press(middle);
    input.release(middle);
}

void tapAt(QQuickWindow& window, const QByteArray& place) {
    const QList<QByteArray> numbers = place.split(' ');
    if (numbers.size() != 2) return;
    InputDriver input(&window);
    input.press({numbers[0].toDouble(), numbers[1].toDouble()});
    input.release({numbers[0].toDouble(), numbers[1].toDouble()});
}

void type(QQuickWindow& window, const QString& text) {
    InputDriver input(&window);
    for (const QChar character : text)
        input.type(character);
}

void strike(QQuickWindow& window, const QString& name) {
    const int key = QMetaEnum::fromType<Qt::Key>().keyToValue(qPrintable(QStringLiteral("Key_") + name));
    if (key < 0) return say(QStringLiteral("no key ") + name);
    InputDriver(&window).strike(static_cast<Qt::Key>(key));
}

/// Whether the item shows that it has the focus: a ring or a cursor.
bool showsFocus(const QQuickItem& item) {
    const QVariant ring = item.property("visualFocus");
    const QVariant cursor = item.property("cursorVisible");
    if (cursor.isValid()) return cursor.toBool();
    return ring.isValid() ? ring.toBool() : item.property("showsFocus").toBool();
}

void tellFocus(const QQuickWindow& window) {
    const QQuickItem* const item = window.activeFocusItem();
    if (item == nullptr) return say(QStringLiteral("focus is nowhere"));
    const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
    say(QStringLiteral("focus on %1 at %2 %3 %4 %5 %6")
            .arg(item->objectName().isEmpty() ? QStringLiteral("?") : item->objectName())
            .arg(place.x())
            .arg(place.y())
            .arg(place.width())
            .arg(place.height())
            .arg(showsFocus(*item) ? QStringLiteral("seen") : QStringLiteral("unseen")));
}

void resize(QQuickWindow& window, const QByteArray& size) {
    const QList<QByteArray> numbers = size.split(' ');
    if (numbers.size() == 2) window.resize(numbers[0].toInt(), numbers[1].toInt());
}

void savePicture(QQuickWindow& window, const QString& file) {
    const bool isSaved = window.grabWindow().save(file);
    say((isSaved ? QStringLiteral("saved ") : QStringLiteral("cannot save ")) + file);
}

}  // namespace

QHash<QByteArray, Control::Command> controlCommands(QQuickWindow& window, StallMeter& meter) {
    return {
        {"start", [&window](auto&) { QMetaObject::invokeMethod(&window, "startSharing"); }},
        {"stop", [&window](auto&) { QMetaObject::invokeMethod(&window, "stopSharing"); }},
        {"identify", [&window](auto&) { QMetaObject::invokeMethod(&window, "identify"); }},
        {"signOut", [&window](auto&) { QMetaObject::invokeMethod(&window, "signOut"); }},
        {"tag", [](auto& text) { merovanta::Merovanta::panoptra().tag(text.toStdString()); }},
        {"hide", [&window](auto&) { window.hide(); }},
        {"show",
         [&window](auto&) {
             window.show();
             window.requestActivate();
         }},
        {"where", [&window](auto& objectName) { tellPlace(window, objectName); }},
        {"read", [&window](auto& objectName) { tellText(window, objectName); }},
        {"tap", [&window](auto& objectName) { tap(window, objectName); }},
        {"tapAt", [&window](auto& place) { tapAt(window, place.toUtf8()); }},
        {"type", [&window](auto& text) { type(window, text); }},
        {"key", [&window](auto& name) { strike(window, name); }},
        {"focus", [&window](auto&) { tellFocus(window); }},
        {"resize", [&window](auto& size) { resize(window, size.toUtf8()); }},
        {"close", [&window](auto&) { window.close(); }},
        {"picture", [&window](auto& file) { savePicture(window, file); }},
        {"stalls",
         [&meter](auto&) { say(QStringLiteral("longest stall %1 ms").arg(meter.takeLongest().count())); }},
        {"quit", [&window](auto&) { exitGracefully(window); }},
    };
}

void exitGracefully(QQuickWindow& window) {
    if (!window.property("sharing").toBool()) return QCoreApplication::quit();
    QMetaObject::invokeMethod(&window, "stopSharing");
    auto* farewell = new QTimer(qApp);
    QObject::connect(farewell, &QTimer::timeout, qApp, &QCoreApplication::quit);
    farewell->start(250ms);
}
