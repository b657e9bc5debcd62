#include <Merovanta/MerovantaConfiguration.h>

#include <utility>

#include "General/ConstantUtils.h"

namespace merovanta {

namespace {

std::string contentPath(const std::string& hostname) {
    return ConstantUtils::valueOrEmpty("HttpProtocol") + "://" + hostname + "/cdn";
}

}  // namespace

void MerovantaConfiguration::setServer(std::string hostname) {
    setCdnServer(hostname);
    mServer = std::move(hostname);
}

void MerovantaConfiguration::setCdnServer(const std::string& hostname) {
    mCdnPath = contentPath(hostname);
}

std::string MerovantaConfiguration::server() const {
    return mServer ? *mServer : ConstantUtils::valueOrEmpty("Hostname");
}

std::string MerovantaConfiguration::cdnPath() const {
    return mCdnPath ? *mCdnPath : contentPath(ConstantUtils::valueOrEmpty("CdnHostname"));
}

}  // namespace merovanta
