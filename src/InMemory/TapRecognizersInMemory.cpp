#include "InMemory/TapRecognizersInMemory.h"

namespace merovanta::inmemory {

class TapRecognizersInMemory::Recognizer : public TapRecognizer {
 public:
    Recognizer(std::shared_ptr<std::vector<Recognizer*>> attached, TapRecognizerFactory::Action action)
        : mAttached(std::move(attached)), mAction(std::move(action)) {}
    ~Recognizer() override { detach(); }

    void attach(const View& /*view*/) override {
        detach();
        mAttached->push_back(this);
    }
    void detach() override { std::erase(*mAttached, this); }
    [[nodiscard]] State state() const override { return mState; }
    [[nodiscard]] Point locationIn(const View& /*view*/) const override { return mPoint; }

    void report(const Point& point, State state) {
        mPoint = point;
        mState = state;
        // A copy, because the action may destroy the recogniser.
        const auto action = mAction;
        action(*this);
    }

 private:
    std::shared_ptr<std::vector<Recognizer*>> mAttached;
    TapRecognizerFactory::Action mAction;
    Point mPoint;
    State mState = State::possible;
};

std::unique_ptr<TapRecognizer> TapRecognizersInMemory::create(Action action) {
    if (isBroken) return nullptr;
    return std::make_unique<Recognizer>(mAttached, std::move(action));
}

void TapRecognizersInMemory::tap(const Point& point, TapRecognizer::State state) {
    const auto attachedNow = *mAttached;
    for (Recognizer* const recognizer : attachedNow)
        recognizer->report(point, state);
}

}  // namespace merovanta::inmemory
