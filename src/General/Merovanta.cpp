#include <Merovanta/Merovanta.h>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Injection.h"
#include "Platform/Platform.h"

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

void renewVisit(ApplicationConfigWrapper& wrapper) {
    const auto& visit = wrapper.config.visitConfig;
    wrapper.renewVisit(visit ? visit->sessionId : std::nullopt);
}

/// A visit needs the device's identifier, which is not known before there is an application.
void renewVisitOnceThereIsAnApplication(const std::shared_ptr<ApplicationConfigWrapper>& wrapper) {
    Log::error("initConfig was called before the application object was made; it takes effect afterwards");
    platform::current().mainQueue().async([wrapper] {
        const auto& visit = wrapper->config.visitConfig;
        // A session that was started meanwhile has renewed it.
        if (visit && !visit->visitId) renewVisit(*wrapper);
    });
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
    if (platform::current().application().exists()) {
        renewVisit(*wrapper);
    } else {
        renewVisitOnceThereIsAnApplication(wrapper);
    }
    applyHosts(config, wrapper->config);
    const ApplicationConfig& now = wrapper->config;
    const auto& visit = now.visitConfig;
    Log::debug("Tenant " + config.tenantId() + " at " + now.hostname.value_or("(no host)") +
               ", content from " + configuration().cdnPath() + ", visitor " +
               (visit ? visit->visitorId.value_or("") : "") + ", session " +
               (visit ? visit->sessionId.value_or("") : ""));
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->startPolling();
}

// The facades are never destroyed: a host may call them while the process ends.

MerovantaConfiguration& Merovanta::configuration() {
    static auto* const facade = new MerovantaConfiguration();
    return *facade;
}

MerovantaLog& Merovanta::log() {
    static auto* const facade = new MerovantaLog();
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

MerovantaPrivacy& Merovanta::privacy() {
    static auto* const facade = new MerovantaPrivacy();
    return *facade;
}

}  // namespace merovanta
