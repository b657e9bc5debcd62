#include "General/Panoptra/Util/ImageUtils.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace merovanta {

namespace {

constexpr std::size_t factor = 3;
constexpr std::size_t channels = 4;

/// Adds up to three rows byte by byte; written so that the compiler vectorises it.
void sumRows(const PixelBuffer& source, std::size_t firstRow, std::size_t rows,
             std::vector<std::uint16_t>& sums) {
    const std::size_t bytes = source.width() * channels;
    const auto at = [&](std::size_t row) {
        // Rows that do not exist at the lower edge are left out of the sum; any row serves as their address.
        return reinterpret_cast<const std::uint8_t*>(source.row(firstRow + std::min(row, rows - 1)));
    };
    const std::uint8_t* const first = at(0);
    const std::uint8_t* const second = at(1);
    const std::uint8_t* const third = at(2);
    std::uint16_t* const sum = sums.data();
    if (rows == factor) {
        for (std::size_t i = 0; i < bytes; ++i) {
            sum[i] = static_cast<std::uint16_t>(first[i] + second[i] + third[i]);
        }
    } else {
        for (std::size_t i = 0; i < bytes; ++i) {
            sum[i] = static_cast<std::uint16_t>(first[i] + (rows == 2 ? second[i] : 0));
        }
    }
}

std::uint32_t average(const std::uint16_t* sums, std::size_t columns, std::uint32_t count) {
    std::uint32_t pixel = 0xFF000000;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        std::uint32_t sum = 0;
        for (std::size_t column = 0; column < columns; ++column)
            sum += sums[column * channels + channel];
        pixel |= (sum + count / 2) / count << (8 * channel);
    }
    return pixel;
}

/// The common case of average() with nine pixels, where the division becomes a multiplication.
std::uint32_t averageOfNine(const std::uint16_t* sums) {
    constexpr std::uint32_t reciprocal = 7282;  // 65536 / 9, rounded up: exact for sums up to 9 * 255
    const auto channel = [sums](std::size_t i) {
        const auto sum = static_cast<std::uint32_t>(sums[i] + sums[i + channels] + sums[i + 2 * channels]);
        return (sum + 4) * reciprocal >> 16;
    };
    return 0xFF000000 | channel(2) << 16 | channel(1) << 8 | channel(0);
}

}  // namespace

void ImageUtils::shrinkToThird(const PixelBuffer& source, PixelBuffer& target) {
    const std::size_t width = (source.width() + factor - 1) / factor;
    const std::size_t height = (source.height() + factor - 1) / factor;
    target.resize(width, height);
    std::vector<std::uint16_t> sums(source.width() * channels);
    const std::size_t wholeColumns = source.width() / factor;
    for (std::size_t y = 0; y < height; ++y) {
        const std::size_t rows = std::min(factor, source.height() - y * factor);
        sumRows(source, y * factor, rows, sums);
        std::uint32_t* const row = target.row(y);
        const bool isWhole = rows == factor;
        for (std::size_t x = 0; isWhole && x < wholeColumns; ++x) {
            row[x] = averageOfNine(&sums[x * factor * channels]);
        }
        for (std::size_t x = isWhole ? wholeColumns : 0; x < width; ++x) {
            const std::size_t columns = std::min(factor, source.width() - x * factor);
            row[x] =
                average(&sums[x * factor * channels], columns, static_cast<std::uint32_t>(columns * rows));
        }
    }
}

}  // namespace merovanta
