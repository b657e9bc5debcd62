#include <Merovanta/MerovantaConfiguration.h>

#include <utility>

#include "General/ConstantUtils.h"

namespace merovanta {

MerovantaConfiguration::MerovantaConfiguration() : mServer(ConstantUtils::valueOrEmpty("Hostname")) {
    setCdnServer(ConstantUtils::valueOrEmpty("CdnHostname"));
}

void MerovantaConfiguration::setServer(std::string hostname) {
    mServer = std::move(hostname);
    setCdnServer(mServer);
}

void MerovantaConfiguration::setCdnServer(const std::string& hostname) {
    mCdnPath = ConstantUtils::valueOrEmpty("HttpProtocol") + "://" + hostname + "/cdn";
}

}  // namespace merovanta
