#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Util/StickyCookie.h"
#include "Platform/HttpSession.h"

namespace merovanta {

/// Builds and sends the library's HTTP requests, each bound to the service session by a header. Replies are
/// passed through as they come: a status is for the caller to judge. Thread: main; completions arrive on a
/// thread of the HTTP session's.
class HttpUtil {
 public:
    using Completion = HttpSession::Completion;

    struct Options {
        /// Whose request it is; without one, that of the visit.
        std::optional<std::string> sessionId;
        std::chrono::seconds timeout{60};
        bool onNewConnection = false;
    };

    explicit HttpUtil(std::shared_ptr<ApplicationConfigWrapper> applicationConfig);

    /// A GET request with the session header and the session's cookies. A text that is no URL ends the
    /// process.
    [[nodiscard]] HttpRequest buildRequest(const std::string& url) const;
    [[nodiscard]] HttpRequest buildRequest(const std::string& url, const Options& options) const;

    void get(const std::string& url, Completion completion) const;
    void get(const std::string& url, Completion completion, const Options& options) const;

    void deleteResource(const std::string& url, Completion completion, const Options& options) const;

    /// The content type is announced as JSON whatever the body holds; the service expects it so.
    void post(const std::string& url, std::string body, Completion completion) const;
    void post(const std::string& url, std::string body, Completion completion, const Options& options) const;

    /// Sends a request that was built here.
    void execute(HttpRequest request, Completion completion) const;

    // Requests carry the cookies that replies in the same service session have set.
    const std::shared_ptr<StickyCookie> stickyCookie = std::make_shared<StickyCookie>();
    const std::string setCookieHeaderName = "Set-Cookie";
    const std::string cookieHeaderName = "Cookie";
    const std::string ssidHeadername = "X-QD-SSID";

 private:
    [[nodiscard]] std::string sessionId() const;

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
};

}  // namespace merovanta
