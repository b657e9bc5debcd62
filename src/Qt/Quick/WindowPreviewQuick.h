#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <memory>
#include <vector>

#include "Platform/MaskPreview.h"

class QQuickWindow;

namespace merovanta::quick {

/// Outlines in one window what would be covered in a picture of it. The outlines are painted over each frame
/// when it is done and read back, so they are no items, take no input and are in no picture. Thread: main.
class WindowPreviewQuick final {
 public:
    WindowPreviewQuick(QQuickWindow& window, MaskPreviewSource source);
    ~WindowPreviewQuick();
    WindowPreviewQuick(const WindowPreviewQuick&) = delete;
    WindowPreviewQuick& operator=(const WindowPreviewQuick&) = delete;

    [[nodiscard]] const QQuickWindow* window() const { return mWindow.data(); }

    /// Paints the window again.
    void refresh();

 private:
    class Outlines;

    QPointer<QQuickWindow> mWindow;
    std::vector<QMetaObject::Connection> mConnections;
};

}  // namespace merovanta::quick
