#include "Qt/Quick/WebChatQuick.h"

#include <Merovanta/Merovanta.h>

namespace merovanta::quick {

WebChatQuick::WebChatQuick(QObject* parent) : QObject(parent) {}

void WebChatQuick::open(const QString& id) {
    Merovanta::webChat().open(id.toStdString());
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
