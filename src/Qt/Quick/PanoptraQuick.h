#pragma once

#include <Merovanta/Observation.h>
#include <Merovanta/SessionStatus.h>

#include <QtQml/qqmlregistration.h>
#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/QJSValue>
#include <memory>

namespace merovanta::quick {

/// MerovantaPanoptra for QML. The properties are those of SessionStatus, the enumerations by the names of
/// their values; what is absent is an empty string. An outcome is a function that is called once, with the
/// reason why not, or with undefined.
class PanoptraQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString state READ state NOTIFY stateChanged FINAL)
    Q_PROPERTY(bool running READ isRunning NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString endReason READ endReason NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString failure READ failure NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString startedBy READ startedBy NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString transport READ transport NOTIFY stateChanged FINAL)
    Q_PROPERTY(QDateTime since READ since NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString shareId READ shareId NOTIFY shareIdChanged FINAL)

 public:
    explicit PanoptraQuick(QObject* parent);

    [[nodiscard]] QString state() const;
    [[nodiscard]] bool isRunning() const { return mStatus.isRunning(); }
    [[nodiscard]] QString endReason() const;
    [[nodiscard]] QString failure() const { return QString::fromStdString(mStatus.failure); }
    [[nodiscard]] QString startedBy() const;
    [[nodiscard]] QString transport() const { return QString::fromStdString(mStatus.transport); }
    [[nodiscard]] QDateTime since() const;
    [[nodiscard]] QString shareId() const { return QString::fromStdString(mStatus.shareId); }

    Q_INVOKABLE void start(const QJSValue& outcome = {});
    Q_INVOKABLE void start(const QString& tenantId, const QString& token, const QJSValue& outcome = {});
    Q_INVOKABLE void preferWebSocket(bool isPreferred);
    Q_INVOKABLE void stop();
    Q_INVOKABLE void tag(const QJSValue& text, const QJSValue& outcome = {});
    /// Either may be undefined.
    Q_INVOKABLE void registerCallbacks(const QJSValue& startCallback, const QJSValue& stopCallback);
    [[nodiscard]] Q_INVOKABLE bool connected() const;

 Q_SIGNALS:
    /// The session has come to another state, and all that is known of it is new.
    void stateChanged();
    void shareIdChanged();

 private:
    void changed(const SessionStatus& status);

    SessionStatus mStatus;
    std::unique_ptr<Observation> mObservation;
};

}  // namespace merovanta::quick
