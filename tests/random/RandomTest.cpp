#include <Merovanta/Merovanta.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

#include "random/Step.h"
#include "random/World.h"

namespace merovanta::testing {
namespace {

// An optimised build takes less than a millisecond for one; the others are there for what they check besides.
#ifdef __OPTIMIZE__
constexpr const char* sequences = "10000";
#else
constexpr const char* sequences = "300";
#endif

TEST(RandomTest, WhateverOvertakesWhatTheSessionKeepsItsPromises) {
    // RC_PARAMS="seed=…" repeats a run.
    if (std::getenv("RC_PARAMS") == nullptr) {
        const std::string seed = std::to_string(std::random_device()());
        const std::string parameters = "seed=" + seed + " max_success=" + sequences;
        setenv("RC_PARAMS", parameters.c_str(), 1);
    }
    std::cerr << "RC_PARAMS=\"" << std::getenv("RC_PARAMS") << "\"\n";
    // Thousands of lines in each sequence.
    Merovanta::log().setSink([](const LogLine&) {}, MerovantaLog::StandardOutput::isSilent);
    EXPECT_TRUE(rc::check("a session keeps its promises", [] {
        const auto sequence = *steps();
        World world(sequence.size() % 2 == 1);
        for (const auto& step : sequence) {
            world.run(step);
            if (!world.violation().empty()) RC_FAIL(world.violation());
        }
        world.settle();
        if (!world.violation().empty()) RC_FAIL(world.violation());
    }));
}

}  // namespace
}  // namespace merovanta::testing
