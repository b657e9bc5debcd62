#pragma once

#include <array>
#include <cstdint>

#include "Moment.h"

namespace merovanta::devservice {

/// Events a second over the last five seconds, in constant memory.
class RateMeter {
 public:
    void add(Moment now, std::uint64_t amount);
    double perSecond(Moment now) const;

 private:
    static constexpr std::int64_t kBucketMilliseconds = 500;
    static constexpr std::int64_t kBuckets = 10;

    struct Bucket {
        std::int64_t number = -1;
        std::uint64_t amount = 0;
    };

    std::array<Bucket, kBuckets> buckets_;
    Moment first_{};
};

}  // namespace merovanta::devservice
