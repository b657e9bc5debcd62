#pragma once

#include <QtQml/qqml.h>
#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>

#include "Qt/Quick/CoBrowsingQuick.h"
#include "Qt/Quick/ConfigurationQuick.h"
#include "Qt/Quick/PanoptraQuick.h"
#include "Qt/Quick/UserQuick.h"
#include "Qt/Quick/WebChatQuick.h"

namespace merovanta::quick {

/// What QML knows as "Merovanta": the tag of the object it is attached to, and the library's facades.
class MerovantaQuick final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Merovanta)
    QML_UNCREATABLE("Merovanta is only attached")
    QML_ATTACHED(MerovantaQuick)
    Q_PROPERTY(int tag READ tag WRITE setTag NOTIFY tagChanged FINAL)
    Q_PROPERTY(merovanta::quick::PanoptraQuick* panoptra READ panoptra CONSTANT FINAL)
    Q_PROPERTY(merovanta::quick::CoBrowsingQuick* coBrowsing READ coBrowsing CONSTANT FINAL)
    Q_PROPERTY(merovanta::quick::WebChatQuick* webChat READ webChat CONSTANT FINAL)
    Q_PROPERTY(merovanta::quick::UserQuick* user READ user CONSTANT FINAL)
    Q_PROPERTY(merovanta::quick::ConfigurationQuick* configuration READ configuration CONSTANT FINAL)

 public:
    explicit MerovantaQuick(QObject* parent);

    static MerovantaQuick* qmlAttachedProperties(QObject* object);

    /// The tag of this object; 0 if nothing was attached to it. Also while the main thread stands still.
    [[nodiscard]] static int tagOf(const QObject& object);

    [[nodiscard]] int tag() const { return mTag; }
    void setTag(int tag);
    [[nodiscard]] PanoptraQuick* panoptra();
    [[nodiscard]] CoBrowsingQuick* coBrowsing();
    [[nodiscard]] WebChatQuick* webChat();
    [[nodiscard]] UserQuick* user();
    [[nodiscard]] ConfigurationQuick* configuration();

    Q_INVOKABLE void initConfig(const QString& tenantId, const QString& token);

 Q_SIGNALS:
    void tagChanged();

 private:
    int mTag = 0;
    PanoptraQuick* mPanoptra = nullptr;
    CoBrowsingQuick* mCoBrowsing = nullptr;
    WebChatQuick* mWebChat = nullptr;
    UserQuick* mUser = nullptr;
    ConfigurationQuick* mConfiguration = nullptr;
};

}  // namespace merovanta::quick
