#pragma once

#include "Platform/TapRecognizer.h"

namespace merovanta::quick {

class TapRecognizerFactoryQuick final : public TapRecognizerFactory {
 public:
    [[nodiscard]] std::unique_ptr<TapRecognizer> create(Action action) override;
};

}  // namespace merovanta::quick
