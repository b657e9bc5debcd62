#pragma once

#include <optional>
#include <string>

#include "Platform/PixelBuffer.h"

namespace merovanta {

/// Encodes pictures as JPEG with one reused compressor and buffer. One thread at a time.
class JpegEncoder {
 public:
    JpegEncoder() = default;
    ~JpegEncoder();
    JpegEncoder(const JpegEncoder&) = delete;
    JpegEncoder& operator=(const JpegEncoder&) = delete;

    /// The quality lies between 0 and 1. Absent if the picture is empty or cannot be encoded.
    [[nodiscard]] std::optional<std::string> encode(const PixelBuffer& picture, double quality);

 private:
    void* mCompressor = nullptr;
    unsigned char* mBuffer = nullptr;
    unsigned long mBufferSize = 0;
};

}  // namespace merovanta
