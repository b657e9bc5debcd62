#pragma once

#include <QtCore/QDeadlineTimer>
#include <atomic>
#include <chrono>

#include "Qt/Foundation/ApplicationLifeQt.h"

namespace merovanta::qt {

/// The time that the reading of a document may take from now on: until it is cancelled, the application ends,
/// or it has lasted too long.
class ReadingTimeQt {
 public:
    static constexpr int maximumSeconds = 10;

    explicit ReadingTimeQt(const std::atomic<bool>& isCancelled) : mIsCancelled(isCancelled) {}

    [[nodiscard]] bool isOver() const {
        return mIsCancelled || mDeadline.hasExpired() ||
               ApplicationLifeQt::instance().phase() == ApplicationLifeQt::Phase::ended;
    }

 private:
    const std::atomic<bool>& mIsCancelled;
    const QDeadlineTimer mDeadline{std::chrono::seconds(maximumSeconds)};
};

}  // namespace merovanta::qt
