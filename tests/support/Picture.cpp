#include "support/Picture.h"

#include <turbojpeg.h>

#include <cstdlib>
#include <stdexcept>

namespace merovanta::testing {

Picture::Picture(const std::string& jpeg) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(jpeg.data());
    void* const handle = tjInitDecompress();
    int subsampling = 0;
    int colorspace = 0;
    bool isGood =
        tjDecompressHeader3(handle, bytes, jpeg.size(), &mWidth, &mHeight, &subsampling, &colorspace) == 0;
    if (isGood) {
        mPixels.resize(static_cast<std::size_t>(mWidth) * static_cast<std::size_t>(mHeight) * 4);
        isGood =
            tjDecompress2(handle, bytes, jpeg.size(), mPixels.data(), mWidth, 0, mHeight, TJPF_BGRX, 0) == 0;
    }
    tjDestroy(handle);
    if (!isGood) throw std::runtime_error("not a JPEG picture");
}

bool Picture::containsAbout(std::uint32_t color) const {
    for (std::size_t y = 0; y < static_cast<std::size_t>(mHeight); ++y) {
        for (std::size_t x = 0; x < static_cast<std::size_t>(mWidth); ++x) {
            if (isAbout(x, y, color)) return true;
        }
    }
    return false;
}

bool Picture::isAbout(std::size_t x, std::size_t y, std::uint32_t color) const {
    constexpr int tolerance = 60;
    const std::size_t i = (y * static_cast<std::size_t>(mWidth) + x) * 4;
    const int blue = mPixels.at(i) - static_cast<int>(color & 0xFF);
    const int green = mPixels.at(i + 1) - static_cast<int>(color >> 8 & 0xFF);
    const int red = mPixels.at(i + 2) - static_cast<int>(color >> 16 & 0xFF);
    return std::abs(blue) < tolerance && std::abs(green) < tolerance && std::abs(red) < tolerance;
}

int Picture::firstQuantizer(const std::string& jpeg) {
    const auto table = jpeg.find("\xFF\xDB");
    return static_cast<unsigned char>(jpeg.at(table + 5));
}

}  // namespace merovanta::testing
