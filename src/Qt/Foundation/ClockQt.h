#pragma once

#include "Platform/Clock.h"
#include "Platform/ForwardTime.h"

namespace merovanta::qt {

class ClockQt final : public Clock {
 public:
    [[nodiscard]] std::chrono::milliseconds sinceEpoch() override;
    void restart() override { mTime.restart(); }

 private:
    ForwardTime mTime;
};

}  // namespace merovanta::qt
