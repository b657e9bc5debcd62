#include "Qt/Foundation/BundleQt.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include "Qt/Foundation/PropertyListReaderQt.h"

// Refers to the resources by name; otherwise the linker leaves them out of a program that links statically.
// Outside any namespace, as the macro demands.
static void keepResources() {
    Q_INIT_RESOURCE(merovanta_bundles);
}

namespace merovanta::qt {

BundleQt::BundleQt() {
    keepResources();
}

std::optional<nlohmann::json> BundleQt::propertyList(std::string_view bundleIdentifier,
                                                     std::string_view name) {
    const auto text = [](std::string_view part) {
        return QString::fromUtf8(part.data(), static_cast<qsizetype>(part.size()));
    };
    QFile file(QStringLiteral(":/bundles/%1/%2.plist").arg(text(bundleIdentifier), text(name)));
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return PropertyListReaderQt(file).dictionary();
}

}  // namespace merovanta::qt
