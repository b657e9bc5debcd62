#include "Qt/Quick/TapRecognizerFactoryQuick.h"

#include <utility>

#include "Qt/Quick/TapRecognizerQuick.h"

namespace merovanta::quick {

std::unique_ptr<TapRecognizer> TapRecognizerFactoryQuick::create(Action action) {
    return std::make_unique<TapRecognizerQuick>(std::move(action));
}

}  // namespace merovanta::quick
