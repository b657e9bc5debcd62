#include "Qt/Foundation/UserDefaultsQt.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>

#include "Qt/Foundation/VendorQt.h"

namespace merovanta::qt {

namespace {

QString textOf(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// Slashes in a name would make a group of it.
QString nameOf(std::string_view key) {
    return QString::fromLatin1(QUrl::toPercentEncoding(textOf(key)));
}

}  // namespace

UserDefaultsQt::UserDefaultsQt() {
    ApplicationLifeQt::instance().add(*this);
}

UserDefaultsQt::~UserDefaultsQt() {
    ApplicationLifeQt::instance().remove(*this);
}

std::optional<std::string> UserDefaultsQt::string(std::string_view key) {
    if (QSettings* const store = settings()) {
        const QVariant value = store->value(nameOf(key));
        if (value.isValid()) return value.toString().toStdString();
    }
    const auto fallback = mDefaults.find(key);
    if (fallback == mDefaults.end()) return std::nullopt;
    return fallback->second;
}

void UserDefaultsQt::set(std::string_view key, std::string_view value) {
    if (QSettings* const store = settings()) store->setValue(nameOf(key), textOf(value));
}

void UserDefaultsQt::remove(std::string_view key) {
    if (QSettings* const store = settings()) store->remove(nameOf(key));
}

void UserDefaultsQt::registerDefault(std::string_view key, std::string_view value) {
    mDefaults.insert_or_assign(std::string(key), std::string(value));
}

void UserDefaultsQt::synchronize() {
    if (QSettings* const store = settings()) store->sync();
}

void UserDefaultsQt::applicationEnding() {
    mSettings.reset();
}

QSettings* UserDefaultsQt::settings() {
    if (ApplicationLifeQt::instance().phase() != ApplicationLifeQt::Phase::running) return nullptr;
    if (!mSettings) {
        mSettings = std::make_unique<QSettings>(vendorName(), QCoreApplication::applicationName());
        mSettings->beginGroup(QStringLiteral("Merovanta"));
    }
    return mSettings.get();
}

}  // namespace merovanta::qt
