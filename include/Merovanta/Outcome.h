#pragma once

#include <functional>
#include <optional>
#include <string>

namespace merovanta {

/// Told what became of a call: nothing if it has been done, else the reason why not. Called once, on the main
/// thread, possibly before the call returns. An empty one is not called.
using Outcome = std::function<void(const std::optional<std::string>& error)>;

}  // namespace merovanta
