#pragma once

#include <atomic>
#include <memory>

#include "Platform/Timer.h"

namespace merovanta::test {

/// What became of the things asked for before there was an application object.
struct EarlyBird {
    std::atomic<bool> task = false;
    std::atomic<bool> timer = false;
    std::atomic<bool> completion = false;
    std::unique_ptr<Timer> handle;
};

[[nodiscard]] EarlyBird& earlyBird();

}  // namespace merovanta::test
