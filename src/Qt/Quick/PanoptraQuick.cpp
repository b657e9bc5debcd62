#include "Qt/Quick/PanoptraQuick.h"

#include <Merovanta/Merovanta.h>

namespace merovanta::quick {

PanoptraQuick::PanoptraQuick(QObject* parent) : QObject(parent) {}

void PanoptraQuick::start() {
    Merovanta::panoptra().start();
}

void PanoptraQuick::start(const QString& tenantId, const QString& token) {
    Merovanta::panoptra().start(tenantId.toStdString(), token.toStdString());
}

void PanoptraQuick::preferWebSocket(bool isPreferred) {
    Merovanta::panoptra().preferWebSocket(isPreferred);
}

void PanoptraQuick::stop() {
    Merovanta::panoptra().stop();
}

void PanoptraQuick::tag(const QString& text) {
    Merovanta::panoptra().tag(text.toStdString());
}

QString PanoptraQuick::shareId() const {
    return QString::fromStdString(Merovanta::panoptra().shareId());
}

bool PanoptraQuick::connected() const {
    return Merovanta::panoptra().connected();
}

}  // namespace merovanta::quick
