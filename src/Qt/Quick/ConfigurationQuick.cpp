#include "Qt/Quick/ConfigurationQuick.h"

#include <Merovanta/Merovanta.h>

namespace merovanta::quick {

ConfigurationQuick::ConfigurationQuick(QObject* parent) : QObject(parent) {}

void ConfigurationQuick::setServer(const QString& hostname) {
    Merovanta::configuration().setServer(hostname.toStdString());
}

void ConfigurationQuick::setCdnServer(const QString& hostname) {
    Merovanta::configuration().setCdnServer(hostname.toStdString());
}

QString ConfigurationQuick::server() const {
    return QString::fromStdString(Merovanta::configuration().server());
}

QString ConfigurationQuick::cdnPath() const {
    return QString::fromStdString(Merovanta::configuration().cdnPath());
}

}  // namespace merovanta::quick
