#pragma once

#include <string>
#include <string_view>

namespace merovanta::devservice {

/// The bytes in gzip's format, as small as it makes them; empty when there is no memory for it.
std::string gzip(std::string_view bytes);

}  // namespace merovanta::devservice
