#include "Qt/Quick/MaskPreviewQuick.h"

#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <chrono>
#include <utility>

#include "Qt/Quick/WindowPreviewQuick.h"

namespace merovanta::quick {

MaskPreviewQuick::MaskPreviewQuick(MaskPreviewSource source) : mSource(std::move(source)) {
    qGuiApp->installEventFilter(this);
    connect(&mRefresh, &QTimer::timeout, this, &MaskPreviewQuick::refresh);
    mRefresh.start(std::chrono::seconds(1));
    const auto windows = QGuiApplication::topLevelWindows();
    for (QWindow* const window : windows) {
        if (auto* const quickWindow = qobject_cast<QQuickWindow*>(window)) show(*quickWindow);
    }
}

MaskPreviewQuick::~MaskPreviewQuick() = default;

void MaskPreviewQuick::refresh() {
    for (const auto& window : mWindows)
        window->refresh();
}

bool MaskPreviewQuick::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        if (auto* const window = qobject_cast<QQuickWindow*>(watched)) show(*window);
    }
    return false;
}

void MaskPreviewQuick::show(QQuickWindow& window) {
    std::erase_if(mWindows, [](const auto& preview) { return preview->window() == nullptr; });
    const bool isShown = std::any_of(mWindows.begin(), mWindows.end(),
                                     [&](const auto& preview) { return preview->window() == &window; });
    if (!isShown) mWindows.push_back(std::make_unique<WindowPreviewQuick>(window, mSource));
}

}  // namespace merovanta::quick
