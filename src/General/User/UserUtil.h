#pragma once

#include <functional>

namespace merovanta {

/// Thread: main.
class UserUtil {
 public:
    UserUtil() = delete;

    /// Makes sure that the service knows some visitor: calls back at once if one is identified, otherwise
    /// tags an anonymous one first, as User::tag() does.
    static void tagUserIfNeeded(std::function<void(bool)> callback);
};

}  // namespace merovanta
