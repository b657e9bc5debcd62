#include "Qt/Quick/ViewControllerQuick.h"

#include <QtCore/QMetaObject>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include "Qt/Quick/ClassNamesQuick.h"
#include "Qt/Quick/PageContainerQuick.h"
#include "Qt/Quick/PopupsQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace merovanta::quick {

namespace {

QQuickItem* selectedItem(const QQuickItem& container) {
    if (!container.inherits("QQuickStackLayout")) {
        return loadedItem(container.property("currentItem").value<QQuickItem*>());
    }
    QQuickItem* item = nullptr;
    QMetaObject::invokeMethod(const_cast<QQuickItem*>(&container), "itemAt", Qt::DirectConnection,
                              Q_RETURN_ARG(QQuickItem*, item),
                              Q_ARG(int, container.property("currentIndex").toInt()));
    return loadedItem(item);
}

}  // namespace

ViewControllerQuick::ViewControllerQuick(QQuickWindow& window) : mScreen(&window), mWindow(&window) {}

ViewControllerQuick::ViewControllerQuick(QObject& popup, QQuickWindow& window)
    : mScreen(&popup), mWindow(&window) {}

ViewControllerQuick::ViewControllerQuick(QQuickItem& page) : mScreen(&page) {}

std::string ViewControllerQuick::className() const {
    return mScreen ? ClassNamesQuick::className(*mScreen) : std::string();
}

std::shared_ptr<View> ViewControllerQuick::view() const {
    if (!mScreen) return nullptr;
    // A popup is painted over its window, so one sees both.
    if (mWindow) return std::make_shared<ViewQuick>(mWindow->contentItem());
    auto* const page = qobject_cast<QQuickItem*>(mScreen.data());
    return page == nullptr ? nullptr : std::make_shared<ViewQuick>(page);
}

std::shared_ptr<ViewController> ViewControllerQuick::presentedViewController() const {
    if (!mWindow || mScreen.data() != mWindow.data()) return nullptr;
    if (QQuickWindow* const child = topmostChildWindow(*mWindow)) {
        return std::make_shared<ViewControllerQuick>(*child);
    }
    QObject* const popup = topmostModalPopup(*mWindow);
    return popup == nullptr ? nullptr : std::make_shared<ViewControllerQuick>(*popup, *mWindow);
}

std::optional<std::vector<std::shared_ptr<ViewController>>> ViewControllerQuick::viewControllers() const {
    QQuickItem* const container = pageContainer(content());
    if (container == nullptr || !isStackView(*container)) return std::nullopt;
    std::vector<std::shared_ptr<ViewController>> entries;
    const int depth = container->property("depth").toInt();
    for (int index = 0; index < depth; ++index) {
        QQuickItem* item = nullptr;
        QMetaObject::invokeMethod(container, "get", Qt::DirectConnection, Q_RETURN_ARG(QQuickItem*, item),
                                  Q_ARG(int, index));
        item = loadedItem(item);
        // An entry may not be loaded yet, as long as others cover it.
        if (item != nullptr) entries.push_back(std::make_shared<ViewControllerQuick>(*item));
    }
    return entries;
}

std::shared_ptr<ViewController> ViewControllerQuick::selectedViewController() const {
    QQuickItem* const container = pageContainer(content());
    if (container == nullptr || isStackView(*container)) return nullptr;
    QQuickItem* const item = selectedItem(*container);
    return item == nullptr ? nullptr : std::make_shared<ViewControllerQuick>(*item);
}

QQuickItem* ViewControllerQuick::content() const {
    if (!mScreen) return nullptr;
    if (auto* const page = qobject_cast<QQuickItem*>(mScreen.data())) return page;
    return mScreen->property("contentItem").value<QQuickItem*>();
}

}  // namespace merovanta::quick
