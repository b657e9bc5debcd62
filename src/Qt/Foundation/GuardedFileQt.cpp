#include "Qt/Foundation/GuardedFileQt.h"

#include <chrono>

#include "Qt/Foundation/ApplicationLifeQt.h"

namespace merovanta::qt {

GuardedFileQt::GuardedFileQt(const QString& path, const std::atomic<bool>& isCancelled)
    : QFile(path), mIsCancelled(isCancelled), mDeadline(std::chrono::seconds(10)) {}

bool GuardedFileQt::isOver() const {
    return mIsCancelled || mDeadline.hasExpired() ||
           ApplicationLifeQt::instance().phase() == ApplicationLifeQt::Phase::ended;
}

qint64 GuardedFileQt::readData(char* data, qint64 maximumSize) {
    return isOver() ? -1 : QFile::readData(data, maximumSize);
}

}  // namespace merovanta::qt
