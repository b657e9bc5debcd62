#include "Qt/Quick/PaintSerialQuick.h"

#include <atomic>

namespace merovanta::quick {

namespace {

std::atomic<std::uint64_t> last{0};
std::atomic<std::uint64_t> lastOutdated{0};

}  // namespace

std::uint64_t PaintSerialQuick::next() {
    return ++last;
}

void PaintSerialQuick::outdateAll() {
    lastOutdated = next();
}

std::uint64_t PaintSerialQuick::outdated() {
    return lastOutdated;
}

}  // namespace merovanta::quick
