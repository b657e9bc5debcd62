#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/Network/VoidReply.h"
#include "General/Panoptra/Util/HttpUtil.h"
#include "General/Result.h"

namespace merovanta {

/// What failed: the request, or the service by a status outside 200 to 299. Absent if neither did.
[[nodiscard]] std::optional<StringError> failureOf(const HttpReply& reply);

/// The REST client: builds addresses on the configured server and decodes replies. Thread: main; completions
/// are called once, inside the call if no request can be made, else on a thread of the HTTP session's.
class MerovantaAPI {
 public:
    using Query = std::map<std::string, std::string>;
    using Translations = std::map<std::string, std::string>;
    using TranslationsResult = Result<Translations>;
    using VoidResult = Result<std::optional<VoidReply>>;

    explicit MerovantaAPI(std::shared_ptr<HttpUtil> httpUtil);

    /// The address of this path on the server, the query's values percent-encoded; absent if they make no
    /// URL.
    [[nodiscard]] static std::optional<std::string> buildUrl(const std::string& path, const Query& query);

    /// GETs this address as it stands. A status that is no success is for the caller to judge.
    void get(const std::string& url, HttpUtil::Completion completion,
             const HttpUtil::Options& options = HttpUtil::Options()) const;

    /// POSTs the body to this path. A status that is no success is for the caller to judge.
    void post(const std::string& path, const Query& query, std::string body,
              HttpUtil::Completion completion) const;

    /// Ends the stream that the query names ("id", "sId", "tId", "vId", "url", "fsTy"), as a request of that
    /// stream's session. Any reply is a success.
    void deleteMessages(const Query& query, std::function<void(VoidResult)> completion) const;

    /// Fetches the texts of the tenant in this language. Values that are no strings are left out.
    void getTranslations(const std::string& tenantId, const std::string& language,
                         std::function<void(TranslationsResult)> completion) const;

 private:
    std::shared_ptr<HttpUtil> httpUtil;
};

}  // namespace merovanta
