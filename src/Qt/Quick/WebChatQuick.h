#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace merovanta::quick {

/// MerovantaWebChat for QML.
class WebChatQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool attachmentsAllowed READ attachmentsAllowed WRITE setAttachmentsAllowed NOTIFY
                   attachmentsAllowedChanged FINAL)

 public:
    explicit WebChatQuick(QObject* parent);

    Q_INVOKABLE void open(const QString& id);
    Q_INVOKABLE void setMobileDeviceToken(const QString& token);
    [[nodiscard]] bool attachmentsAllowed() const;
    void setAttachmentsAllowed(bool areAllowed);

 Q_SIGNALS:
    /// Through this object.
    void attachmentsAllowedChanged();
};

}  // namespace merovanta::quick
