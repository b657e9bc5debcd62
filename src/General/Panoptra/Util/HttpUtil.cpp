#include "General/Panoptra/Util/HttpUtil.h"

#include <algorithm>
#include <cctype>
#include <utility>
#include <vector>

#include "General/Fatal.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Util/Url.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

/// What stands under the name, in whatever case the service writes it.
std::vector<std::string> valuesOf(const HttpResponse& response, const std::string& name) {
    const auto isSame = [](char one, char other) {
        return std::tolower(static_cast<unsigned char>(one)) ==
               std::tolower(static_cast<unsigned char>(other));
    };
    std::vector<std::string> values;
    for (const auto& [key, value] : response.headers) {
        if (std::equal(key.begin(), key.end(), name.begin(), name.end(), isSame)) values.push_back(value);
    }
    return values;
}

std::string valueOf(const HttpRequest& request, const std::string& name) {
    for (const auto& [key, value] : request.headers) {
        if (key == name) return value;
    }
    return {};
}

}  // namespace

HttpUtil::HttpUtil(std::shared_ptr<ApplicationConfigWrapper> wrapper)
    : applicationConfig(std::move(wrapper)) {}

HttpRequest HttpUtil::buildRequest(const std::string& url) const {
    return buildRequest(url, Options());
}

HttpRequest HttpUtil::buildRequest(const std::string& url, const Options& options) const {
    assertMainThread();
    auto parsed = parseUrl(url);
    if (!parsed) fatalError("Not a URL: " + url);
    const std::string session = options.sessionId.value_or(sessionId());
    // A last request of a session that is over takes the cookies of none.
    if (session == sessionId()) stickyCookie->enter(session);
    HttpRequest request{.url = std::move(*parsed),
                        .headers = {{ssidHeadername, session}},
                        .timeout = options.timeout,
                        .onNewConnection = options.onNewConnection};
    auto cookies = stickyCookie->isOf(session) ? stickyCookie->headerFor(request.url) : std::string();
    if (!cookies.empty()) request.headers.emplace_back(cookieHeaderName, std::move(cookies));
    return request;
}

std::string HttpUtil::sessionId() const {
    const auto& visit = applicationConfig->config.visitConfig;
    return visit ? visit->sessionId.value_or("") : "";
}

void HttpUtil::get(const std::string& url, Completion completion) const {
    get(url, std::move(completion), Options());
}

void HttpUtil::get(const std::string& url, Completion completion, const Options& options) const {
    Log::debug("GET " + url);
    execute(buildRequest(url, options), std::move(completion));
}

void HttpUtil::deleteResource(const std::string& url, Completion completion, const Options& options) const {
    Log::debug("DELETE " + url);
    HttpRequest request = buildRequest(url, options);
    request.method = "DELETE";
    execute(std::move(request), std::move(completion));
}

void HttpUtil::post(const std::string& url, std::string body, Completion completion) const {
    post(url, std::move(body), std::move(completion), Options());
}

void HttpUtil::post(const std::string& url, std::string body, Completion completion,
                    const Options& options) const {
    Log::debug("POST " + url);
    HttpRequest request = buildRequest(url, options);
    request.headers.emplace_back("Content-Type", "application/json");
    request.method = "POST";
    request.body = std::move(body);
    execute(std::move(request), std::move(completion));
}

void HttpUtil::execute(HttpRequest request, Completion completion) const {
    auto keepCookies = [jar = std::weak_ptr(stickyCookie), session = valueOf(request, ssidHeadername),
                        url = request.url, name = setCookieHeaderName](const HttpReply& reply) {
        auto headers = reply.response ? valuesOf(*reply.response, name) : std::vector<std::string>();
        if (headers.empty()) return;
        ViewUtils::runOnMainQueue([jar, session, url, headers = std::move(headers)] {
            const auto cookies = jar.lock();
            // The reply to a request of a session that is over sets none in the next.
            if (!cookies || !cookies->isOf(session)) return;
            for (const auto& header : headers)
                cookies->keep(url, header);
        });
    };
    platform::current().httpSession().execute(
        std::move(request),
        [keepCookies = std::move(keepCookies), completion = std::move(completion)](HttpReply reply) {
            keepCookies(reply);
            completion(std::move(reply));
        });
}

}  // namespace merovanta
