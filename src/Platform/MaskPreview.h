#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/MaskArea.h"
#include "Platform/MaskJudge.h"

namespace merovanta {

/// What a preview of the covered areas needs for one frame.
struct MaskPreview {
    std::shared_ptr<MaskJudge> judge;
    /// Names a reason in the judge's verdicts, in a word or two. Whoever has the judge may call it.
    std::function<std::string(const MaskReason&)> nameOf;
};

/// Gives the preview of now. Thread: main.
using MaskPreviewSource = std::function<MaskPreview()>;

}  // namespace merovanta
