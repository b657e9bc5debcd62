#include "General/Panoptra/Util/Url.h"

#include <algorithm>
#include <boost/url/encode.hpp>
#include <boost/url/parse.hpp>
#include <boost/url/rfc/pchars.hpp>
#include <cctype>

namespace merovanta {

void appendEncoded(std::string& target, char character) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(character);
    target += {'%', digits[byte >> 4], digits[byte & 0xF]};
}

namespace {

bool isHexDigit(char character) {
    return std::isxdigit(static_cast<unsigned char>(character)) != 0;
}

bool isEscape(std::string_view text, std::size_t at) {
    return text[at] == '%' && at + 2 < text.size() && isHexDigit(text[at + 1]) && isHexDigit(text[at + 2]);
}

std::string encodeIllegal(std::string_view text, std::string_view legalPunctuation) {
    std::string encoded;
    encoded.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        const bool isAscii = static_cast<unsigned char>(character) < 0x80;
        const bool isLegal = (isAscii && std::isalnum(static_cast<unsigned char>(character))) ||
                             legalPunctuation.find(character) != std::string_view::npos || isEscape(text, at);
        if (isLegal) {
            encoded += character;
        } else {
            appendEncoded(encoded, character);
        }
    }
    return encoded;
}

/// The parser takes what it does not understand of the authority ("host:port:1") for the path.
bool isAuthorityUnderstood(const boost::urls::url_view& url) {
    return url.encoded_path().empty() || url.encoded_path().starts_with('/');
}

}  // namespace

std::optional<std::string> parseUrl(std::string_view text) {
    const auto schemeEnd = text.find("://");
    if (schemeEnd == std::string_view::npos) return std::nullopt;
    const std::string_view scheme = text.substr(0, schemeEnd);
    const std::string_view rest = text.substr(schemeEnd + 3);
    const auto hostEnd = std::min(rest.find_first_of("/?#"), rest.size());
    const auto fragment = std::min(rest.find('#', hostEnd), rest.size());

    std::string url(scheme);
    url += "://";
    url += encodeIllegal(rest.substr(0, hostEnd), "-._~!$&'()*+,;=:@[]");
    url += encodeIllegal(rest.substr(hostEnd, fragment - hostEnd), "-._~!$&'()*+,;=:@/?");
    if (fragment < rest.size()) url += '#' + encodeIllegal(rest.substr(fragment + 1), "-._~!$&'()*+,;=:@/?");
    const auto parsed = boost::urls::parse_uri(url);
    if (parsed.has_error() || !isAuthorityUnderstood(*parsed)) return std::nullopt;
    return url;
}

std::string encodePathSegment(std::string_view text) {
    // These two would be taken for steps in the path.
    if (text == ".") return "%2E";
    if (text == "..") return "%2E%2E";
    return boost::urls::encode(text, boost::urls::pchars);
}

std::string encodeQuery(std::string_view text) {
    return boost::urls::encode(text, boost::urls::pchars + '/' + '?');
}

}  // namespace merovanta
