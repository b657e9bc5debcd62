#include "General/Panoptra/Util/StickyCookie.h"

#include <algorithm>
#include <boost/url/parse.hpp>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <iomanip>
#include <locale>
#include <optional>
#include <sstream>
#include <utility>

#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr std::size_t maximumCookie = 4096;
constexpr std::size_t maximumCookies = 16;

struct Place {
    std::string host;
    std::string path;
    bool isSecure = false;
};

std::optional<Place> placeOf(const std::string& text) {
    const auto url = boost::urls::parse_uri(text);
    if (!url) return std::nullopt;
    std::string path(url->encoded_path());
    return Place{.host = std::string(url->encoded_host()),
                 .path = path.empty() ? "/" : std::move(path),
                 .isSecure = url->scheme() == "https" || url->scheme() == "wss"};
}

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

/// Cuts the part before the separator off the text.
std::string_view takePart(std::string_view& text, char separator) {
    const auto end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return trimmed(part);
}

bool isNamed(std::string_view name, std::string_view wanted) {
    return std::equal(name.begin(), name.end(), wanted.begin(), wanted.end(), [](char one, char other) {
        return std::tolower(static_cast<unsigned char>(one)) == other;
    });
}

bool isPrintable(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

bool isPast(std::string_view date) {
    std::istringstream text{std::string(date)};
    text.imbue(std::locale::classic());
    std::tm moment{};
    text >> std::get_time(&moment, "%a, %d %b %Y %H:%M:%S");
    if (text.fail()) return false;
    return std::chrono::seconds(timegm(&moment)) <= platform::current().clock().sinceEpoch();
}

/// The directory of the request, where a cookie without a path belongs.
std::string directoryOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

bool isBelow(const std::string& path, const std::string& directory) {
    if (!path.starts_with(directory)) return false;
    return path.size() == directory.size() || directory.ends_with('/') || path[directory.size()] == '/';
}

}  // namespace

void StickyCookie::enter(const std::string& sessionId) {
    if (mSessionId == sessionId) return;
    mSessionId = sessionId;
    mCookies.clear();
}

std::string StickyCookie::headerFor(const std::string& url) const {
    std::string header;
    if (mCookies.empty()) return header;
    const auto place = placeOf(url);
    for (const auto& cookie : mCookies) {
        if (!place || cookie.host != place->host || !isBelow(place->path, cookie.path)) continue;
        if (cookie.isSecure && !place->isSecure) continue;
        if (!header.empty()) header += "; ";
        header += cookie.name + "=" + cookie.value;
    }
    return header;
}

void StickyCookie::keep(const std::string& url, std::string_view header) {
    const auto place = placeOf(url);
    if (!place || !isPrintable(header)) return;
    std::string_view value = takePart(header, ';');
    const std::string_view name = takePart(value, '=');
    if (name.empty() || name.size() + value.size() > maximumCookie) return;
    Cookie cookie{.host = place->host,
                  .path = directoryOf(place->path),
                  .name = std::string(name),
                  .value = std::string(trimmed(value))};
    bool isGone = false;
    while (!header.empty()) {
        std::string_view argument = takePart(header, ';');
        const std::string_view attribute = takePart(argument, '=');
        argument = trimmed(argument);
        if (isNamed(attribute, "secure")) cookie.isSecure = true;
        if (isNamed(attribute, "path") && argument.starts_with('/')) cookie.path = argument;
        if (isNamed(attribute, "max-age")) isGone = std::atoll(std::string(argument).c_str()) <= 0;
        if (isNamed(attribute, "expires")) isGone |= isPast(argument);
    }
    if (cookie.path.size() > maximumCookie) return;
    std::erase_if(mCookies, [&](const Cookie& old) {
        return old.host == cookie.host && old.path == cookie.path && old.name == cookie.name;
    });
    if (!isGone && mCookies.size() < maximumCookies) mCookies.push_back(std::move(cookie));
}

}  // namespace merovanta
