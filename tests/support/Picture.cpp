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
    constexpr int tolerance = 60;
    for (std::size_t i = 0; i < mPixels.size(); i += 4) {
        const int blue = mPixels[i] - static_cast<int>(color & 0xFF);
        const int green = mPixels[i + 1] - static_cast<int>(color >> 8 & 0xFF);
        const int red = mPixels[i + 2] - static_cast<int>(color >> 16 & 0xFF);
        if (std::abs(blue) < tolerance && std::abs(green) < tolerance && std::abs(red) < tolerance)
            return true;
    }
    return false;
}

int Picture::firstQuantizer(const std::string& jpeg) {
    const auto table = jpeg.find("\xFF\xDB");
    return static_cast<unsigned char>(jpeg.at(table + 5));
}

}  // namespace merovanta::testing
