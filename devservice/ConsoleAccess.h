#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "Moment.h"
#include "Request.h"
#include "TryLimit.h"

namespace merovanta::devservice {

/// Who may use the console: everybody who reaches it, or whoever knows a token. Either way each browser is
/// known by a random cookie of its own. Programs send the token itself, as `Authorization: Bearer TOKEN`.
class ConsoleAccess {
 public:
    static constexpr std::size_t kMaxSignedIn = 64;
    enum class SignIn { Done, Wrong, TooManyTries };

    /// From now on only whoever knows the token.
    void demand(std::string token) { token_ = std::move(token); }
    bool isOpen() const { return token_.empty(); }

    /// Whether the request comes from somebody who may; a wrong token in it counts as a try.
    bool admits(const Request& request);

    /// Tries a token; when it is done, `startBrowser` lets the browser in.
    SignIn signIn(std::string_view token, const std::string& address, Moment now);

    /// The Set-Cookie header that makes the browser known from now on, and that lets it in.
    std::string startBrowser(const Request& request);
    /// The Set-Cookie header that makes it forget, after taking its access away.
    std::string endBrowser(const Request& request);

    /// What tells the request's browser from others, and gives nobody access: empty when it is not known.
    std::string browser(const Request& request) const;

 private:
    std::string cookie(const Request& request) const;
    bool isSignedIn(const Request& request);

    std::string token_;
    TryLimit limit_;
    /// When each signed-in browser was last seen, by the digest of its cookie.
    std::map<std::string, Moment> signedIn_;
};

}  // namespace merovanta::devservice
