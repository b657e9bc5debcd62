#pragma once

#include <Merovanta/Export.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantMap>
#include <string>

class QQuickWindow;

namespace merovanta::quick {

/// Makes an object of one of the library's QML files, in the window's own QML engine if it has one. It goes
/// with its owner and with the engine. Its class is named like the file, or as given. Null, with a warning in
/// the log, if the file cannot be loaded.
[[nodiscard]] MEROVANTA_INTERNAL QObject* loadInterfaceFile(const QString& name, QQuickWindow& window,
                                                            QObject& owner,
                                                            const QVariantMap& properties = {},
                                                            const QString& className = {});

/// The text cut to a length that is quick to lay out.
[[nodiscard]] MEROVANTA_INTERNAL QString boundedText(const std::string& utf8, qsizetype maximumLength);

}  // namespace merovanta::quick
