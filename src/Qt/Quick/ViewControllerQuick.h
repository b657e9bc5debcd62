#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include "Platform/ViewController.h"

class QQuickItem;
class QQuickWindow;

namespace merovanta::quick {

/// A window, a popup, or an item that is one page of a container.
class ViewControllerQuick final : public ViewController {
 public:
    explicit ViewControllerQuick(QQuickWindow& window);
    ViewControllerQuick(QObject& popup, QQuickWindow& window);
    explicit ViewControllerQuick(QQuickItem& page);

    [[nodiscard]] std::string className() const override;
    [[nodiscard]] std::shared_ptr<View> view() const override;
    [[nodiscard]] std::shared_ptr<ViewController> presentedViewController() const override;
    [[nodiscard]] std::optional<std::vector<std::shared_ptr<ViewController>>> viewControllers()
        const override;
    [[nodiscard]] std::shared_ptr<ViewController> selectedViewController() const override;

 private:
    /// What the screen shows, below which its pages are looked for.
    [[nodiscard]] QQuickItem* content() const;

    QPointer<QObject> mScreen;
    /// The window that a popup is in or that is the screen itself; null for a page.
    QPointer<QQuickWindow> mWindow;
};

}  // namespace merovanta::quick
