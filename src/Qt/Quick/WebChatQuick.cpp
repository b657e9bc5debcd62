#include "Qt/Quick/WebChatQuick.h"

#include <Merovanta/Merovanta.h>

#include "Qt/Quick/CallbackQuick.h"

namespace merovanta::quick {

WebChatQuick::WebChatQuick(QObject* parent)
    : QObject(parent),
      mObservation(Merovanta::webChat().observe([this](bool /*isOpen*/) { emit isOpenChanged(); })) {}

void WebChatQuick::open(const QString& id, const QJSValue& outcome) {
    bool isRefused = false;
    const auto callback = CallbackQuick::of(*this, outcome, isRefused);
    if (!isRefused) Merovanta::webChat().open(id.toStdString(), outcomeOf(callback));
}

void WebChatQuick::close() {
    Merovanta::webChat().close();
}

bool WebChatQuick::isOpen() const {
    return Merovanta::webChat().isOpen();
}

void WebChatQuick::setMobileDeviceToken(const QString& token) {
    Merovanta::webChat().setMobileDeviceToken(token.toStdString());
}

bool WebChatQuick::attachmentsAllowed() const {
    return Merovanta::webChat().attachmentsAllowed();
}

void WebChatQuick::setAttachmentsAllowed(bool areAllowed) {
    if (areAllowed == attachmentsAllowed()) return;
    Merovanta::webChat().setAttachmentsAllowed(areAllowed);
    emit attachmentsAllowedChanged();
}

}  // namespace merovanta::quick
