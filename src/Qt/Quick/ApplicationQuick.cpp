#include "Qt/Quick/ApplicationQuick.h"

#include <QtCore/QLocale>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "Qt/Foundation/VendorQt.h"
#include "Qt/Quick/ClassNamesQuick.h"
#include "Qt/Quick/ViewControllerQuick.h"

namespace merovanta::quick {

namespace {

QQuickWindow* keyWindow() {
    if (qGuiApp == nullptr) return nullptr;
    auto* const focused = qobject_cast<QQuickWindow*>(QGuiApplication::focusWindow());
    if (focused != nullptr && focused->isVisible()) return focused;
    const auto windows = QGuiApplication::topLevelWindows();
    for (QWindow* window : windows) {
        auto* const quickWindow = qobject_cast<QQuickWindow*>(window);
        if (quickWindow != nullptr && quickWindow->isVisible()) return quickWindow;
    }
    return nullptr;
}

class ObservationQuick final : public Observation {
 public:
    ObservationQuick(const ActivityQuick& activity, void (ActivityQuick::*signal)(),
                     std::function<void()> observer) {
        // The connection keeps the observer while it runs, also when it destroys its own observation.
        QObject::connect(&activity, signal, &mContext, std::move(observer));
    }

 private:
    QObject mContext;
};

}  // namespace

bool ApplicationQuick::exists() {
    return qGuiApp != nullptr;
}

std::unique_ptr<Observation> ApplicationQuick::observeWillResignActive(std::function<void()> observer) {
    return std::make_unique<ObservationQuick>(mActivity, &ActivityQuick::willResignActive,
                                              std::move(observer));
}

std::unique_ptr<Observation> ApplicationQuick::observeDidBecomeActive(std::function<void()> observer) {
    return std::make_unique<ObservationQuick>(mActivity, &ActivityQuick::didBecomeActive,
                                              std::move(observer));
}

std::shared_ptr<ViewController> ApplicationQuick::keyWindowRootViewController() {
    QQuickWindow* const window = keyWindow();
    return window == nullptr ? nullptr : std::make_shared<ViewControllerQuick>(*window);
}

Screen ApplicationQuick::mainScreen() {
    Screen screen;
    if (const QQuickWindow* const window = keyWindow()) {
        screen.scale = window->effectiveDevicePixelRatio();
        screen.bounds = {0, 0, static_cast<double>(window->width()), static_cast<double>(window->height())};
    } else if (exists() && QGuiApplication::primaryScreen() != nullptr) {
        screen.scale = QGuiApplication::primaryScreen()->devicePixelRatio();
    }
    return screen;
}

std::vector<std::string> ApplicationQuick::preferredLanguages() {
    std::vector<std::string> languages;
    const auto names = QLocale::system().uiLanguages();
    for (const QString& name : names)
        languages.push_back(name.toStdString());
    return languages;
}

std::optional<std::string> ApplicationQuick::identifierForVendor() {
    if (!exists()) return std::nullopt;
    return qt::identifierForVendor();
}

std::vector<bool> ApplicationQuick::classesExist(const std::vector<std::string>& names) {
    if (!exists()) return std::vector<bool>(names.size(), false);
    return ClassNamesQuick::instance().exist(names);
}

}  // namespace merovanta::quick
