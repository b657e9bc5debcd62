#pragma once

#include <atomic>
#include <memory>

#include "Platform/Timer.h"
#include "Platform/WebSocket.h"

namespace merovanta::test {

/// What became of the things asked for before there was an application object.
struct EarlyBird {
    std::atomic<bool> task = false;
    std::atomic<bool> timer = false;
    std::atomic<bool> completion = false;
    std::atomic<bool> socketError = false;
    std::unique_ptr<Timer> handle;
    std::unique_ptr<WebSocket> socket;
};

[[nodiscard]] EarlyBird& earlyBird();

}  // namespace merovanta::test
