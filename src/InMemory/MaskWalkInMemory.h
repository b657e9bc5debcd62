#pragma once

#include <memory>
#include <vector>

#include "InMemory/NativeView.h"
#include "Platform/MaskArea.h"
#include "Platform/MaskJudge.h"

namespace merovanta::inmemory {

/// What two areas have in common; without a size if it is nothing.
[[nodiscard]] Rect intersection(const Rect& one, const Rect& other);

/// The private areas of a picture of this view at this scale, as the judge says.
[[nodiscard]] std::vector<MaskArea> findMasks(const std::shared_ptr<NativeView>& root, double scale,
                                              MaskJudge& judge);

}  // namespace merovanta::inmemory
