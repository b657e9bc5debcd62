#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <memory>
#include <vector>

#include "Platform/MaskPreview.h"

class QQuickWindow;

namespace merovanta::quick {

class WindowPreviewQuick;

/// Outlines in each window of the application what would be covered in a picture of it, for as long as this
/// lives. The application object must exist. Thread: main.
class MaskPreviewQuick final : public QObject {
 public:
    explicit MaskPreviewQuick(MaskPreviewSource source);
    ~MaskPreviewQuick() override;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void show(QQuickWindow& window);
    void refresh();

    MaskPreviewSource mSource;
    std::vector<std::unique_ptr<WindowPreviewQuick>> mWindows;
    /// The rules may change without anything being painted.
    QTimer mRefresh;
};

}  // namespace merovanta::quick
