#include "Qt/Quick/WindowCaptureQuick.h"

#include <QtCore/QEvent>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>
#include <chrono>
#include <utility>

#include "Qt/Quick/FrameRequestQuick.h"
#include "Qt/Quick/OpenGLReadbackQuick.h"
#include "Qt/Quick/SceneGraphQuick.h"

namespace merovanta::quick {

namespace {

constexpr std::chrono::seconds patience{1};

std::atomic<bool> isGrabbingNow{false};

bool isOpenGL(const QQuickWindow& window) {
    return window.rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL;
}

/// The window's last column and row, where only a part of a pixel is the window's: the renderer leaves in
/// them what was there before.
void clearFractions(QImage& image, const QSizeF& size) {
    QPainter painter(&image);
    if (size.width() < image.width()) painter.fillRect(image.width() - 1, 0, 1, image.height(), Qt::black);
    if (size.height() < image.height()) painter.fillRect(0, image.height() - 1, image.width(), 1, Qt::black);
}

/// Hands the image's memory over; if the image shares it with anybody, a copy of it.
void takePixels(QImage image, PixelBuffer& pixels) {
    image.convertTo(QImage::Format_RGB32);
    // A copy has no gaps between its rows.
    if (image.bytesPerLine() != qsizetype{4} * image.width()) image = image.copy();
    const auto owner = std::make_shared<QImage>(std::move(image));
    const auto width = static_cast<std::size_t>(owner->width());
    const auto height = static_cast<std::size_t>(owner->height());
    pixels.adopt({owner, reinterpret_cast<std::uint32_t*>(owner->bits())}, width, height);
}

}  // namespace

std::shared_ptr<FrameRequestQuick> WindowCaptureQuick::Shared::current(bool readBack) {
    const std::scoped_lock lock(mutex);
    return isReadBack == readBack ? request : nullptr;
}

WindowCaptureQuick::WindowCaptureQuick(QQuickWindow& window, MainQueue& mainQueue)
    : mWindow(&window), mShared(std::make_shared<Shared>(mainQueue)) {
    mShared->owner = this;
    mShared->serial = PaintSerialQuick::next();
    mPatience.setSingleShot(true);
    mPatience.setInterval(patience);
    connect(&mPatience, &QTimer::timeout, this, &WindowCaptureQuick::cancel);
    watch(window);
}

WindowCaptureQuick::~WindowCaptureQuick() {
    cancel();
}

void WindowCaptureQuick::watch(QQuickWindow& window) {
    window.installEventFilter(this);
    connect(&window, &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible) cancel();
    });
    connect(&window, &QObject::destroyed, this, &WindowCaptureQuick::cancel);
    // These come on the thread that renders, so they must not touch this object: their context is the window,
    // whose end stops the rendering first.
    const auto connectDirectly = [&window](auto signal, auto slot) {
        connect(&window, signal, &window, std::move(slot), Qt::DirectConnection);
    };
    const auto shared = mShared;
    connectDirectly(&QQuickWindow::beforeRendering, [shared] { shared->serial = PaintSerialQuick::next(); });
    connectDirectly(&QQuickWindow::afterSynchronizing, [shared, &window] { synchronized(*shared, window); });
    connectDirectly(&QQuickWindow::afterRenderPassRecording,
                    [shared, &window] { recorded(*shared, window); });
    connectDirectly(&QQuickWindow::afterRendering, [shared] {
        if (const auto request = shared->current(false)) request->verify();
    });
}

void WindowCaptureQuick::synchronized(Shared& shared, QQuickWindow& window) {
    if (const auto grabbed = shared.current(false)) {
        grabbed->freeze(window);
        paintWhole(window);
    }
    const auto request = shared.current(true);
    if (!request) return;
    request->freeze(window);
    if (request->hasFailed()) hand(shared, request);
}

void WindowCaptureQuick::recorded(Shared& shared, QQuickWindow& window) {
    const auto request = shared.current(true);
    if (!request || !request->isFrozen()) return;
    request->setPaintSerial(shared.serial);
    request->verify();
    if (!request->hasFailed()) {
        window.beginExternalCommands();
        if (!readOpenGLFrame(*request)) request->fail();
        window.endExternalCommands();
    }
    hand(shared, request);
}

void WindowCaptureQuick::hand(Shared& shared, std::shared_ptr<FrameRequestQuick> request) {
    {
        const std::scoped_lock lock(shared.mutex);
        if (shared.request != request) return;
        // Later frames are none of its business.
        shared.request = nullptr;
    }
    shared.mainQueue.async([owner = shared.owner, request = std::move(request)] {
        if (owner) owner->finish(request);
    });
}

bool WindowCaptureQuick::isGrabbing() {
    return isGrabbingNow;
}

void WindowCaptureQuick::capture(PixelBuffer buffer, std::shared_ptr<MaskJudge> judge,
                                 ScreenCapture::Completion completion) {
    if (mRequest || !mWindow || !mWindow->isVisible() || !mWindow->isExposed()) {
        return completion(std::nullopt);
    }
    const auto request = std::make_shared<FrameRequestQuick>(std::move(buffer), std::move(judge));
    mRequest = request;
    const bool readsBack = isOpenGL(*mWindow);
    mCompletion = std::move(completion);
    {
        const std::scoped_lock lock(mShared->mutex);
        mShared->request = request;
        mShared->isReadBack = readsBack;
    }
    if (readsBack) {
        mPatience.start();
        mWindow->update();
    } else {
        grab(*request);
        finish(request);
    }
}

void WindowCaptureQuick::grab(FrameRequestQuick& request) {
    isGrabbingNow = true;
    QImage image = mWindow->grabWindow();
    isGrabbingNow = false;
    {
        const std::scoped_lock lock(mShared->mutex);
        mShared->request = nullptr;
    }
    request.setPaintSerial(mShared->serial);
    if (!request.fits(image.size())) return request.fail();
    clearFractions(image, QSizeF(mWindow->size()) * mWindow->effectiveDevicePixelRatio());
    takePixels(std::move(image), request.pixels());
}

void WindowCaptureQuick::finish(const std::shared_ptr<FrameRequestQuick>& request) {
    // A frame may arrive after its request was given up.
    if (request != mRequest) return;
    mPatience.stop();
    mRequest = nullptr;
    std::exchange(mCompletion, nullptr)(request->takeFrame());
}

void WindowCaptureQuick::cancel() {
    if (!mRequest) return;
    {
        const std::scoped_lock lock(mShared->mutex);
        mShared->request = nullptr;
    }
    mPatience.stop();
    mRequest = nullptr;
    // Later: this may be in the middle of the host closing its window.
    mShared->mainQueue.async(
        [completion = std::exchange(mCompletion, nullptr)] { completion(std::nullopt); });
}

bool WindowCaptureQuick::eventFilter(QObject* watched, QEvent* event) {
    // A QWindow: the events of its destruction come when it is no QQuickWindow any more.
    if (event->type() == QEvent::Expose && !static_cast<const QWindow*>(watched)->isExposed()) cancel();
    return false;
}

}  // namespace merovanta::quick
