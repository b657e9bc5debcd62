#include "ConsoleAccess.h"

#include <algorithm>

#include "Secret.h"

namespace merovanta::devservice {
namespace {

constexpr std::size_t kCookieBytes = 16;
constexpr std::string_view kBearer = "Bearer ";

// Cookies are the same for all ports of a host, services are not.
std::string cookieName(const Request& request) {
    const std::size_t colon = request.host.rfind(':');
    const std::string port = colon == std::string::npos ? "" : request.host.substr(colon + 1);
    const bool digits = port.find_first_not_of("0123456789") == std::string::npos;
    return "merovanta-agent-" + (digits ? port : "");
}

std::string setCookie(const Request& request, const std::string& value, const char* life) {
    return cookieName(request) + "=" + value + "; Path=/; HttpOnly; SameSite=Lax; Max-Age=" + life +
           (request.encrypted ? "; Secure" : "");
}

bool isCookie(std::string_view value) {
    return value.size() == 2 * kCookieBytes &&
           value.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

}  // namespace

std::string ConsoleAccess::cookie(const Request& request) const {
    const std::string name = cookieName(request) + "=";
    std::string_view rest = request.cookies;
    while (!rest.empty()) {
        std::string_view item = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(item.size() + 1, rest.size()));
        item.remove_prefix(std::min(item.find_first_not_of(' '), item.size()));
        if (!item.starts_with(name)) continue;
        item.remove_prefix(name.size());
        if (isCookie(item)) return std::string(item);
    }
    return {};
}

std::string ConsoleAccess::browser(const Request& request) const {
    const std::string value = cookie(request);
    constexpr std::size_t enough = 12;
    return value.empty() ? "" : digest("agent " + value).substr(0, enough);
}

bool ConsoleAccess::isSignedIn(const Request& request) {
    const std::string value = cookie(request);
    if (value.empty()) return false;
    const auto known = signedIn_.find(digest(value));
    if (known == signedIn_.end()) return false;
    known->second = currentMoment();
    return true;
}

bool ConsoleAccess::admits(const Request& request) {
    if (isOpen() || isSignedIn(request)) return true;
    if (!request.authorization.starts_with(kBearer)) return false;
    const auto token = std::string_view(request.authorization).substr(kBearer.size());
    return signIn(token, request.remoteAddress, currentMoment()) == SignIn::Done;
}

ConsoleAccess::SignIn ConsoleAccess::signIn(std::string_view token, const std::string& address, Moment now) {
    if (!limit_.allows(address, now)) return SignIn::TooManyTries;
    if (isOpen() || !isSameSecret(token, token_)) return SignIn::Wrong;
    limit_.succeeded(address);
    return SignIn::Done;
}

std::string ConsoleAccess::startBrowser(const Request& request) {
    const std::string value = randomHex(kCookieBytes);
    if (isOpen()) return setCookie(request, value, "31536000");
    if (signedIn_.size() >= kMaxSignedIn) {
        signedIn_.erase(std::min_element(signedIn_.begin(), signedIn_.end(),
                                         [](const auto& a, const auto& b) { return a.second < b.second; }));
    }
    signedIn_[digest(value)] = currentMoment();
    return setCookie(request, value, "43200");
}

std::string ConsoleAccess::endBrowser(const Request& request) {
    signedIn_.erase(digest(cookie(request)));
    return setCookie(request, "", "0");
}

}  // namespace merovanta::devservice
