#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Monitoring/PictureGap.h"
#include "General/Panoptra/Monitoring/ScreenshotEncoder.h"
#include "General/Panoptra/Network/Message/MessageSender.h"
#include "General/Panoptra/Privacy/PrivacyRules.h"
#include "General/StringError.h"
#include "Platform/Geometry.h"
#include "Platform/ScreenCapture.h"
#include "Platform/TapRecognizer.h"
#include "Platform/Timer.h"

namespace merovanta {

class PrivacyJudge;

/// Watches the host application's screen while a session runs: sends a masked picture whenever it changed,
/// the name of the page whenever another comes to the front, and every tap. Thread: main; pictures are shrunk
/// and encoded on the work queue.
class ViewMonitor : public std::enable_shared_from_this<ViewMonitor> {
 public:
    /// Receives nothing on success.
    using Completion = std::function<void(const std::optional<StringError>&)>;

    explicit ViewMonitor(std::shared_ptr<ApplicationConfigWrapper> applicationConfig);

    /// Starts to watch. The completion is called on the main thread; after an error the pictures go on.
    void start(std::shared_ptr<MessageSender> messageSender, Completion completion);

    /// What was sent last is remembered: after another start() an unchanged screen is not sent again.
    void stop();

    /// No picture and no page change until resume(): there is nobody to send them to. Taps are still
    /// reported.
    void pause();

    /// Goes on, over the sender given, which may be another; the next picture is sent whole.
    void resume(std::shared_ptr<MessageSender> messageSender);

    /// Forgets what was sent last, so that the next picture is sent whole and no page counts as changed.
    void resetChangeDetection();

    /// Forgets the last picture alone.
    void clearLastScreenshot();

 private:
    /// All that a picture depends on: while it stays the same, so does the picture.
    struct PictureKey {
        const void* root = nullptr;
        std::uint64_t paintSerial = 0;
        Rect bounds;
        double scale = 1;
        std::shared_ptr<const PrivacyRules> rules;

        bool operator==(const PictureKey&) const = default;
    };

    struct PictureJob;

    void installTapRecognizer(unsigned run, const Completion& completion);
    void startScreenshotTimer();
    void startViewChangeTimer();
    void checkViewChange(const std::string& name);
    void handleClick(const TapRecognizer& recognizer);

    void takeScreenshot();
    [[nodiscard]] PictureKey pictureKey(const View& root);
    void capture(const std::shared_ptr<View>& root, PictureKey key);
    void reportMasks(const PrivacyJudge& judge);
    void frameCaptured(unsigned run, PictureKey key, std::optional<CapturedFrame> frame);
    void pictureEncoded(PictureJob& job);
    void discardPicture();
    void sendScreenshot(std::string picture);

    /// The same object for as long as the rules stay the same.
    [[nodiscard]] std::shared_ptr<const PrivacyRules> rules();

    const double screenShotInterval = 0.3;
    const double viewControllerChangeCheckInterval = 1.0;
    std::unique_ptr<Timer> screenshotTimer;
    std::unique_ptr<Timer> viewChangeTimer;
    std::optional<std::string> lastScreenshot;
    std::shared_ptr<MessageSender> messageSender;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::optional<std::string> lastView;
    std::unique_ptr<TapRecognizer> clickListener;

    // Counts starts and stops: what was set going before the last of them no longer has an effect.
    unsigned mRun = 0;
    // Counts, besides, the resets of the change detection: a picture of before must not pass for one of
    // after.
    unsigned mPictureRun = 0;
    bool mIsPaused = false;
    bool mIsCapturing = false;
    PictureGap mPictureGap;
    PixelBuffer mBuffer;
    std::optional<PictureKey> mLastKey;
    std::shared_ptr<ScreenshotEncoder> mEncoder = std::make_shared<ScreenshotEncoder>();
    bool mEncoderMustReset = false;

    /// Whether the log has said since the start that some taps are not reported.
    bool mHasWarnedOfTaps = false;

    // The host's choice, taken over when a session starts.
    bool mPaintsFixedRectangles = true;
    std::shared_ptr<const PrivacyRules> mRules;
    /// What the log said last of what is covered.
    std::string mMaskSummary;
};

}  // namespace merovanta
