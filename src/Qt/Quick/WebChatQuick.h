#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace merovanta::quick {

/// MerovantaWebChat for QML.
class WebChatQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

 public:
    explicit WebChatQuick(QObject* parent);

    Q_INVOKABLE void open(const QString& id);
    Q_INVOKABLE void setMobileDeviceToken(const QString& token);
};

}  // namespace merovanta::quick
