#pragma once

#include "Platform/Alert.h"

namespace merovanta::quick {

class AlertFactoryQuick final : public AlertFactory {
 public:
    [[nodiscard]] std::unique_ptr<Alert> present(const ViewController& over, const AlertTexts& texts,
                                                 std::function<void(bool accepted)> answered) override;
};

}  // namespace merovanta::quick
