#include "RateMeter.h"

#include <algorithm>

namespace merovanta::devservice {

void RateMeter::add(Moment now, std::uint64_t amount) {
    if (first_ == Moment{}) first_ = now;
    const std::int64_t number = now.time_since_epoch().count() / kBucketMilliseconds;
    Bucket& bucket = buckets_[static_cast<std::size_t>(number % kBuckets)];
    if (bucket.number != number) bucket = {number, 0};
    bucket.amount += amount;
}

double RateMeter::perSecond(Moment now) const {
    const std::int64_t number = now.time_since_epoch().count() / kBucketMilliseconds;
    std::uint64_t sum = 0;
    for (const Bucket& bucket : buckets_) {
        if (bucket.number > number - kBuckets && bucket.number <= number) sum += bucket.amount;
    }
    // A stream younger than the window is measured over its own age.
    const double age = static_cast<double>((now - first_).count()) / 1000.0;
    const double window = static_cast<double>(kBuckets * kBucketMilliseconds) / 1000.0;
    return static_cast<double>(sum) / std::clamp(age, 1.0, window);
}

}  // namespace merovanta::devservice
