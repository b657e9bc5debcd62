#include "General/Panoptra/Network/Message/PingSender.h"

#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

PingSender::PingSender(std::shared_ptr<ApplicationConfigWrapper> wrapper)
    : applicationConfig(std::move(wrapper)) {}

void PingSender::start(std::shared_ptr<MessageSender> sender) {
    messageSender = std::move(sender);
    ViewUtils::runOnMainQueue([weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->schedule();
    });
}

void PingSender::invalidate() {
    timer.reset();
    messageSender.reset();
}

void PingSender::schedule() {
    // Invalidated again before its turn came.
    if (!messageSender) return;
    timer = platform::current().timers().schedule(seconds(pingInterval), true, [this] { tick(); });
}

void PingSender::tick() {
    assertMainThread();
    Log::debug("Execute ping interval task");
    messageSender->sendPing(applicationConfig->startTime(), [](const std::optional<StringError>& error) {
        if (error) Log::warning("Ping sending failed: " + error->errorDescription());
    });
}

}  // namespace merovanta
