#include <Merovanta/Merovanta.h>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Injection.h"

namespace merovanta {

namespace {

void applyHosts(const CustomConfiguration& custom, ApplicationConfig& config) {
    MerovantaConfiguration& hosts = Merovanta::configuration();
    if (const auto& server = custom.serverUrl()) {
        hosts.setServer(*server);
        config.hostname = *server;
        // A bare host here and a whole path below: the readers of this field know both forms.
        if (!config.cdnPath) config.cdnPath = *server;
    }
    if (const auto& cdn = custom.cdnUrl()) {
        hosts.setCdnServer(*cdn);
        config.cdnPath = hosts.cdnPath();
    }
}

}  // namespace

void Merovanta::initConfig(const std::string& tenantId, const std::string& token) {
    initConfig(CustomConfiguration(tenantId, token));
}

void Merovanta::initConfig(const CustomConfiguration& config) {
    const auto wrapper = Injection::resolve<ApplicationConfigWrapper>();
    if (!wrapper) {
        Log::error("Cannot find instance of Application Config");
        return;
    }
    wrapper->config.tenantId = config.tenantId();
    wrapper->config.token = config.token();
    const auto& visit = wrapper->config.visitConfig;
    wrapper->renewVisit(visit ? visit->sessionId : std::nullopt);
    applyHosts(config, wrapper->config);
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->startPolling();
}

// The facades are never destroyed: a host may call them while the process ends.

MerovantaConfiguration& Merovanta::configuration() {
    static auto* const facade = new MerovantaConfiguration();
    return *facade;
}

MerovantaCoBrowsing& Merovanta::coBrowsing() {
    static auto* const facade = new MerovantaCoBrowsing();
    return *facade;
}

MerovantaWebChat& Merovanta::webChat() {
    static auto* const facade = new MerovantaWebChat();
    return *facade;
}

MerovantaUser& Merovanta::user() {
    static auto* const facade = new MerovantaUser();
    return *facade;
}

MerovantaPanoptra& Merovanta::panoptra() {
    static auto* const facade = new MerovantaPanoptra();
    return *facade;
}

}  // namespace merovanta
