#include "Qt/Quick/WebChatQuick.h"

#include <Merovanta/Merovanta.h>

namespace merovanta::quick {

WebChatQuick::WebChatQuick(QObject* parent) : QObject(parent) {}

void WebChatQuick::open(const QString& id) {
    Merovanta::webChat().open(id.toStdString());
}

}  // namespace merovanta::quick
