#include "Qt/Quick/ScreenCaptureQuick.h"

#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <utility>

#include "Qt/Quick/FileChoiceQuick.h"
#include "Qt/Quick/MaskPreviewQuick.h"
#include "Qt/Quick/ViewQuick.h"
#include "Qt/Quick/WindowCaptureQuick.h"

namespace merovanta::quick {

namespace {

/// The window whose whole content the view is; null if it is none's.
QQuickWindow* windowShownBy(const View& root) {
    const QQuickItem* const item = ViewQuick::itemOf(root);
    QQuickWindow* const window = item == nullptr ? nullptr : item->window();
    return window != nullptr && window->contentItem() == item ? window : nullptr;
}

}  // namespace

ScreenCaptureQuick::ScreenCaptureQuick(MainQueue& mainQueue) : mMainQueue(mainQueue) {
    qt::ApplicationLifeQt::instance().add(*this);
}

ScreenCaptureQuick::~ScreenCaptureQuick() {
    qt::ApplicationLifeQt::instance().remove(*this);
}

std::uint64_t ScreenCaptureQuick::paintSerial(const View& root) {
    QQuickWindow* const window = windowShownBy(root);
    return window == nullptr ? 0 : watcherOf(*window).paintSerial();
}

void ScreenCaptureQuick::capture(std::shared_ptr<View> root, PixelBuffer buffer,
                                 std::shared_ptr<MaskJudge> judge, Completion completion) {
    QQuickWindow* const window = root == nullptr ? nullptr : windowShownBy(*root);
    if (window == nullptr || FileChoiceQuick::isOpen(*window)) return completion(std::nullopt);
    // The dialog may come while the picture is under way.
    const auto unlessChoosing = [window = QPointer(window), completion = std::move(completion)](auto frame) {
        const bool isChoosing = !window || FileChoiceQuick::isOpen(*window);
        completion(isChoosing ? std::nullopt : std::move(frame));
    };
    watcherOf(*window).capture(std::move(buffer), std::move(judge), unlessChoosing);
}

void ScreenCaptureQuick::setPreview(MaskPreviewSource source) {
    mPreviewSource = std::move(source);
    mPreview.reset();
    if (qt::ApplicationLifeQt::instance().phase() == qt::ApplicationLifeQt::Phase::running)
        applicationStarted();
}

void ScreenCaptureQuick::applicationStarted() {
    if (mPreviewSource) mPreview = std::make_unique<MaskPreviewQuick>(mPreviewSource);
}

void ScreenCaptureQuick::applicationEnding() {
    mPreview.reset();
    mWatchers.clear();
}

WindowCaptureQuick& ScreenCaptureQuick::watcherOf(QQuickWindow& window) {
    const auto found = std::find_if(mWatchers.begin(), mWatchers.end(),
                                    [&](const auto& watcher) { return watcher->window() == &window; });
    if (found != mWatchers.end()) return **found;
    std::erase_if(mWatchers, [](const auto& watcher) { return watcher->window() == nullptr; });
    mWatchers.push_back(std::make_unique<WindowCaptureQuick>(window, mMainQueue));
    return *mWatchers.back();
}

}  // namespace merovanta::quick
