#pragma once

#include <Merovanta/Observation.h>

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/QJSValue>
#include <memory>

namespace merovanta::quick {

/// MerovantaWebChat for QML.
class WebChatQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged FINAL)
    Q_PROPERTY(bool attachmentsAllowed READ attachmentsAllowed WRITE setAttachmentsAllowed NOTIFY
                   attachmentsAllowedChanged FINAL)

 public:
    explicit WebChatQuick(QObject* parent);

    /// The outcome is a function that is called once, with the reason why not, or with undefined.
    Q_INVOKABLE void open(const QString& id, const QJSValue& outcome = {});
    Q_INVOKABLE void close();
    [[nodiscard]] bool isOpen() const;
    Q_INVOKABLE void setMobileDeviceToken(const QString& token);
    [[nodiscard]] bool attachmentsAllowed() const;
    void setAttachmentsAllowed(bool areAllowed);

 Q_SIGNALS:
    void isOpenChanged();
    /// Through this object.
    void attachmentsAllowedChanged();

 private:
    std::unique_ptr<Observation> mObservation;
};

}  // namespace merovanta::quick
