#include "General/Panoptra/Util/PngDecoder.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace merovanta {

namespace {

constexpr std::string_view signature{"\x89PNG\r\n\x1A\n", 8};

// A chunk is its length, its type, its content and a checksum.
constexpr std::size_t chunkOverhead = 12;

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(0, 4))
        number = number << 8 | static_cast<std::uint8_t>(byte);
    return number;
}

/// The picture without the chunks that do not make up its pixels: texts and profiles may be packed, and
/// unpack to any size. Empty if it is not made of chunks.
std::string essentials(std::string_view png) {
    static constexpr std::array<std::string_view, 5> kept{"IHDR", "PLTE", "tRNS", "IDAT", "IEND"};
    std::string picture(signature);
    png.remove_prefix(signature.size());
    while (!png.empty()) {
        if (png.size() < chunkOverhead || bigEndian(png) > png.size() - chunkOverhead) return {};
        const std::string_view chunk = png.substr(0, bigEndian(png) + chunkOverhead);
        if (std::find(kept.begin(), kept.end(), chunk.substr(4, 4)) != kept.end()) picture += chunk;
        png.remove_prefix(chunk.size());
    }
    return picture;
}

std::optional<PixelBuffer> unpack(const std::string& png) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, png.data(), png.size()) == 0) return std::nullopt;
    image.format = PNG_FORMAT_BGRA;
    PixelBuffer pixels;
    pixels.resize(image.width, image.height);
    const bool isRead = png_image_finish_read(&image, nullptr, pixels.row(0), 0, nullptr) != 0;
    png_image_free(&image);
    return isRead ? std::optional(std::move(pixels)) : std::nullopt;
}

std::uint32_t premultiplied(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    const auto channel = [&](unsigned shift) {
        return ((pixel >> shift & 0xFF) * alpha + 127) / 255 << shift;
    };
    return alpha << 24 | channel(16) | channel(8) | channel(0);
}

}  // namespace

std::optional<PngDecoder::Size> PngDecoder::size(const std::string& png) {
    constexpr std::size_t headerSize = signature.size() + chunkOverhead + 13;
    const std::string_view view(png);
    if (view.size() < headerSize || !view.starts_with(signature)) return std::nullopt;
    const std::string_view header = view.substr(signature.size());
    if (bigEndian(header) != 13 || header.substr(4, 4) != "IHDR") return std::nullopt;
    const std::size_t width = bigEndian(header.substr(8));
    const std::size_t height = bigEndian(header.substr(12));
    if (width == 0 || height == 0 || width > maximumPixels / height) return std::nullopt;
    return Size{width, height};
}

std::optional<PixelBuffer> PngDecoder::decode(const std::string& png) {
    if (!size(png)) return std::nullopt;
    auto pixels = unpack(essentials(png));
    if (!pixels) return std::nullopt;
    std::uint32_t* const first = pixels->row(0);
    std::for_each(first, first + pixels->width() * pixels->height(),
                  [](std::uint32_t& pixel) { pixel = premultiplied(pixel); });
    return pixels;
}

}  // namespace merovanta
