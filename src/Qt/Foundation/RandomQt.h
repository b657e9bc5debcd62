#pragma once

#include "Platform/Random.h"

namespace merovanta::qt {

class RandomQt final : public Random {
 public:
    result_type operator()() override;
};

}  // namespace merovanta::qt
