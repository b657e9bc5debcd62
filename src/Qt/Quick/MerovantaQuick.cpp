#include "Qt/Quick/MerovantaQuick.h"

#include <Merovanta/Merovanta.h>

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace merovanta::quick {

MerovantaQuick::MerovantaQuick(QObject* parent) : QObject(parent) {}

MerovantaQuick* MerovantaQuick::qmlAttachedProperties(QObject* object) {
    return new MerovantaQuick(object);
}

int MerovantaQuick::tagOf(const QObject& object) {
    const QObject* const attached = qmlAttachedPropertiesObject<MerovantaQuick>(&object, false);
    return attached == nullptr ? 0 : static_cast<const MerovantaQuick*>(attached)->mTag;
}

void MerovantaQuick::setTag(int tag) {
    if (mTag == tag) return;
    mTag = tag;
    // A new tag may mean a new mask, which must show in a picture although nothing else was painted.
    const auto* const item = qobject_cast<QQuickItem*>(parent());
    if (item != nullptr && item->window() != nullptr) item->window()->update();
    emit tagChanged();
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

}  // namespace merovanta::quick
