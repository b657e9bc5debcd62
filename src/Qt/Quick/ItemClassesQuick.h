#pragma once

#include <QtCore/QHash>
#include <QtCore/QMetaObject>
#include <QtGui/QFont>
#include <cstddef>
#include <deque>
#include <vector>

#include "Platform/MaskJudge.h"

class QQuickItem;

namespace merovanta::quick {

/// What there is to know of all items of one class.
struct ItemClassQuick {
    ViewContent content = ViewContent::other;
    /// The judge's entries that name the class or one that it derives from, each once.
    std::vector<std::size_t> entries;
    bool isTextInput = false;
    bool isImage = false;
    bool isCanvas = false;
    bool isPopupItem = false;
    bool isShaderEffectSource = false;
    bool isShaderEffect = false;
    /// Whether it may paint anywhere, whatever its size.
    bool paintsAnywhere = false;
    /// Of texts; null for everything else.
    QFont (*fontOf)(const QQuickItem& text) = nullptr;
};

/// The classes of the items met in one walk. QML's own classes die and others take their addresses, so this
/// must not be kept for longer.
class ItemClassesQuick {
 public:
    explicit ItemClassesQuick(const MaskJudge& judge);

    /// The reference stays good.
    [[nodiscard]] const ItemClassQuick& of(const QMetaObject& type);

 private:
    const MaskJudge& mJudge;
    QHash<const QMetaObject*, const ItemClassQuick*> mKnown;
    std::deque<ItemClassQuick> mClasses;
};

}  // namespace merovanta::quick
