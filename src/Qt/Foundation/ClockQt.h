#pragma once

#include "Platform/Clock.h"

namespace merovanta::qt {

class ClockQt final : public Clock {
 public:
    [[nodiscard]] std::chrono::milliseconds sinceEpoch() const override;
};

}  // namespace merovanta::qt
