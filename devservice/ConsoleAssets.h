#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Response.h"

namespace merovanta::devservice {

/// The files of the console page: built into the program, or read from a directory while the page is being
/// worked on.
class ConsoleAssets {
 public:
    /// An empty directory means the built-in files.
    explicit ConsoleAssets(std::filesystem::path directory = {}) : directory_(std::move(directory)) {}

    /// The names that can be served; the page itself is "index.html".
    static std::vector<std::string_view> names();

    Response serve(std::string_view name) const;

 private:
    std::filesystem::path directory_;
};

}  // namespace merovanta::devservice
