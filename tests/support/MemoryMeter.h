#pragma once

#include <cstdint>

namespace merovanta::testing {

/// The bytes that the process has allocated and not freed. Under a sanitizer, which brings its own
/// allocator, always 0: there the leak check stands in.
[[nodiscard]] std::int64_t bytesInUse();

}  // namespace merovanta::testing
