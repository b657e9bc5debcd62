#pragma once

#include <Merovanta/Export.h>

#include <QtCore/QObject>
#include <functional>

namespace merovanta::qt {

/// Runs tasks on the thread that it lives in, one an event. What is still queued when it goes is dropped.
class MEROVANTA_INTERNAL TaskReceiverQt final : public QObject {
 public:
    /// Any thread.
    void post(std::function<void()> task);

 protected:
    bool event(QEvent* event) override;
};

}  // namespace merovanta::qt
