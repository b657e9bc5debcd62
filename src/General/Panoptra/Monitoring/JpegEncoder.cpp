#include "General/Panoptra/Monitoring/JpegEncoder.h"

#include <turbojpeg.h>

#include <algorithm>
#include <cmath>

namespace merovanta {

JpegEncoder::~JpegEncoder() {
    tjFree(mBuffer);
    if (mCompressor) tjDestroy(mCompressor);
}

std::optional<std::string> JpegEncoder::encode(const PixelBuffer& picture, double quality) {
    if (picture.isEmpty()) return std::nullopt;
    if (!mCompressor) mCompressor = tjInitCompress();
    if (!mCompressor) return std::nullopt;
    unsigned long size = mBufferSize;
    const auto* const pixels = reinterpret_cast<const unsigned char*>(picture.row(0));
    const int failed = tjCompress2(mCompressor, pixels, static_cast<int>(picture.width()), 0,
                                   static_cast<int>(picture.height()), TJPF_BGRX, &mBuffer, &size, TJSAMP_420,
                                   static_cast<int>(std::lround(quality * 100)), TJFLAG_FASTDCT);
    if (failed != 0) return std::nullopt;
    mBufferSize = std::max(mBufferSize, size);
    return std::string(reinterpret_cast<const char*>(mBuffer), size);
}

}  // namespace merovanta
