#include "General/Panoptra/Util/PngDecoder.h"

#include <png.h>

#include <cstdint>
#include <utility>

namespace merovanta {

namespace {

/// A picture that is open for reading.
class PngImage {
 public:
    explicit PngImage(const std::string& png) {
        mImage.version = PNG_IMAGE_VERSION;
        mIsOpen = png_image_begin_read_from_memory(&mImage, png.data(), png.size()) != 0 && isWithinBounds();
    }
    ~PngImage() { png_image_free(&mImage); }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;

    [[nodiscard]] bool isOpen() const { return mIsOpen; }
    [[nodiscard]] std::size_t pixelCount() const { return std::size_t{mImage.width} * mImage.height; }

    [[nodiscard]] bool read(PixelBuffer& pixels) {
        mImage.format = PNG_FORMAT_BGRA;
        pixels.resize(mImage.width, mImage.height);
        return png_image_finish_read(&mImage, nullptr, pixels.row(0), 0, nullptr) != 0;
    }

 private:
    [[nodiscard]] bool isWithinBounds() const {
        return pixelCount() > 0 && pixelCount() <= PngDecoder::maximumPixels;
    }

    png_image mImage{};
    bool mIsOpen = false;
};

std::uint32_t premultiplied(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    const auto channel = [&](unsigned shift) {
        return ((pixel >> shift & 0xFF) * alpha + 127) / 255 << shift;
    };
    return alpha << 24 | channel(16) | channel(8) | channel(0);
}

}  // namespace

std::optional<std::size_t> PngDecoder::pixelCount(const std::string& png) {
    const PngImage image(png);
    return image.isOpen() ? std::optional(image.pixelCount()) : std::nullopt;
}

std::optional<PixelBuffer> PngDecoder::decode(const std::string& png) {
    PngImage image(png);
    PixelBuffer pixels;
    if (!image.isOpen() || !image.read(pixels)) return std::nullopt;
    std::uint32_t* const first = pixels.row(0);
    std::uint32_t* const end = first + pixels.width() * pixels.height();
    for (std::uint32_t* pixel = first; pixel != end; ++pixel)
        *pixel = premultiplied(*pixel);
    return pixels;
}

}  // namespace merovanta
