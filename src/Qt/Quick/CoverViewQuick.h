#pragma once

#include <QtCore/QPointer>

#include "Platform/CoverView.h"

class QQuickItem;

namespace merovanta::quick {

/// The cover of CoverView.qml. It has the keyboard focus while it is there.
class CoverViewQuick final : public CoverView {
 public:
    CoverViewQuick() = default;
    CoverViewQuick(const CoverViewQuick&) = delete;
    CoverViewQuick& operator=(const CoverViewQuick&) = delete;
    ~CoverViewQuick() override;

    /// False if the interface file cannot be loaded. The parent must be in a window.
    [[nodiscard]] bool lay(QQuickItem& parent, const QString& className);

    [[nodiscard]] std::shared_ptr<View> view() const override;

 private:
    QPointer<QQuickItem> mItem;
    /// Where the keyboard focus was before.
    QPointer<QQuickItem> mFocus;
};

}  // namespace merovanta::quick
