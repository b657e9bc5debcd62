#pragma once

#include <string_view>

namespace merovanta::devservice {

/// A file of a page as it was when the program was built.
struct EmbeddedFile {
    std::string_view name;
    std::string_view content;
};

/// Generated at build time: the files and how many there are.
extern const EmbeddedFile* const kEmbeddedFiles;
extern const unsigned kEmbeddedFileCount;

}  // namespace merovanta::devservice
