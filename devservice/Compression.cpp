#include "Compression.h"

#include <zlib.h>

namespace merovanta::devservice {

std::string gzip(std::string_view bytes) {
    constexpr int gzipFormat = 16 + MAX_WBITS;
    constexpr int memoryLevel = 9;
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipFormat, memoryLevel, Z_DEFAULT_STRATEGY) !=
        Z_OK)
        return {};
    std::string result(deflateBound(&stream, bytes.size()), '\0');
    // zlib reads through a pointer that is not const.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    const bool done = deflate(&stream, Z_FINISH) == Z_STREAM_END;
    result.resize(done ? stream.total_out : 0);
    deflateEnd(&stream);
    return result;
}

}  // namespace merovanta::devservice
