#pragma once

#include <Merovanta/Export.h>

#include <QtQml/qqml.h>
#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtQml/QJSValue>
#include <optional>

#include "Qt/Quick/CoBrowsingQuick.h"
#include "Qt/Quick/ConfigurationQuick.h"
#include "Qt/Quick/MarksQuick.h"
#include "Qt/Quick/PanoptraQuick.h"
#include "Qt/Quick/PrivacyQuick.h"
#include "Qt/Quick/UserQuick.h"
#include "Qt/Quick/WebChatQuick.h"

namespace merovanta::quick {

/// What QML knows as "Merovanta": the tag and the marks of privacy of the object it is attached to, and the
/// library's facades.
class MEROVANTA_INTERNAL MerovantaQuick final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Merovanta)
    QML_UNCREATABLE("Merovanta is only attached")
    QML_ATTACHED(merovanta::quick::MerovantaQuick)
    Q_PROPERTY(int tag READ tag WRITE setTag NOTIFY tagChanged FINAL)
    Q_PROPERTY(bool masked READ isMasked WRITE setMasked RESET resetMasked NOTIFY maskedChanged FINAL)
    Q_PROPERTY(bool tapsPrivate READ areTapsPrivate WRITE setTapsPrivate NOTIFY tapsPrivateChanged FINAL)
    Q_PROPERTY(merovanta::quick::PrivacyQuick* privacy READ privacy CONSTANT FINAL)
    Q_PROPERTY(merovanta::quick::PanoptraQuick* panoptra READ panoptra CONSTANT FINAL)
    Q_PROPERTY(merovanta::quick::CoBrowsingQuick* coBrowsing READ coBrowsing CONSTANT FINAL)
    Q_PROPERTY(merovanta::quick::WebChatQuick* webChat READ webChat CONSTANT FINAL)
    Q_PROPERTY(merovanta::quick::UserQuick* user READ user CONSTANT FINAL)
    Q_PROPERTY(merovanta::quick::ConfigurationQuick* configuration READ configuration CONSTANT FINAL)

 public:
    explicit MerovantaQuick(QObject* parent);
    ~MerovantaQuick() override;

    static MerovantaQuick* qmlAttachedProperties(QObject* object);

    /// The one attached to this object, from now on if there was none; null while the object is destroyed.
    [[nodiscard]] static MerovantaQuick* attachedTo(QObject& object);

    // Also while the main thread stands still:
    /// The marks of this object; null if nothing was attached to it.
    [[nodiscard]] static const MarksQuick* marksOf(const QObject& object);
    /// Whether any object is marked as private, and any as keeping its taps.
    [[nodiscard]] static bool isAnyMasked();
    [[nodiscard]] static bool areAnyTapsPrivate();

    [[nodiscard]] int tag() const { return mMarks.tag; }
    void setTag(int tag);
    [[nodiscard]] bool isMasked() const { return mMarks.masked.value_or(false); }
    void setMasked(bool masked) { mark(masked); }
    void resetMasked() { mark(std::nullopt); }
    void mark(std::optional<bool> masked);
    [[nodiscard]] bool areTapsPrivate() const { return mMarks.tapsPrivate; }
    void setTapsPrivate(bool tapsPrivate);
    /// Makes it one of the library's own, in which nothing is covered for its content.
    void setOwn() { mMarks.isOwn = true; }
    /// Makes it, a plain opaque rectangle of the library's own, hide the private views behind it.
    void setGround() { mMarks.isGround = true; }
    [[nodiscard]] PrivacyQuick* privacy() const;
    [[nodiscard]] PanoptraQuick* panoptra();
    [[nodiscard]] CoBrowsingQuick* coBrowsing();
    [[nodiscard]] WebChatQuick* webChat();
    [[nodiscard]] UserQuick* user();
    [[nodiscard]] ConfigurationQuick* configuration();

    Q_INVOKABLE void initConfig(const QString& tenantId, const QString& token);
    /// A CustomConfiguration: an object with tenantId, token and, if the hosts are to be set, serverUrl and
    /// cdnUrl.
    Q_INVOKABLE void initConfig(const QJSValue& configuration);

 Q_SIGNALS:
    void tagChanged();
    void maskedChanged();
    void tapsPrivateChanged();

 private:
    MarksQuick mMarks;
    PanoptraQuick* mPanoptra = nullptr;
    CoBrowsingQuick* mCoBrowsing = nullptr;
    WebChatQuick* mWebChat = nullptr;
    UserQuick* mUser = nullptr;
    ConfigurationQuick* mConfiguration = nullptr;
};

}  // namespace merovanta::quick
