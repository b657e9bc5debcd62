#pragma once

#include <cstdint>
#include <limits>

namespace merovanta {

/// The system's random source; meets the standard library's requirements of a uniform random bit generator.
/// Any thread.
class Random {
 public:
    using result_type = std::uint64_t;

    virtual ~Random() = default;

    /// 64 random bits that cannot be foretold.
    virtual result_type operator()() = 0;

    static constexpr result_type min() { return std::numeric_limits<result_type>::min(); }
    static constexpr result_type max() { return std::numeric_limits<result_type>::max(); }
};

}  // namespace merovanta
