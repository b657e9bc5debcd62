#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Response.h"

namespace merovanta::devservice {

/// The files of the console and the chat page: built into the program, or read from a directory while they
/// are being worked on.
class PageAssets {
 public:
    /// An empty directory means the built-in files.
    explicit PageAssets(std::filesystem::path directory = {}) : directory_(std::move(directory)) {}

    /// The names that can be served of one folder: "console/", "chat/", or "shared/" for what both pages use.
    /// A name begins with its folder.
    static std::vector<std::string_view> names(std::string_view folder);

    Response serve(std::string_view name) const;

 private:
    std::filesystem::path directory_;
};

}  // namespace merovanta::devservice
