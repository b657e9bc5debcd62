#include "General/Panoptra/Network/MerovantaAPI.h"

#include <Merovanta/Merovanta.h>

#include <boost/url/url.hpp>
#include <utility>

#include "General/ConstantUtils.h"
#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Util/Url.h"

namespace merovanta {

namespace {

StringError noUrl() {
    return StringError("Cannot construct URL");
}

MerovantaAPI::TranslationsResult decodeTranslations(const HttpReply& reply) {
    if (const auto error = failureOf(reply)) return *error;
    if (!reply.data) return StringError("data is nil");
    const auto json = parseJson(*reply.data);
    if (!json) return StringError("Cannot parse JSON");
    if (!json->is_object()) return StringError("Cannot use response as dictionary");
    MerovantaAPI::Translations translations;
    for (const auto& [key, value] : json->items()) {
        if (value.is_string()) translations[key] = value.get<std::string>();
    }
    return translations;
}

}  // namespace

std::optional<StringError> failureOf(const HttpReply& reply) {
    if (reply.error) return reply.error;
    const int status = reply.response ? reply.response->status : 0;
    if (status >= 200 && status < 300) return std::nullopt;
    return StringError("HTTP status " + std::to_string(status));
}

MerovantaAPI::MerovantaAPI(std::shared_ptr<HttpUtil> util) : httpUtil(std::move(util)) {}

std::optional<std::string> MerovantaAPI::buildUrl(const std::string& path, const Query& query) {
    const auto base = parseUrl(ConstantUtils::valueOrEmpty("HttpProtocol") + "://" +
                               Merovanta::configuration().server() + "/" + path);
    if (!base) return std::nullopt;
    boost::urls::url url(*base);
    for (const auto& [key, value] : query)
        url.params().append({key, value});
    return std::string(url.buffer());
}

void MerovantaAPI::get(const std::string& url, HttpUtil::Completion completion,
                       const HttpUtil::Options& options) const {
    if (parseUrl(url)) {
        httpUtil->get(url, std::move(completion), options);
    } else {
        completion(HttpReply{.error = noUrl()});
    }
}

void MerovantaAPI::post(const std::string& path, const Query& query, std::string body,
                        HttpUtil::Completion completion) const {
    if (const auto url = buildUrl(path, query)) {
        httpUtil->post(*url, std::move(body), std::move(completion));
    } else {
        completion(HttpReply{.error = noUrl()});
    }
}

void MerovantaAPI::deleteMessages(const Query& query, std::function<void(VoidResult)> completion) const {
    const auto url = buildUrl("api/ix/m", query);
    if (!url) {
        completion(noUrl());
        return;
    }
    const auto sessionId = query.find("sId");
    httpUtil->deleteResource(
        *url,
        [completion = std::move(completion)](const HttpReply& reply) {
            completion(reply.error ? VoidResult(*reply.error) : VoidResult(std::optional(VoidReply())));
        },
        {.sessionId = sessionId == query.end() ? std::nullopt : std::optional(sessionId->second)});
}

void MerovantaAPI::getTranslations(const std::string& tenantId, const std::string& language,
                                   std::function<void(TranslationsResult)> completion) const {
    const auto url = buildUrl("api/in/i18n", {{"tId", tenantId}, {"lang", language}});
    if (!url) {
        completion(noUrl());
        return;
    }
    httpUtil->get(*url, [completion = std::move(completion)](const HttpReply& reply) {
        completion(decodeTranslations(reply));
    });
}

}  // namespace merovanta
