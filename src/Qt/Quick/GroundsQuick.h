#pragma once

#include <QtCore/QRectF>
#include <cstddef>
#include <vector>

#include "Platform/MaskArea.h"

namespace merovanta::quick {

/// The opaque grounds of the library's own in one picture. What is painted before them does not show in their
/// place, so nothing needs to be black there.
class GroundsQuick {
 public:
    /// In pixels, all of them hidden for certain. In the order of painting.
    void add(const QRectF& hidden) { mGrounds.push_back(hidden); }

    /// How many there are so far: those of greater numbers are in front of what is painted now.
    [[nodiscard]] std::size_t count() const { return mGrounds.size(); }

    /// Appends the parts of an area, painted when there were so many grounds, that still show.
    void appendVisible(const MaskArea& area, std::size_t grounds, std::vector<MaskArea>& visible) const;

 private:
    std::vector<QRectF> mGrounds;
};

}  // namespace merovanta::quick
