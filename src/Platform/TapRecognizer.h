#pragma once

#include <functional>
#include <memory>

#include "Platform/Geometry.h"
#include "Platform/View.h"

namespace merovanta {

/// Sees single taps anywhere on a view without taking them away from the host application.
///
/// Destroying it detaches it; it may be destroyed inside its own action. Thread: main.
class TapRecognizer {
 public:
    enum class State { possible = 0, began = 1, changed = 2, ended = 3, cancelled = 4, failed = 5 };

    virtual ~TapRecognizer() = default;

    /// Watches this view, and no other from now on.
    virtual void attach(const View& view) = 0;
    virtual void detach() = 0;

    [[nodiscard]] virtual State state() const = 0;

    /// Where the last tap was, in this view's points.
    [[nodiscard]] virtual Point locationIn(const View& view) const = 0;
};

/// Makes recognisers. Thread: main.
class TapRecognizerFactory {
 public:
    /// Called on the main thread whenever the state changes to ended; other changes may be reported too.
    using Action = std::function<void(const TapRecognizer&)>;

    /// Whose taps are recognised: the visitor's alone, or also those that the TapPlayer plays back.
    enum class Taps { visitors, everyones };

    virtual ~TapRecognizerFactory() = default;

    /// Null if the toolkit cannot recognise taps.
    [[nodiscard]] virtual std::unique_ptr<TapRecognizer> create(Action action, Taps taps) = 0;
};

}  // namespace merovanta
