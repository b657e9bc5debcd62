#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace merovanta::quick {

/// MerovantaConfiguration for QML.
class ConfigurationQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

 public:
    explicit ConfigurationQuick(QObject* parent);

    Q_INVOKABLE void setServer(const QString& hostname);
    Q_INVOKABLE void setCdnServer(const QString& hostname);
    [[nodiscard]] Q_INVOKABLE QString server() const;
    [[nodiscard]] Q_INVOKABLE QString cdnPath() const;
};

}  // namespace merovanta::quick
