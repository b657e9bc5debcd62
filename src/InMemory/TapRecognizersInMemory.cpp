#include "InMemory/TapRecognizersInMemory.h"

#include <algorithm>

#include "InMemory/ViewInMemory.h"

namespace merovanta::inmemory {

class TapRecognizersInMemory::Recognizer final : public TapRecognizer {
 public:
    Recognizer(std::shared_ptr<std::vector<Recognizer*>> attached, TapRecognizerFactory::Action action,
               TapRecognizerFactory::Taps taps)
        : mAttached(std::move(attached)), mAction(std::move(action)), mTaps(taps) {}
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
        return convert(mPoint, *mView, view);
    }

    /// The place is given in the window's root view.
    void report(const Point& place, State state, bool isPlayedBack) {
        if (isPlayedBack && mTaps == TapRecognizerFactory::Taps::visitors) return;
        auto top = mView->native();
        while (top && !top->superview.expired())
            top = top->superview.lock();
        const Point point = convert(place, ViewInMemory(top), *mView);
        const Rect bounds = mView->bounds();
        if (point.x < 0 || point.y < 0 || point.x >= bounds.width || point.y >= bounds.height) return;
        mPoint = point;
        mState = state;
        // A copy, because the action may destroy the recogniser.
        const auto action = mAction;
        action(*this);
    }

 private:
    static Point convert(const Point& point, const View& from, const View& to) {
        const Rect converted = from.convert({point.x, point.y, 0, 0}, to);
        return {converted.x, converted.y};
    }

    std::shared_ptr<std::vector<Recognizer*>> mAttached;
    TapRecognizerFactory::Action mAction;
    TapRecognizerFactory::Taps mTaps;
    std::unique_ptr<ViewInMemory> mView;
    /// In the attached view.
    Point mPoint;
    State mState = State::possible;
};

std::unique_ptr<TapRecognizer> TapRecognizersInMemory::create(Action action, Taps taps) {
    if (isBroken) return nullptr;
    return std::make_unique<Recognizer>(mAttached, std::move(action), taps);
}

void TapRecognizersInMemory::tap(const Point& point, TapRecognizer::State state) {
    report(point, state, /*isPlayedBack=*/false);
}

void TapRecognizersInMemory::playedBack(const Point& point) {
    report(point, TapRecognizer::State::ended, /*isPlayedBack=*/true);
}

void TapRecognizersInMemory::report(const Point& point, TapRecognizer::State state, bool isPlayedBack) {
    const auto attachedNow = *mAttached;
    for (Recognizer* const recognizer : attachedNow) {
        // An action before may have detached or destroyed it.
        const bool isAttached =
            std::find(mAttached->begin(), mAttached->end(), recognizer) != mAttached->end();
        if (isAttached) recognizer->report(point, state, isPlayedBack);
    }
}

}  // namespace merovanta::inmemory
