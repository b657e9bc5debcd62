#include "support/Png.h"

#include <png.h>

#include <stdexcept>
#include <vector>

namespace merovanta::testing {

std::string png(std::uint32_t width, std::uint32_t height, std::uint32_t color) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_BGRA;
    const std::vector<std::uint32_t> pixels(std::size_t{width} * height, color);
    png_alloc_size_t size = 0;
    if (png_image_write_to_memory(&image, nullptr, &size, 0, pixels.data(), 0, nullptr) == 0)
        throw std::runtime_error(image.message);
    std::string bytes(size, '\0');
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr) == 0)
        throw std::runtime_error(image.message);
    return bytes;
}

std::string base64(const std::string& bytes) {
    static constexpr const char* alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t j = i; j < i + 3; ++j)
            group = group << 8 | (j < bytes.size() ? static_cast<unsigned char>(bytes[j]) : 0U);
        for (std::size_t j = 0; j < 4; ++j)
            text += i + j <= bytes.size() ? alphabet[group >> (18 - 6 * j) & 63] : '=';
    }
    return text;
}

}  // namespace merovanta::testing
