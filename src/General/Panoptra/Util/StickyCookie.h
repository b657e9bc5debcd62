#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace merovanta {

/// The cookies that the service has set in one of its sessions, by which a load balancer finds the machine
/// that knows the session. Kept in memory and given back to the host that set them, by path and "Secure";
/// "Domain" is not followed, and what expires later than at once lasts as long as the session. What is larger
/// or more than cookies of use ever are is not kept. Thread: main.
class StickyCookie {
 public:
    /// Forgets the cookies of every other session.
    void enter(const std::string& sessionId);

    [[nodiscard]] bool isOf(const std::string& sessionId) const { return mSessionId == sessionId; }

    /// The value of the header by which a request to this URL gives the cookies back; empty if there are
    /// none.
    [[nodiscard]] std::string headerFor(const std::string& url) const;

    /// Follows the value of one header with which a reply from this URL sets a cookie.
    void keep(const std::string& url, std::string_view header);

 private:
    struct Cookie {
        std::string host;
        std::string path;
        std::string name;
        std::string value;
        bool isSecure = false;
    };

    std::string mSessionId;
    std::vector<Cookie> mCookies;
};

}  // namespace merovanta
