#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "InMemory/VirtualTime.h"
#include "Platform/Alert.h"

namespace merovanta::inmemory {

/// Keeps the alerts until the test answers them.
class AlertsInMemory : public AlertFactory {
 public:
    explicit AlertsInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    [[nodiscard]] std::unique_ptr<Alert> present(const ViewController& over, const AlertTexts& texts,
                                                 std::function<void(bool accepted)> answered) override;

    /// What all alerts so far say.
    std::vector<AlertTexts> presented;

    /// Whether the last alert waits for its answer.
    [[nodiscard]] bool isOpen() const { return !mLast.expired(); }

    /// Answers the last alert, if it is still open.
    void answer(bool accepted);

 private:
    class Presented;

    std::shared_ptr<VirtualTime> mTime;
    std::weak_ptr<std::function<void(bool)>> mLast;
};

}  // namespace merovanta::inmemory
