#include "Qt/QuickChat/ScriptSourcesQuick.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

static void initScripts() {
    // Has to stand outside a namespace.
    Q_INIT_RESOURCE(merovanta_scripts);
}

namespace merovanta::quick {

namespace {

QString textOf(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The elements of the array, in brackets and separated by commas, as the script's arguments.
QString called(const QString& function, const QJsonArray& arguments) {
    const QString list = QString::fromUtf8(QJsonDocument(arguments).toJson(QJsonDocument::Compact));
    return function + QStringLiteral("(...") + list + QStringLiteral(");\n");
}

}  // namespace

ScriptSourcesQuick ScriptSourcesQuick::make(const QUrl& page, const std::vector<std::string>& handlers) {
    initScripts();
    QJsonArray names;
    for (const auto& handler : handlers)
        names.append(QString::fromStdString(handler));
    const QJsonArray arguments{page.toString(QUrl::FullyEncoded), names, QStringLiteral("merovanta-message")};
    const QString channel = textOf(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
    return {called(textOf(QStringLiteral(":/merovanta/scripts/PageHandlers.js")), arguments),
            channel + called(textOf(QStringLiteral(":/merovanta/scripts/ScriptHandlers.js")), arguments)};
}

// The page's content security policy may forbid to evaluate a text, so the script stands there itself.
QString evaluable(const std::string& script) {
    return QStringLiteral(
               "try { if (!Object.hasOwn(window, 'webkit')) throw new Error('The page is gone');\n") +
           QString::fromStdString(script) + QStringLiteral("\n; '' } catch (error) { 'Error: ' + error }");
}

}  // namespace merovanta::quick
