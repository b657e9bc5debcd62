#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace merovanta::testing {

/// A decoded JPEG picture.
class Picture {
 public:
    explicit Picture(const std::string& jpeg);

    [[nodiscard]] int width() const { return mWidth; }
    [[nodiscard]] int height() const { return mHeight; }

    /// Whether any pixel is this colour (0xffRRGGBB), give or take what the compression does to it.
    [[nodiscard]] bool containsAbout(std::uint32_t color) const;

    /// Whether the pixel is this colour, likewise.
    [[nodiscard]] bool isAbout(std::size_t x, std::size_t y, std::uint32_t color) const;

    /// The first entry of a JPEG's first quantisation table, which tells its quality.
    [[nodiscard]] static int firstQuantizer(const std::string& jpeg);

 private:
    int mWidth = 0;
    int mHeight = 0;
    std::vector<std::uint8_t> mPixels;
};

}  // namespace merovanta::testing
