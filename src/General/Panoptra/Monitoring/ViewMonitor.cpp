#include "General/Panoptra/Monitoring/ViewMonitor.h"

#include <Merovanta/Merovanta.h>

#include <array>
#include <charconv>
#include <utility>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Fatal.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Privacy/PrivacyJudge.h"
#include "General/Panoptra/Util/PrivacyUtils.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

/// The shortest text that is this number, whatever the host's locale.
std::string describe(double number) {
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), end};
}

std::string describe(const Point& point) {
    return describe(point.x) + ", " + describe(point.y);
}

}  // namespace

/// One picture on its way through the work queue.
struct ViewMonitor::PictureJob {
    unsigned run = 0;
    PictureKey key;
    CapturedFrame frame;
    std::shared_ptr<ScreenshotEncoder> encoder;
    bool mustReset = false;

    // The outcome; the buffer goes back for the next capture.
    std::optional<std::string> picture;
    PixelBuffer buffer;

    void encode() {
        if (mustReset) encoder->reset();
        MaskedFrame masked(std::move(frame));
        picture = encoder->encode(masked);
        buffer = std::move(masked).takeBuffer();
    }
};

ViewMonitor::ViewMonitor(std::shared_ptr<ApplicationConfigWrapper> wrapper)
    : applicationConfig(std::move(wrapper)) {}

void ViewMonitor::start(std::shared_ptr<MessageSender> sender, Completion completion) {
    assertMainThread();
    const unsigned run = ++mRun;
    ++mPictureRun;
    mIsPaused = false;
    mPictureGap.reset();
    messageSender = std::move(sender);
    mHasWarnedOfTaps = false;
    mPaintsFixedRectangles = Merovanta::privacy().fixedRectangles();
    Log::debug("Schedule new timer");
    ViewUtils::runOnMainQueue([weak = weak_from_this(), run] {
        const auto self = weak.lock();
        if (self && self->mRun == run && !self->mIsPaused) self->startScreenshotTimer();
    });
    clickListener = platform::current().tapRecognizers().create(
        [this](const TapRecognizer& recognizer) { handleClick(recognizer); },
        TapRecognizerFactory::Taps::visitors);
    if (!clickListener) {
        completion(StringError("Cannot register click listener"));
        return;
    }
    ViewUtils::runOnMainQueue([weak = weak_from_this(), run, completion = std::move(completion)] {
        if (const auto self = weak.lock()) self->installTapRecognizer(run, completion);
    });
}

void ViewMonitor::installTapRecognizer(unsigned run, const Completion& completion) {
    if (mRun != run) {
        completion(StringError("The view monitor was stopped while it started"));
        return;
    }
    const auto root = ViewUtils::rootView();
    if (!root) {
        completion(StringError("Cannot get root view"));
        return;
    }
    clickListener->attach(*root);
    if (!mIsPaused) startViewChangeTimer();
    completion(std::nullopt);
}

void ViewMonitor::stop() {
    assertMainThread();
    Log::debug("Stop");
    mIsPaused = false;
    ++mRun;
    ++mPictureRun;
    screenshotTimer.reset();
    viewChangeTimer.reset();
    clickListener.reset();
}

void ViewMonitor::pause() {
    assertMainThread();
    mIsPaused = true;
    mPictureGap.reset();
    ++mPictureRun;
    screenshotTimer.reset();
    viewChangeTimer.reset();
}

void ViewMonitor::resume(std::shared_ptr<MessageSender> sender) {
    assertMainThread();
    messageSender = std::move(sender);
    if (!std::exchange(mIsPaused, false)) return;
    clearLastScreenshot();
    // Of a session that does not watch the screen there is nothing to go on with.
    if (!clickListener) return;
    startScreenshotTimer();
    startViewChangeTimer();
}

void ViewMonitor::resetChangeDetection() {
    clearLastScreenshot();
    lastView.reset();
    mMaskSummary.clear();
}

void ViewMonitor::clearLastScreenshot() {
    ++mPictureRun;
    lastScreenshot.reset();
    mLastKey.reset();
    mEncoderMustReset = true;
}

void ViewMonitor::startScreenshotTimer() {
    screenshotTimer = platform::current().timers().schedule(seconds(screenShotInterval), true,
                                                            [this] { takeScreenshot(); });
}

void ViewMonitor::startViewChangeTimer() {
    viewChangeTimer =
        platform::current().timers().schedule(seconds(viewControllerChangeCheckInterval), true, [this] {
            ViewUtils::frontScreenName(
                [weak = weak_from_this(), run = mRun](const std::optional<std::string>& name) {
                    const auto self = weak.lock();
                    if (self && self->mRun == run && name) self->checkViewChange(*name);
                });
        });
}

void ViewMonitor::checkViewChange(const std::string& name) {
    if (!lastView) {
        // The first screen is known to the service from the start of the session.
        lastView = name;
        return;
    }
    if (*lastView == name) return;
    Log::debug("View changed to: " + name);
    if (messageSender) {
        messageSender->sendPageChange(
            name, applicationConfig->startTime(), [](const std::optional<StringError>& error) {
                if (error) Log::error("Sending view change failed: " + error->errorDescription());
            });
    }
    lastView = name;
}

void ViewMonitor::handleClick(const TapRecognizer& recognizer) {
    assertMainThread();
    if (recognizer.state() != TapRecognizer::State::ended) return;
    const auto root = ViewUtils::rootView();
    if (!root) return;
    const Point point = recognizer.locationIn(*root);
    if (root->keepsTapPrivate(point)) {
        if (!std::exchange(mHasWarnedOfTaps, true))
            Log::warning("Taps in views that keep them private are not reported");
        return;
    }
    Log::debug("Got click at " + describe(point));
    if (!messageSender) fatalError("A click without a message sender");
    const double scale = platform::current().application().mainScreen().scale;
    messageSender->sendClick(static_cast<float>(static_cast<std::int64_t>(point.x * scale)),
                             static_cast<float>(static_cast<std::int64_t>(point.y * scale)),
                             applicationConfig->startTime(), [](const std::optional<StringError>& error) {
                                 if (error)
                                     Log::warning("Cannot send click event: " + error->errorDescription());
                             });
}

void ViewMonitor::takeScreenshot() {
    assertMainThread();
    const auto root = ViewUtils::rootView();
    if (!root) {
        Log::warning("Root view is null");
        return;
    }
    const auto now = platform::current().clock().sinceEpoch();
    if (mIsCapturing) return mPictureGap.wanted(now);
    // Resolved at the moment of use: it is itself built from the session, which owns this.
    const auto coBrowsing = Injection::resolve<CoBrowsing>();
    if (coBrowsing && !coBrowsing->keepWidgetOn(*root)) return mPictureGap.wanted(now);
    PictureKey key = pictureKey(*root);
    if (mLastKey == key) return mPictureGap.ended();
    mPictureGap.wanted(now);
    if (mPictureGap.isDue()) capture(root, std::move(key));
}

ViewMonitor::PictureKey ViewMonitor::pictureKey(const View& root) {
    return {.root = root.identity(),
            .paintSerial = platform::current().screenCapture().paintSerial(root),
            .bounds = root.bounds(),
            .scale = platform::current().application().mainScreen().scale,
            .rules = rules()};
}

void ViewMonitor::capture(const std::shared_ptr<View>& root, PictureKey key) {
    mIsCapturing = true;
    const auto judge = std::make_shared<PrivacyJudge>(key.rules);
    platform::current().screenCapture().capture(
        root, std::move(mBuffer), judge,
        [weak = weak_from_this(), run = mPictureRun, judge,
         key = std::move(key)](std::optional<CapturedFrame> frame) mutable {
            const auto self = weak.lock();
            if (!self) return;
            if (frame) self->reportMasks(*judge);
            self->frameCaptured(run, std::move(key), std::move(frame));
        });
}

void ViewMonitor::reportMasks(const PrivacyJudge& judge) {
    PrivacyUtils::logBadEntries(judge);
    std::string summary = PrivacyUtils::summary(judge);
    if (summary == mMaskSummary) return;
    mMaskSummary = std::move(summary);
    Log::debug(mMaskSummary);
}

void ViewMonitor::frameCaptured(unsigned run, PictureKey key, std::optional<CapturedFrame> frame) {
    assertMainThread();
    if (run != mPictureRun) {
        if (frame) mBuffer = std::move(frame->pixels);
        discardPicture();
        return;
    }
    if (!frame) {
        mPictureGap.dropped();
        discardPicture();
        return;
    }
    key.paintSerial = frame->paintSerial;
    auto job = std::make_shared<PictureJob>(PictureJob{.run = run,
                                                       .key = std::move(key),
                                                       .frame = std::move(*frame),
                                                       .encoder = mEncoder,
                                                       .mustReset = std::exchange(mEncoderMustReset, false)});
    platform::current().workQueue().async([weak = weak_from_this(), job = std::move(job)] {
        job->encode();
        ViewUtils::runOnMainQueue([weak, job] {
            if (const auto self = weak.lock()) self->pictureEncoded(*job);
        });
    });
}

void ViewMonitor::pictureEncoded(PictureJob& job) {
    assertMainThread();
    mBuffer = std::move(job.buffer);
    // Masked by rules that no longer hold: not fit to be sent.
    if (job.run != mPictureRun || job.key.rules != rules()) {
        discardPicture();
        return;
    }
    mIsCapturing = false;
    mPictureGap.ended();
    mLastKey = std::move(job.key);
    if (job.picture && job.picture != lastScreenshot) sendScreenshot(std::move(*job.picture));
}

void ViewMonitor::discardPicture() {
    mIsCapturing = false;
    mLastKey.reset();
    mEncoderMustReset = true;
}

void ViewMonitor::sendScreenshot(std::string picture) {
    if (!lastScreenshot) Log::debug("First picture: " + std::to_string(picture.size()) + " bytes");
    // Remembered before the outcome is known: a picture that could not be sent is not tried again.
    lastScreenshot = picture;
    messageSender->sendScreenshot(
        std::move(picture), applicationConfig->startTime(), [](const std::optional<StringError>& error) {
            if (error) Log::error("Sending screenshot failed: " + error->errorDescription());
        });
}

std::shared_ptr<const PrivacyRules> ViewMonitor::rules() {
    PrivacySettings settings = Merovanta::privacy().settings();
    settings.paintsFixedRectangles = mPaintsFixedRectangles;
    const auto& session = applicationConfig->config.panoptraConfig;
    const auto lists = session ? session->iosConfig : std::nullopt;
    if (!mRules || !mRules->areOf(lists, settings)) mRules = std::make_shared<PrivacyRules>(lists, settings);
    return mRules;
}

}  // namespace merovanta
