#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <string>

#include "Moment.h"

namespace merovanta::devservice {

/// Bounds how often somebody may guess a secret: by address, and of all addresses together.
class TryLimit {
 public:
    static constexpr std::size_t kTries = 10, kTriesOfAll = 200;
    static constexpr std::chrono::seconds kWindow{60};

    /// Whether this address may try. Every call that is allowed counts until `succeeded`.
    bool allows(const std::string& address, Moment now);
    void succeeded(const std::string& address);

 private:
    Moment since_{};
    std::size_t ofAll_ = 0;
    std::map<std::string, std::size_t> tries_;
};

}  // namespace merovanta::devservice
