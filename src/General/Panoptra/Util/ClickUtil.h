#pragma once

#include "General/Panoptra/Network/Message/Bidirectional/Click.h"

namespace merovanta {

/// Plays the agent's clicks back into the host application. Thread: main.
class ClickUtil {
 public:
    ClickUtil() = delete;

    static void playBack(const Click& click);
};

}  // namespace merovanta
