#include "Qt/Foundation/VendorQt.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>
#include <QtCore/QSysInfo>
#include <QtCore/QUuid>

namespace merovanta::qt {

namespace {

// Any fixed value will do: it keeps these identifiers apart from everyone else's hashes of the machine's.
const QUuid identifierSpace("{6f2c1b0e-8d51-4a6b-9c37-2b1f0f6a7d44}");

QUuid storedIdentifier() {
    QSettings settings(vendorName(), QStringLiteral("Merovanta"));
    const QString key = QStringLiteral("identifierForVendor");
    QUuid identifier(settings.value(key).toString());
    if (!identifier.isNull()) return identifier;
    identifier = QUuid::createUuid();
    settings.setValue(key, identifier.toString(QUuid::WithoutBraces));
    settings.sync();
    return settings.status() == QSettings::NoError ? identifier : QUuid();
}

}  // namespace

QString vendorName() {
    if (!QCoreApplication::organizationName().isEmpty()) return QCoreApplication::organizationName();
    if (!QCoreApplication::organizationDomain().isEmpty()) return QCoreApplication::organizationDomain();
    if (!QCoreApplication::applicationName().isEmpty()) return QCoreApplication::applicationName();
    return QStringLiteral("Merovanta");
}

std::optional<std::string> identifierForVendor() {
    const QByteArray machine = QSysInfo::machineUniqueId();
    const QUuid identifier = machine.isEmpty()
                                 ? storedIdentifier()
                                 : QUuid::createUuidV5(identifierSpace, machine + vendorName().toUtf8());
    if (identifier.isNull()) return std::nullopt;
    return identifier.toString(QUuid::WithoutBraces).toUpper().toStdString();
}

}  // namespace merovanta::qt
