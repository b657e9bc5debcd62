#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "Platform/TapRecognizer.h"

namespace merovanta::inmemory {

/// Recognisers that fire when they are told of a tap.
class TapRecognizersInMemory : public TapRecognizerFactory {
 public:
    [[nodiscard]] std::unique_ptr<TapRecognizer> create(Action action, Taps taps) override;

    /// Taps the window at this place of its root view: reports the state to every recogniser whose view is
    /// there.
    void tap(const Point& point, TapRecognizer::State state = TapRecognizer::State::ended);

    /// Says that a tap was played back there.
    void playedBack(const Point& point);

    /// How many recognisers are attached to a view.
    [[nodiscard]] std::size_t attached() const { return mAttached->size(); }

    /// Makes create() fail.
    bool isBroken = false;

 private:
    class Recognizer;
    void report(const Point& point, TapRecognizer::State state, bool isPlayedBack);

    // Outlives the factory for as long as a recogniser does.
    std::shared_ptr<std::vector<Recognizer*>> mAttached = std::make_shared<std::vector<Recognizer*>>();
};

}  // namespace merovanta::inmemory
