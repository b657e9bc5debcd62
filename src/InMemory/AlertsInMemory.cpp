#include "InMemory/AlertsInMemory.h"

namespace merovanta::inmemory {

class AlertsInMemory::Presented : public Alert {
 public:
    explicit Presented(std::shared_ptr<std::function<void(bool)>> answered)
        : mAnswered(std::move(answered)) {}

 private:
    std::shared_ptr<std::function<void(bool)>> mAnswered;
};

std::unique_ptr<Alert> AlertsInMemory::present(const ViewController& /*over*/, const AlertTexts& texts,
                                               std::function<void(bool accepted)> answered) {
    presented.push_back(texts);
    auto shared = std::make_shared<std::function<void(bool)>>(std::move(answered));
    mLast = shared;
    return std::make_unique<Presented>(std::move(shared));
}

void AlertsInMemory::answer(bool accepted) {
    mTime->post([last = std::exchange(mLast, {}), accepted] {
        if (const auto answered = last.lock()) (*answered)(accepted);
    });
}

}  // namespace merovanta::inmemory
