#pragma once

#include <memory>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/Message/MessageSender.h"
#include "Platform/Timer.h"

namespace merovanta {

/// Keeps the stream alive with one message a second that carries nothing but its time. Thread: main.
class PingSender : public std::enable_shared_from_this<PingSender> {
 public:
    explicit PingSender(std::shared_ptr<ApplicationConfigWrapper> applicationConfig);

    /// Starts, on the main queue, to ping over this sender; replaces what ran before.
    void start(std::shared_ptr<MessageSender> messageSender);

    /// Ends the pinging.
    void invalidate();

 private:
    void schedule();
    void tick();

    const double pingInterval = 1.0;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::unique_ptr<Timer> timer;
    std::shared_ptr<MessageSender> messageSender;
};

}  // namespace merovanta
