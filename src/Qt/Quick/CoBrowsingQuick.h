#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>

namespace merovanta::quick {

/// MerovantaCoBrowsing for QML.
class CoBrowsingQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

 public:
    explicit CoBrowsingQuick(QObject* parent);

    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();
};

}  // namespace merovanta::quick
