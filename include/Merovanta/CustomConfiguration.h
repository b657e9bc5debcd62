#pragma once

#include <Merovanta/Export.h>

#include <optional>
#include <string>

namespace merovanta {

/// What a host application hands to Merovanta::initConfig(): its tenant, its access token and, where they
/// differ from the packaged defaults, the service's host names. A plain value; any thread.
class MEROVANTA_EXPORT CustomConfiguration {
 public:
    CustomConfiguration() = delete;

    /// With the hosts of the packaged defaults.
    CustomConfiguration(std::string tenantId, std::string token);

    /// The service's host, with a port where needed ("service.example:8443"); no scheme, no path: whether
    /// it is spoken to with encryption is in the packaged property list. Taken as it is; the log warns of
    /// another form when the configuration is used.
    void setServerUrl(std::string serverUrl);

    /// The host that serves the chat page, in the same form.
    void setCdnUrl(std::string cdnUrl);

    /// As given to the constructor.
    [[nodiscard]] const std::string& tenantId() const { return mTenantId; }
    /// As given to the constructor.
    [[nodiscard]] const std::string& token() const { return mToken; }
    /// Absent until set.
    [[nodiscard]] const std::optional<std::string>& serverUrl() const { return mServerUrl; }
    /// Absent until set.
    [[nodiscard]] const std::optional<std::string>& cdnUrl() const { return mCdnUrl; }

 private:
    std::string mTenantId;
    std::string mToken;
    std::optional<std::string> mServerUrl;
    std::optional<std::string> mCdnUrl;
};

}  // namespace merovanta
