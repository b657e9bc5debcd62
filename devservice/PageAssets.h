#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "Request.h"
#include "Response.h"

namespace merovanta::devservice {

/// The files of the console and the chat page: built into the program, or read from a directory while they
/// are being worked on. Those built in are compressed, and named by what they hold, so that a browser keeps
/// them.
class PageAssets {
 public:
    /// An empty directory means the built-in files.
    explicit PageAssets(std::filesystem::path directory = {});

    /// A file of the folder "console" or "chat", or of what both use.
    Response serve(std::string_view folder, std::string_view name, const Request& request) const;

 private:
    struct File {
        std::string content;
        std::string compressed;
        /// Changes with the content.
        std::string version;
    };

    /// Lets a page of the folder name the files with it by their versions.
    void nameVersions(const std::string& folder, std::string& page) const;
    static Response builtIn(std::string_view name, const File& file, const Request& request);
    Response fromDirectory(std::string_view folder, std::string_view name) const;

    std::filesystem::path directory_;
    std::map<std::string, File, std::less<>> files_;
};

}  // namespace merovanta::devservice
