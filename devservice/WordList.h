#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace merovanta::devservice {

/// Different texts to search for, a bounded number of bytes of them, kept as lines of one text.
class WordList {
 public:
    WordList() = default;
    explicit WordList(std::string_view lines);

    /// False when it is there already, is empty or there is no room for it.
    bool add(std::string_view text);

    std::string lines() const;

 private:
    static constexpr std::size_t kMaxBytes = 8U << 10U;

    std::set<std::string, std::less<>> texts_;
    std::size_t bytes_ = 0;
};

}  // namespace merovanta::devservice
