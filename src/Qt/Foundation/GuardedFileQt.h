#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <atomic>

namespace merovanta::qt {

/// A file that came from outside, for a reader that takes long over some: it ends, with an error, some
/// seconds after it was opened, once it is cancelled, and when the application ends.
class GuardedFileQt final : public QFile {
 public:
    GuardedFileQt(const QString& path, const std::atomic<bool>& isCancelled);

    [[nodiscard]] bool isOver() const;

 protected:
    qint64 readData(char* data, qint64 maximumSize) override;

 private:
    const std::atomic<bool>& mIsCancelled;
    const QDeadlineTimer mDeadline;
};

}  // namespace merovanta::qt
