#pragma once

#include "Platform/Application.h"

namespace merovanta::quick {

class ApplicationQuick final : public Application {
 public:
    [[nodiscard]] std::shared_ptr<ViewController> keyWindowRootViewController() override;
    [[nodiscard]] Screen mainScreen() override;
    [[nodiscard]] std::vector<std::string> preferredLanguages() override;
    [[nodiscard]] std::optional<std::string> identifierForVendor() override;
    [[nodiscard]] bool classExists(std::string_view name) override;
};

}  // namespace merovanta::quick
