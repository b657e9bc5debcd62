#include "SignInApi.h"

#include <nlohmann/json.hpp>

#include "JsonBody.h"

namespace merovanta::devservice {
namespace {

constexpr std::size_t kMaxBodyBytes = 4096;

unsigned status(ConsoleAccess::SignIn result) {
    switch (result) {
        case ConsoleAccess::SignIn::Done:
            return 204;
        case ConsoleAccess::SignIn::Wrong:
            return 401;
        case ConsoleAccess::SignIn::TooManyTries:
            return 429;
    }
    return 401;
}

}  // namespace

void SignInApi::addRoutes(GuardedRoutes& routes) {
    routes.add("GET", "/", [this](const Request& request) { return enter(request); });
    routes.add(
        "POST", "/console/sign-in", [this](const Request& request) { return signIn(request); },
        kMaxBodyBytes);
    routes.add("POST", "/console/sign-out", [this](const Request& request) {
        return Response{204, {}, {}, {{"Set-Cookie", access_.endBrowser(request)}}};
    });
    for (const std::string name : {"signIn.css", "signIn.js", "favicon.svg"}) {
        routes.add("GET", "/console/" + name,
                   [this, name](const Request& request) { return assets_.serve("console", name, request); });
    }
}

Response SignInApi::page(const Request& request, const PageAssets& assets, unsigned status) {
    Response response = assets.serve("console", "signIn.html", request);
    if (response.status == 200) response.status = status;
    return response;
}

Response SignInApi::enter(const Request& request) {
    const std::string token = request.target.value("token");
    if (!access_.isOpen() && !token.empty()) {
        const auto result = access_.signIn(token, request.remoteAddress, currentMoment());
        if (result != ConsoleAccess::SignIn::Done) return page(request, assets_, status(result));
        // Without the token, which would stay in the browser's history.
        return {303, {}, {}, {{"Location", "/"}, {"Set-Cookie", access_.startBrowser(request)}}};
    }
    if (!access_.admits(request)) return page(request, assets_);
    Response response = assets_.serve("console", "index.html", request);
    if (access_.isOpen() && access_.browser(request).empty())
        response.headers.emplace_back("Set-Cookie", access_.startBrowser(request));
    return response;
}

Response SignInApi::signIn(const Request& request) {
    const nlohmann::json body = parseObject(request.body);
    if (body.is_discarded()) return Response::error(400, "the body is no JSON object");
    const auto result = access_.signIn(textMember(body, "token"), request.remoteAddress, currentMoment());
    if (result == ConsoleAccess::SignIn::Wrong) return Response::error(401, "the token is not the right one");
    if (result == ConsoleAccess::SignIn::TooManyTries) {
        Response refusal = Response::error(429, "too many tries; wait a minute");
        refusal.headers.emplace_back("Retry-After", "60");
        return refusal;
    }
    return {204, {}, {}, {{"Set-Cookie", access_.startBrowser(request)}}};
}

}  // namespace merovanta::devservice
