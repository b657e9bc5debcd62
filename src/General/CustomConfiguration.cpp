#include <Merovanta/CustomConfiguration.h>

#include <utility>

namespace merovanta {

CustomConfiguration::CustomConfiguration(std::string tenantId, std::string token)
    : mTenantId(std::move(tenantId)), mToken(std::move(token)) {}

void CustomConfiguration::setServerUrl(std::string serverUrl) {
    mServerUrl = std::move(serverUrl);
}

void CustomConfiguration::setCdnUrl(std::string cdnUrl) {
    mCdnUrl = std::move(cdnUrl);
}

}  // namespace merovanta
