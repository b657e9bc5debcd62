#include "Qt/Quick/TapRecognizerFactoryQuick.h"

#include <utility>

#include "Qt/Quick/TapRecognizerQuick.h"

namespace merovanta::quick {

std::unique_ptr<TapRecognizer> TapRecognizerFactoryQuick::create(Action action, Taps taps) {
    return std::make_unique<TapRecognizerQuick>(std::move(action), taps);
}

}  // namespace merovanta::quick
