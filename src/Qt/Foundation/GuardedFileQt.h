#pragma once

#include <Merovanta/Export.h>

#include <QtCore/QFile>
#include <atomic>

#include "Qt/Foundation/ReadingTimeQt.h"

namespace merovanta::qt {

/// A file that came from outside, for a reader that takes long over some: it ends, with an error, when
/// the time of reading is over.
class MEROVANTA_INTERNAL GuardedFileQt final : public QFile {
 public:
    GuardedFileQt(const QString& path, const std::atomic<bool>& isCancelled);

    [[nodiscard]] bool isOver() const { return mTime.isOver(); }

 protected:
    qint64 readData(char* data, qint64 maximumSize) override;

 private:
    const ReadingTimeQt mTime;
};

}  // namespace merovanta::qt
