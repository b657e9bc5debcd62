#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/MaskArea.h"
#include "Platform/MaskJudge.h"
#include "Platform/MaskPreview.h"
#include "Platform/PixelBuffer.h"
#include "Platform/View.h"

namespace merovanta {

/// Pixels and the private areas of exactly the geometry that the pixels show. Not fit to leave the process:
/// only masking makes it so.
struct CapturedFrame {
    PixelBuffer pixels;
    std::vector<MaskArea> masks;
    /// Device pixels per point of the picture.
    double scale = 1;
    /// ScreenCapture::paintSerial() of what the pixels show.
    std::uint64_t paintSerial = 0;
};

/// Takes pictures of a window's root view.
class ScreenCapture {
 public:
    /// Receives the frame, or nothing if there is none to be had.
    using Completion = std::function<void(std::optional<CapturedFrame>)>;

    virtual ~ScreenCapture() = default;

    /// A number that changes whenever the window of this view has painted anything since the number was last
    /// asked for, or a tag or a mark of privacy has changed, and stays the same on an idle screen.
    /// Cheap: a tick on an idle screen costs this and nothing else. Capturing does not by itself make the
    /// number differ from the captured frame's. Thread: main.
    [[nodiscard]] virtual std::uint64_t paintSerial(const View& root) = 0;

    /// Takes one picture of the whole view at the screen's scale. The buffer given is reused for the pixels
    /// unless the toolkit hands over memory of its own.
    ///
    /// The judge is asked once about the whole window, at the moment whose geometry the pixels show: on the
    /// main thread, or on a render thread while the main thread is blocked. The frame's areas cover what the
    /// private views take up in the picture, rounded outwards; an area that cannot be told is the whole
    /// picture. The completion is called exactly once, on the main thread, possibly before capture() returns;
    /// with nothing if the view is gone or hidden, or the areas of the pixels' own geometry are not to be
    /// had. One capture is in flight at most; the caller waits for the completion before the next. Thread:
    /// main.
    virtual void capture(std::shared_ptr<View> root, PixelBuffer buffer, std::shared_ptr<MaskJudge> judge,
                         Completion completion) = 0;

    /// Outlines in the application's windows, from now on, what would be covered in pictures of them, with
    /// the reasons; in no picture, and without taking input. An empty source ends it. For developers. Thread:
    /// main.
    virtual void setPreview(MaskPreviewSource source) = 0;
};

}  // namespace merovanta
