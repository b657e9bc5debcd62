// What the work queue does for one picture of a phone: masking, shrinking, comparing, encoding.
#include <benchmark/benchmark.h>

#include "General/Panoptra/Monitoring/ScreenshotEncoder.h"
#include "General/Panoptra/Util/ImageUtils.h"

namespace {

using merovanta::PixelBuffer;

PixelBuffer phoneScreen() {
    PixelBuffer pixels;
    pixels.resize(1170, 2532);
    for (std::size_t y = 0; y < pixels.height(); ++y) {
        for (std::size_t x = 0; x < pixels.width(); ++x) {
            const bool isText = y % 90 > 40 && (x * 7 + y * 3) % 11 < 4;
            pixels.row(y)[x] = isText ? 0xFF202830 : 0xFFF4F6F8;
        }
    }
    return pixels;
}

void shrink(benchmark::State& state) {
    const PixelBuffer screen = phoneScreen();
    PixelBuffer small;
    for (auto _ : state) {
        merovanta::ImageUtils::shrinkToThird(screen, small);
        benchmark::DoNotOptimize(small.row(0));
    }
}
BENCHMARK(shrink)->Unit(benchmark::kMicrosecond);

void encode(benchmark::State& state) {
    PixelBuffer small;
    merovanta::ImageUtils::shrinkToThird(phoneScreen(), small);
    merovanta::JpegEncoder encoder;
    for (auto _ : state)
        benchmark::DoNotOptimize(encoder.encode(small, 0.4));
}
BENCHMARK(encode)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
