#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace merovanta {

/// Of one document.
constexpr std::size_t maximumDocumentBytes = std::size_t{32} * 1024 * 1024;

/// How a message to "jsError" begins that refuses a document for its size.
constexpr std::string_view documentTooLargeError =
    "res.blob() threw, error: RangeError: The document is too large, url: ";

/// The script that fetches a document in the chat page's name, and hands it over as a message to
/// "openDocument", or says in one to "jsError" why it could not.
[[nodiscard]] std::string downloadScript(std::string_view url);

}  // namespace merovanta
