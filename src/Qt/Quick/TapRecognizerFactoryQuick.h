#pragma once

#include "Platform/TapRecognizer.h"

namespace merovanta::quick {

class TapRecognizerFactoryQuick final : public TapRecognizerFactory {
 public:
    [[nodiscard]] std::unique_ptr<TapRecognizer> create(Action action, Taps taps) override;
};

}  // namespace merovanta::quick
