#include <Merovanta/MerovantaConfiguration.h>

#include <utility>

#include "General/ConstantUtils.h"
#include "General/Panoptra/Util/HostName.h"

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
    HostName::warnIfMalformed(hostname);
    mCdnServer = hostname;
}

std::string MerovantaConfiguration::server() const {
    return mServer ? *mServer : ConstantUtils::valueOrEmpty("Hostname");
}

std::string MerovantaConfiguration::cdnPath() const {
    return contentPath(mCdnServer ? *mCdnServer : ConstantUtils::valueOrEmpty("CdnHostname"));
}

}  // namespace merovanta
