#include "Qt/Foundation/DocumentTypeQt.h"

#include <QtCore/QMimeDatabase>
#include <QtCore/QMimeType>
#include <algorithm>
#include <array>

namespace merovanta::qt {

namespace {

constexpr std::array externalTypes{
    "application/vnd.oasis.opendocument.text",
    "application/vnd.oasis.opendocument.spreadsheet",
    "application/vnd.oasis.opendocument.presentation",
    "application/vnd.oasis.opendocument.graphics",
    "application/vnd.openxmlformats-officedocument.wordprocessingml.document",
    "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet",
    "application/vnd.openxmlformats-officedocument.presentationml.presentation",
    "application/msword",
    "application/vnd.ms-excel",
    "application/vnd.ms-powerpoint",
    "application/rtf",
    "application/epub+zip",
    "application/zip",
    "application/gzip",
    "application/x-7z-compressed",
    "application/x-tar",
};

bool isExternal(const QMimeType& type) {
    const QString name = type.name();
    if (type.inherits(QStringLiteral("text/plain")) && name != QLatin1String("application/rtf")) return false;
    return name.startsWith(QLatin1String("audio/")) || name.startsWith(QLatin1String("video/")) ||
           std::any_of(externalTypes.begin(), externalTypes.end(),
                       [&](const char* known) { return name == QLatin1String(known); });
}

/// The other application goes by the name; what is in the file must not contradict it.
bool fits(const QMimeType& content, const QMimeType& type) {
    return content.isDefault() || type.inherits(content.name()) || isExternal(content);
}

}  // namespace

DocumentType documentTypeOf(const QString& path) {
    const QMimeDatabase database;
    const QMimeType type = database.mimeTypeForFile(path);
    const QMimeType content = database.mimeTypeForFile(path, QMimeDatabase::MatchContent);
    const QString text = QStringLiteral("text/plain");
    if (type.inherits(QStringLiteral("application/pdf"))) return DocumentType::pdf;
    const bool isImage = type.name().startsWith(QLatin1String("image/"));
    if (isImage && !type.name().contains(QLatin1String("svg"))) return DocumentType::picture;
    if (isExternal(type) && fits(content, type)) return DocumentType::external;
    const bool isText = type.inherits(text) || (isExternal(type) && content.inherits(text));
    return isText ? DocumentType::text : DocumentType::unshowable;
}

}  // namespace merovanta::qt
