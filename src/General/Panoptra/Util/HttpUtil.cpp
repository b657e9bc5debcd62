#include "General/Panoptra/Util/HttpUtil.h"

#include <utility>

#include "General/Fatal.h"
#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Util/Url.h"
#include "Platform/Platform.h"

namespace merovanta {

HttpUtil::HttpUtil(std::shared_ptr<ApplicationConfigWrapper> wrapper)
    : applicationConfig(std::move(wrapper)) {}

HttpRequest HttpUtil::buildRequest(const std::string& url) const {
    assertMainThread();
    auto parsed = parseUrl(url);
    if (!parsed) fatalError("Not a URL: " + url);
    const auto& visit = applicationConfig->config.visitConfig;
    const std::string sessionId = visit ? visit->sessionId.value_or("") : "";
    return HttpRequest{.url = std::move(*parsed), .headers = {{ssidHeadername, sessionId}}};
}

void HttpUtil::get(const std::string& url, Completion completion) const {
    Log::debug("GET " + url);
    execute(buildRequest(url), std::move(completion));
}

void HttpUtil::deleteResource(const std::string& url, Completion completion) const {
    Log::debug("DELETE " + url);
    HttpRequest request = buildRequest(url);
    request.method = "DELETE";
    execute(std::move(request), std::move(completion));
}

void HttpUtil::post(const std::string& url, std::string body, Completion completion) const {
    Log::debug("POST " + url);
    HttpRequest request = buildRequest(url);
    request.headers.emplace_back("Content-Type", "application/json");
    request.method = "POST";
    request.body = std::move(body);
    execute(std::move(request), std::move(completion));
}

void HttpUtil::execute(HttpRequest request, Completion completion) const {
    platform::current().httpSession().execute(std::move(request), std::move(completion));
}

}  // namespace merovanta
