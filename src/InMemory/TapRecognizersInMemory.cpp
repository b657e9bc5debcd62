#include "InMemory/TapRecognizersInMemory.h"

#include <algorithm>

#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

class TapRecognizersInMemory::Recognizer : public TapRecognizer {
 public:
    Recognizer(std::shared_ptr<std::vector<Recognizer*>> attached, TapRecognizerFactory::Action action)
        : mAttached(std::move(attached)), mAction(std::move(action)) {}
    ~Recognizer() override { detach(); }

    void attach(const View& view) override {
        detach();
        mView = std::make_unique<ViewInMemory>(dynamic_cast<const ViewInMemory&>(view).native());
        mAttached->push_back(this);
    }
    void detach() override { std::erase(*mAttached, this); }
    [[nodiscard]] State state() const override { return mState; }
    [[nodiscard]] Point locationIn(const View& view) const override {
        if (!mView) return {};
        const Rect place = mView->convert({mPoint.x, mPoint.y, 0, 0}, view);
        return {place.x, place.y};
    }

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
    std::unique_ptr<ViewInMemory> mView;
    Point mPoint;
    State mState = State::possible;
};

std::unique_ptr<TapRecognizer> TapRecognizersInMemory::create(Action action) {
    if (isBroken) return nullptr;
    return std::make_unique<Recognizer>(mAttached, std::move(action));
}

void TapRecognizersInMemory::tap(const Point& point, TapRecognizer::State state) {
    const auto attachedNow = *mAttached;
    for (Recognizer* const recognizer : attachedNow) {
        // An action before may have detached or destroyed it.
        const bool isAttached =
            std::find(mAttached->begin(), mAttached->end(), recognizer) != mAttached->end();
        if (isAttached) recognizer->report(point, state);
    }
}

}  // namespace merovanta::inmemory
