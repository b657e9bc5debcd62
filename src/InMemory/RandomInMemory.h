#pragma once

#include <random>

#include "Platform/Random.h"

namespace merovanta::inmemory {

/// The same numbers every time.
class RandomInMemory : public Random {
 public:
    result_type operator()() override { return mEngine(); }

 private:
    std::mt19937_64 mEngine;
};

}  // namespace merovanta::inmemory
