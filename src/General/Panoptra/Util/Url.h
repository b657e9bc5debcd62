#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace merovanta {

/// Parses a text as an absolute URL and gives it back in ASCII: characters that may not stand in a URL, such
/// as spaces and non-ASCII letters of a host or page name, are percent-encoded. Absent if it is no URL even
/// then. The host may be empty: a request to nowhere fails like any other that finds no way.
[[nodiscard]] std::optional<std::string> parseUrl(std::string_view text);

/// Appends a byte percent-encoded.
void appendEncoded(std::string& target, char character);

/// Percent-encodes a text so that it is one segment of a path, whatever it holds.
[[nodiscard]] std::string encodePathSegment(std::string_view text);

/// Percent-encodes what may not stand in the query of a URL; what separates its parts ("&", "=") stays.
[[nodiscard]] std::string encodeQuery(std::string_view text);

}  // namespace merovanta
