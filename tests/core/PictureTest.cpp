#include <gmock/gmock.h>

#include "General/Panoptra/Monitoring/ScreenshotEncoder.h"
#include "General/Panoptra/Util/ImageUtils.h"
#include "support/LibraryTest.h"
#include "support/Picture.h"

namespace merovanta::testing {
namespace {

PixelBuffer noise(std::size_t width, std::size_t height, unsigned seed) {
    PixelBuffer pixels;
    pixels.resize(width, height);
    std::mt19937 random(seed);
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x)
            pixels.row(y)[x] = 0xFF000000 | static_cast<std::uint32_t>(random());
    }
    return pixels;
}

/// The average of the pixels that exist below one small pixel, computed the slow way.
std::uint32_t plainAverage(const PixelBuffer& source, std::size_t x, std::size_t y) {
    std::uint32_t result = 0xFF000000;
    for (unsigned shift : {0U, 8U, 16U}) {
        std::uint32_t sum = 0;
        std::uint32_t count = 0;
        for (std::size_t row = 3 * y; row < std::min(3 * y + 3, source.height()); ++row) {
            for (std::size_t column = 3 * x; column < std::min(3 * x + 3, source.width());
                 ++column, ++count) {
                sum += source.row(row)[column] >> shift & 0xFF;
            }
        }
        result |= (sum + count / 2) / count << shift;
    }
    return result;
}

TEST(PictureTest, EachSmallPixelIsTheAverageOfItsBlock) {
    PixelBuffer small;
    for (const auto& [width, height] : {std::pair{9, 6}, {10, 7}, {11, 8}, {1, 1}, {2, 5}, {300, 301}}) {
        const PixelBuffer source =
            noise(static_cast<std::size_t>(width), static_cast<std::size_t>(height), 7);
        ImageUtils::shrinkToThird(source, small);
        ASSERT_EQ(small.width(), static_cast<std::size_t>(width + 2) / 3);
        ASSERT_EQ(small.height(), static_cast<std::size_t>(height + 2) / 3);
        for (std::size_t y = 0; y < small.height(); ++y) {
            for (std::size_t x = 0; x < small.width(); ++x) {
                ASSERT_EQ(small.row(y)[x], plainAverage(source, x, y)) << x << ", " << y;
            }
        }
    }
    // All values of a sum of nine.
    PixelBuffer grey;
    grey.resize(3, 3);
    for (std::uint32_t sum = 0; sum <= 9 * 255; ++sum) {
        for (std::size_t i = 0; i < 9; ++i) {
            grey.row(i / 3)[i % 3] = static_cast<std::uint32_t>(sum / 9 + (i < sum % 9 ? 1 : 0));
        }
        ImageUtils::shrinkToThird(grey, small);
        ASSERT_EQ(small.row(0)[0], 0xFF000000 | (sum + 4) / 9);
    }
}

TEST(PictureTest, OnlyAChangedPictureIsEncoded) {
    ScreenshotEncoder encoder;
    const auto encode = [&encoder](unsigned seed) {
        return encoder.encode(MaskedFrame({.pixels = noise(1170, 2532, seed)}));
    };
    const auto first = encode(1);
    ASSERT_TRUE(first);
    EXPECT_FALSE(encode(1));
    const auto other = encode(2);
    ASSERT_TRUE(other);
    const auto again = encode(1);
    EXPECT_EQ(again, first);
    encoder.reset();
    EXPECT_EQ(encode(1), first);
    EXPECT_EQ(Picture(*first).width(), 390);
    EXPECT_EQ(Picture(*first).height(), 844);
    EXPECT_FALSE(ScreenshotEncoder().encode(MaskedFrame({})));
}

TEST(PictureTest, TheQualityIsForty) {
    const auto jpeg = ScreenshotEncoder().encode(MaskedFrame({.pixels = noise(30, 30, 1)}));
    // The first entry of the standard luminance table, 16, is scaled by 5000 / 40 per cent.
    EXPECT_EQ(Picture::firstQuantizer(jpeg.value()), 20);
}

}  // namespace
}  // namespace merovanta::testing
