#pragma once

#include <string>
#include <string_view>

namespace merovanta {

/// The script that fetches a document in the chat page's name, and hands it over as a message to
/// "openDocument", or says in one to "jsError" why it could not.
[[nodiscard]] std::string downloadScript(std::string_view url);

}  // namespace merovanta
