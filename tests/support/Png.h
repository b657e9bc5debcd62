#pragma once

#include <cstdint>
#include <string>

namespace merovanta::testing {

/// A PNG picture of one colour (0xAARRGGBB).
[[nodiscard]] std::string png(std::uint32_t width, std::uint32_t height, std::uint32_t color);

[[nodiscard]] std::string base64(const std::string& bytes);

}  // namespace merovanta::testing
