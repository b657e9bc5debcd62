#pragma once

#include "Platform/Application.h"
#include "Qt/Quick/ActivityQuick.h"

namespace merovanta::quick {

class ApplicationQuick final : public Application {
 public:
    [[nodiscard]] bool exists() override;
    [[nodiscard]] bool isActive() override { return mActivity.isActive(); }
    [[nodiscard]] std::unique_ptr<Observation> observeWillResignActive(
        std::function<void()> observer) override;
    [[nodiscard]] std::unique_ptr<Observation> observeDidBecomeActive(
        std::function<void()> observer) override;
    [[nodiscard]] std::shared_ptr<ViewController> keyWindowRootViewController() override;
    [[nodiscard]] Screen mainScreen() override;
    [[nodiscard]] std::vector<std::string> preferredLanguages() override;
    [[nodiscard]] std::optional<std::string> identifierForVendor() override;
    [[nodiscard]] std::vector<bool> classesExist(const std::vector<std::string>& names) override;

 private:
    ActivityQuick mActivity;
};

}  // namespace merovanta::quick
