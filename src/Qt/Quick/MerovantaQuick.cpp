#include "Qt/Quick/MerovantaQuick.h"

#include <Merovanta/Merovanta.h>

#include <QtCore/QHash>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "Qt/Quick/CallbackQuick.h"
#include "Qt/Quick/PaintSerialQuick.h"

namespace merovanta::quick {

namespace {

/// All that are attached, by the objects that they are attached to. Asking here is many times faster than
/// asking the engine. Changed on the main thread alone.
struct Registry {
    QHash<const QObject*, const MarksQuick*> marks;
    int masked = 0;
    int keepingTaps = 0;
};

Registry& registry() {
    // Never destroyed: objects may outlive main().
    static auto* const made = new Registry();
    return *made;
}

}  // namespace

MerovantaQuick::MerovantaQuick(QObject* parent) : QObject(parent) {
    registry().marks.insert(parent, &mMarks);
}

MerovantaQuick::~MerovantaQuick() {
    setTapsPrivate(false);
    resetMasked();
    registry().marks.remove(parent());
}

MerovantaQuick* MerovantaQuick::qmlAttachedProperties(QObject* object) {
    return new MerovantaQuick(object);
}

MerovantaQuick* MerovantaQuick::attachedTo(QObject& object) {
    return static_cast<MerovantaQuick*>(qmlAttachedPropertiesObject<MerovantaQuick>(&object, true));
}

const MarksQuick* MerovantaQuick::marksOf(const QObject& object) {
    return registry().marks.value(&object);
}

bool MerovantaQuick::isAnyMasked() {
    return registry().masked > 0;
}

bool MerovantaQuick::areAnyTapsPrivate() {
    return registry().keepingTaps > 0;
}

void MerovantaQuick::setTag(int tag) {
    if (mMarks.tag == tag) return;
    mMarks.tag = tag;
    // It may mean a new mask, which must show in a picture although nothing was painted.
    PaintSerialQuick::outdateAll();
    emit tagChanged();
}

void MerovantaQuick::mark(std::optional<bool> masked) {
    if (mMarks.masked == masked) return;
    registry().masked += (masked.value_or(false) ? 1 : 0) - (isMasked() ? 1 : 0);
    mMarks.masked = masked;
    PaintSerialQuick::outdateAll();
    emit maskedChanged();
}

void MerovantaQuick::setTapsPrivate(bool tapsPrivate) {
    if (mMarks.tapsPrivate == tapsPrivate) return;
    registry().keepingTaps += tapsPrivate ? 1 : -1;
    mMarks.tapsPrivate = tapsPrivate;
    emit tapsPrivateChanged();
}

PrivacyQuick* MerovantaQuick::privacy() const {
    return &PrivacyQuick::instance();
}

PanoptraQuick* MerovantaQuick::panoptra() {
    if (mPanoptra == nullptr) mPanoptra = new PanoptraQuick(this);
    return mPanoptra;
}

CoBrowsingQuick* MerovantaQuick::coBrowsing() {
    if (mCoBrowsing == nullptr) mCoBrowsing = new CoBrowsingQuick(this);
    return mCoBrowsing;
}

WebChatQuick* MerovantaQuick::webChat() {
    if (mWebChat == nullptr) mWebChat = new WebChatQuick(this);
    return mWebChat;
}

UserQuick* MerovantaQuick::user() {
    if (mUser == nullptr) mUser = new UserQuick(this);
    return mUser;
}

ConfigurationQuick* MerovantaQuick::configuration() {
    if (mConfiguration == nullptr) mConfiguration = new ConfigurationQuick(this);
    return mConfiguration;
}

void MerovantaQuick::initConfig(const QString& tenantId, const QString& token) {
    Merovanta::initConfig(tenantId.toStdString(), token.toStdString());
}

void MerovantaQuick::initConfig(const QJSValue& configuration) {
    const auto text = [&](const char* name) -> std::optional<std::string> {
        const QJSValue value = configuration.property(QLatin1String(name));
        if (value.isUndefined() || value.isNull()) return std::nullopt;
        return value.toString().toStdString();
    };
    const auto tenantId = text("tenantId");
    const auto token = text("token");
    if (!tenantId || !token)
        return CallbackQuick::throwTypeError(
            *this, QStringLiteral("A configuration is an object with a tenantId and a token"));
    CustomConfiguration custom(*tenantId, *token);
    if (auto server = text("serverUrl")) custom.setServerUrl(std::move(*server));
    if (auto cdn = text("cdnUrl")) custom.setCdnUrl(std::move(*cdn));
    Merovanta::initConfig(custom);
}

}  // namespace merovanta::quick
