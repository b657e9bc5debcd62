#include "Qt/Quick/InterfaceFileQuick.h"

#include <QtCore/QFile>
#include <QtCore/QUrl>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <algorithm>

#include "Qt/Quick/MerovantaQuick.h"

static void initInterfaceFiles() {
    // Has to stand outside a namespace.
    Q_INIT_RESOURCE(merovanta_quick);
}

namespace merovanta::quick {

namespace {

QQmlEngine& engineOf(QQuickWindow& window) {
    if (QQmlEngine* const engine = qmlEngine(&window)) return *engine;
    // A QQuickView is no QML object, but its root item is.
    const auto items = window.contentItem()->childItems();
    for (const QQuickItem* item : items) {
        if (QQmlEngine* const engine = qmlEngine(item)) return *engine;
    }
    auto* const own = window.findChild<QQmlEngine*>(QString(), Qt::FindDirectChildrenOnly);
    return own == nullptr ? *new QQmlEngine(&window) : *own;
}

/// QML names a class after the file that it takes the text to come from.
void load(QQmlComponent& component, const QString& name, const QString& className) {
    const QString folder = QStringLiteral("merovanta/quick/");
    if (className.isEmpty()) return component.loadUrl(QUrl(QStringLiteral("qrc:/") + folder + name));
    QFile file(QStringLiteral(":/") + folder + name);
    if (!file.open(QFile::ReadOnly)) return;
    component.setData(file.readAll(), QUrl(QStringLiteral("qrc:/") + folder + className + ".qml"));
}

}  // namespace

QObject* loadInterfaceFile(const QString& name, QQuickWindow& window, QObject& owner,
                           const QVariantMap& properties, const QString& className) {
    initInterfaceFiles();
    QQmlEngine& engine = engineOf(window);
    QQmlComponent component(&engine);
    load(component, name, className);
    QObject* const object = component.isReady() ? component.createWithInitialProperties(properties) : nullptr;
    if (object == nullptr) {
        qWarning("%s", qPrintable(component.errorString()));
        return nullptr;
    }
    object->setParent(&owner);
    if (auto* const marks = MerovantaQuick::attachedTo(*object)) marks->setOwn();
    // What it shows would stay without answering to anything any more.
    QObject::connect(&engine, &QObject::destroyed, object, [object] { delete object; });
    return object;
}

QString boundedText(const std::string& utf8, qsizetype maximumLength) {
    // A character takes four bytes at most.
    const auto bytes = std::min(static_cast<qsizetype>(utf8.size()), 4 * maximumLength);
    QString text = QString::fromUtf8(utf8.data(), bytes);
    if (text.size() <= maximumLength) return text;
    const bool splitsPair = text.at(maximumLength - 1).isHighSurrogate();
    return text.left(splitsPair ? maximumLength - 1 : maximumLength) + QChar(0x2026);
}

}  // namespace merovanta::quick
