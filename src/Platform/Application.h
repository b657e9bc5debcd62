#pragma once

#include <Merovanta/Observation.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Geometry.h"
#include "Platform/ViewController.h"

namespace merovanta {

/// The main screen as the host application sees it.
struct Screen {
    /// Device pixels per point.
    double scale = 1;
    /// The application's area, in points.
    Rect bounds;
};

/// The host application and the device it runs on. Thread: main.
class Application {
 public:
    virtual ~Application() = default;

    /// Whether there is an application object. Before, and after its end, a device may have no identifier
    /// yet, and there is no window; what is given to the main queue before waits for it.
    [[nodiscard]] virtual bool exists() = 0;

    /// Whether the application has the user's attention. What that means is the platform's to know:
    /// - on phones and tablets, that it is the one in front and the screen is not locked;
    /// - on a desktop, that at least one of its windows can be seen: neither hidden nor minimised, and the
    ///   screen, where the platform can tell, not locked. Which window has the focus, and what lies over
    ///   the application's, makes no difference;
    /// - on a screen of its own (kiosks, devices), that it runs.
    [[nodiscard]] virtual bool isActive() = 0;

    /// Calls the observer whenever isActive() is about to become, or has just become, false. Never null.
    [[nodiscard]] virtual std::unique_ptr<Observation> observeWillResignActive(
        std::function<void()> observer) = 0;

    /// Calls the observer whenever isActive() has become true. Never null.
    [[nodiscard]] virtual std::unique_ptr<Observation> observeDidBecomeActive(
        std::function<void()> observer) = 0;

    /// The root controller of the window that has the user's attention; null without a visible window.
    [[nodiscard]] virtual std::shared_ptr<ViewController> keyWindowRootViewController() = 0;

    [[nodiscard]] virtual Screen mainScreen() = 0;

    /// Language codes such as "en" or "pt-BR", the user's favourite first. May be empty.
    [[nodiscard]] virtual std::vector<std::string> preferredLanguages() = 0;

    /// An upper-case UUID that stays the same for this vendor's applications on this device; absent if the
    /// device gives none.
    [[nodiscard]] virtual std::optional<std::string> identifierForVendor() = 0;

    /// For each name whether any class known to the toolkit carries it, as View::isKindOf understands it. A
    /// class of which no object exists yet may be unknown.
    [[nodiscard]] virtual std::vector<bool> classesExist(const std::vector<std::string>& names) = 0;
};

}  // namespace merovanta
