#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace merovanta {

/// A picture in device pixels: one 32-bit word a pixel, 0xffRRGGBB in the machine's byte order (little-endian
/// bytes B, G, R, X), rows top to bottom without gaps. Made to be moved around and reused: resizing to a size
/// that was reached before allocates nothing. A copy shares adopted pixels with its original.
class PixelBuffer {
 public:
    /// Makes room of its own for so many pixels; what they hold is undefined.
    void resize(std::size_t width, std::size_t height) {
        mAdopted.reset();
        mWidth = width;
        mHeight = height;
        mOwn.resize(width * height);
    }

    /// Takes over pixels that a toolkit has made and nobody else writes to, without copying them.
    void adopt(std::shared_ptr<std::uint32_t> pixels, std::size_t width, std::size_t height) {
        mAdopted = std::move(pixels);
        mWidth = width;
        mHeight = height;
    }

    [[nodiscard]] std::size_t width() const { return mWidth; }
    [[nodiscard]] std::size_t height() const { return mHeight; }
    [[nodiscard]] bool isEmpty() const { return mWidth == 0 || mHeight == 0; }

    [[nodiscard]] std::uint32_t* row(std::size_t y) {
        return (mAdopted ? mAdopted.get() : mOwn.data()) + y * mWidth;
    }
    [[nodiscard]] const std::uint32_t* row(std::size_t y) const {
        return (mAdopted ? mAdopted.get() : mOwn.data()) + y * mWidth;
    }

    bool operator==(const PixelBuffer& other) const {
        return mWidth == other.mWidth && mHeight == other.mHeight &&
               std::equal(row(0), row(0) + mWidth * mHeight, other.row(0));
    }

 private:
    std::size_t mWidth = 0;
    std::size_t mHeight = 0;
    std::shared_ptr<std::uint32_t> mAdopted;
    std::vector<std::uint32_t> mOwn;
};

}  // namespace merovanta
