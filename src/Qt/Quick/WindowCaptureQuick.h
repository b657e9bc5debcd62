#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

#include "Platform/MainQueue.h"
#include "Platform/ScreenCapture.h"
#include "Qt/Quick/PaintSerialQuick.h"

class QQuickWindow;

namespace merovanta::quick {

class FrameRequestQuick;

/// Counts the frames of one window and takes pictures of it.
///
/// With OpenGL the picture is read out of a frame that the window paints anyway or is asked to paint, on the
/// thread that renders. Otherwise the window is grabbed, and the picture is there at once. Thread: main.
class WindowCaptureQuick final : public QObject {
 public:
    /// The queue must outlive the application.
    WindowCaptureQuick(QQuickWindow& window, MainQueue& mainQueue);
    ~WindowCaptureQuick() override;

    [[nodiscard]] const QQuickWindow* window() const { return mWindow.data(); }

    [[nodiscard]] std::uint64_t paintSerial() const {
        return std::max<std::uint64_t>(mShared->serial, PaintSerialQuick::outdated());
    }

    /// Whether what is being rendered is a picture that is grabbed, of whichever window. Any thread.
    [[nodiscard]] static bool isGrabbing();

    void capture(PixelBuffer buffer, std::shared_ptr<MaskJudge> judge, ScreenCapture::Completion completion);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    /// What the render thread uses too. It keeps this alive by itself.
    struct Shared {
        explicit Shared(MainQueue& queue) : mainQueue(queue) {}

        MainQueue& mainQueue;
        std::atomic<std::uint64_t> serial{0};
        std::mutex mutex;
        /// The one that waits for its frame; null if there is none.
        std::shared_ptr<FrameRequestQuick> request;
        /// Whether that frame is read back while the window paints it, or grabbed.
        bool isReadBack = false;
        QPointer<WindowCaptureQuick> owner;

        [[nodiscard]] std::shared_ptr<FrameRequestQuick> current(bool readBack);
    };

    void watch(QQuickWindow& window);
    static void synchronized(Shared& shared, QQuickWindow& window);
    static void recorded(Shared& shared, QQuickWindow& window);
    static void hand(Shared& shared, std::shared_ptr<FrameRequestQuick> request);

    void grab(FrameRequestQuick& request);
    void finish(const std::shared_ptr<FrameRequestQuick>& request);
    void cancel();

    QPointer<QQuickWindow> mWindow;
    std::shared_ptr<Shared> mShared;
    /// The one in flight; null if there is none.
    std::shared_ptr<FrameRequestQuick> mRequest;
    ScreenCapture::Completion mCompletion;
    /// Ends a wait for a frame that the window never paints.
    QTimer mPatience;
};

}  // namespace merovanta::quick
