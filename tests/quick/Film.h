#pragma once

#include <QtCore/QtGlobal>
#include <functional>
#include <memory>
#include <optional>

#include "General/Panoptra/Privacy/PrivacyJudge.h"
#include "Platform/ScreenCapture.h"
#include "Scene.h"

namespace merovanta::test {

struct Outcome {
    int completions = 0;
    std::optional<CapturedFrame> frame;
};

struct Tally {
    int delivered = 0;
    /// How many of them show something secret once they are masked, and before.
    int leaked = 0;
    int masked = 0;
};

/// Covers what the lists and the settings name where it is; the service's own rectangles would hide what that
/// misses.
[[nodiscard]] std::shared_ptr<PrivacyJudge> judgeOf(const IOSConfig& lists, PrivacySettings settings = {});

/// Covers the views with tag 7.
[[nodiscard]] std::shared_ptr<PrivacyJudge> secrets();

[[nodiscard]] std::shared_ptr<Outcome> beginPicture(const std::shared_ptr<View>& root,
                                                    std::shared_ptr<MaskJudge> judge,
                                                    PixelBuffer buffer = {});
[[nodiscard]] std::optional<CapturedFrame> takePicture(const std::shared_ptr<View>& root,
                                                       std::shared_ptr<MaskJudge> judge,
                                                       PixelBuffer buffer = {});

/// How many pixels have a tint of the secret colour, magenta.
[[nodiscard]] int secretPixels(const PixelBuffer& pixels);

/// Takes pictures as often as possible; the step runs before each.
Tally film(Scene& scene, int attempts, const std::function<void(int attempt)>& step = {},
           const IOSConfig& lists = {{"7"}, {}});

}  // namespace merovanta::test
