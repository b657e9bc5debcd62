#include "Qt/Foundation/FileManagerQt.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

namespace merovanta::qt {

namespace {

/// Whoever finds the directory gone could put a link or an open directory in its place.
bool isPrivate(const QString& path) {
    const QFileInfo info(path);
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                            QFile::WriteOther | QFile::ExeOther;
    return info.isDir() && !info.isSymLink() && info.isWritable() && !(info.permissions() & others);
}

}  // namespace

std::string FileManagerQt::temporaryDirectory() {
    const std::scoped_lock lock(mMutex);
    if (!mPath.empty() && isPrivate(QString::fromStdString(mPath))) return mPath;
    QTemporaryDir directory(QDir::tempPath() + QStringLiteral("/merovanta-XXXXXX"));
    directory.setAutoRemove(false);
    mPath = directory.isValid() ? directory.path().toStdString() : std::string();
    return mPath;
}

}  // namespace merovanta::qt
