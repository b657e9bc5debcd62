#include "Qt/Foundation/GuardedFileQt.h"

namespace merovanta::qt {

GuardedFileQt::GuardedFileQt(const QString& path, const std::atomic<bool>& isCancelled)
    : QFile(path), mTime(isCancelled) {}

qint64 GuardedFileQt::readData(char* data, qint64 maximumSize) {
    return isOver() ? -1 : QFile::readData(data, maximumSize);
}

}  // namespace merovanta::qt
