#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Platform/ViewController.h"

namespace merovanta {

/// What an alert says.
struct AlertTexts {
    std::string title;
    std::string message;
    std::string accept;
    /// Without one the alert can only be accepted.
    std::optional<std::string> decline;
};

/// A question that the visitor is to answer. Destroying it closes it without an answer; it may be destroyed
/// inside its own callback. Thread: main.
class Alert {
 public:
    virtual ~Alert() = default;
};

/// Thread: main.
class AlertFactory {
 public:
    virtual ~AlertFactory() = default;

    /// Presents the alert, animated, over this controller. The callback is called once, later, with whether
    /// the visitor accepted; closing it in any other way declines, also when its window goes. The texts are
    /// plain: nothing in them is markup. Null if the controller is gone.
    [[nodiscard]] virtual std::unique_ptr<Alert> present(const ViewController& over, const AlertTexts& texts,
                                                         std::function<void(bool accepted)> answered) = 0;
};

}  // namespace merovanta
