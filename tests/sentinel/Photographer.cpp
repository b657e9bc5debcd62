#include "Photographer.h"

#include <QtTest/QTest>
#include <algorithm>

#include "General/Panoptra/Monitoring/MaskedFrame.h"
#include "support/Picture.h"

namespace merovanta::test {

namespace {

constexpr int patienceMs = 5000;

struct Color {
    explicit Color(std::uint32_t word)
        : red(word >> 16U & 0xffU), green(word >> 8U & 0xffU), blue(word & 0xffU) {}
    unsigned red;
    unsigned green;
    unsigned blue;
};

bool isOpen(std::uint32_t word) {
    const Color color(word);
    return color.green > color.red + 60 && color.green > color.blue + 60;
}

template <typename Predicate>
std::size_t count(const PixelBuffer& pixels, Predicate predicate) {
    const auto* const first = pixels.row(0);
    return static_cast<std::size_t>(
        std::count_if(first, first + pixels.width() * pixels.height(), predicate));
}

/// With pixels of its own, whoever else has them.
CapturedFrame copyOf(const CapturedFrame& frame) {
    CapturedFrame copy = frame;
    copy.pixels.resize(frame.pixels.width(), frame.pixels.height());
    std::copy_n(frame.pixels.row(0), frame.pixels.width() * frame.pixels.height(), copy.pixels.row(0));
    return copy;
}

}  // namespace

bool isSentinel(std::uint32_t word) {
    const Color color(word);
    return color.red > color.green + 60 && color.blue > color.green + 60;
}

Photographer::Photographer(SpyPlatform& platform, const IOSConfig& lists)
    : mPlatform(platform), mRecipient(std::make_shared<Recipient>()) {
    mConfig->config.panoptraConfig.emplace().iosConfig = lists;
    platform.capture.onFrame = [this](const auto& frame) { look(frame); };
    mMonitor->start(mRecipient, [](const std::optional<StringError>&) {});
    if (!QTest::qWaitFor([this] { return mPlatform.handTimers.tick != nullptr; }, patienceMs))
        qFatal("The monitor does not start");
}

Photographer::~Photographer() {
    mMonitor->stop();
    mPlatform.capture.onFrame = [](const auto&) {};
}

std::optional<Exposure> Photographer::take() {
    // So that an unchanged screen is pictured and sent, too.
    mMonitor->clearLastScreenshot();
    mIsSeen = false;
    mExposure.reset();
    mRecipient->jpeg.reset();
    mPlatform.handTimers.tick();
    const bool isDone = QTest::qWaitFor(
        [this] { return mIsSeen && (!mExposure || mRecipient->jpeg.has_value()); }, patienceMs);
    if (!isDone) qFatal("A picture gets stuck");
    if (mExposure) {
        mExposure->leakedAsJpeg = testing::Picture(*mRecipient->jpeg).containsAbout(0xffff00ff);
    }
    return mExposure;
}

void Photographer::look(const std::optional<CapturedFrame>& frame) {
    mIsSeen = true;
    if (!frame) return;
    mExposure.emplace();
    mExposure->painted = count(frame->pixels, isSentinel);
    MaskedFrame masked(copyOf(*frame));
    mExposure->leaked = count(masked.pixels(), isSentinel);
    mExposure->open = count(masked.pixels(), isOpen);
    mPicture = std::move(masked).takeBuffer();
}

}  // namespace merovanta::test
