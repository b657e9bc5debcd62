#include "General/Panoptra/Injection.h"

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/ConstantUtils.h"
#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Communication/ClientRegistry.h"
#include "General/Panoptra/Monitoring/ViewMonitor.h"
#include "General/Panoptra/Network/InitSender.h"
#include "General/Panoptra/Network/MerovantaAPI.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageHandler.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageParser.h"
#include "General/Panoptra/Network/Message/MessageSenderManager.h"
#include "General/Panoptra/Network/Message/PingSender.h"
#include "General/Panoptra/Network/Message/Xhr/XhrMessageSender.h"
#include "General/Panoptra/Network/NetworkManager.h"
#include "General/Panoptra/Panoptra.h"
#include "General/Panoptra/UIStrings.h"
#include "General/Panoptra/Util/HttpUtil.h"
#include "General/User/User.h"
#include "General/WebChat/WebChat.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

void registerComponents(DependencyContainer& container) {
    container.registerFactory<ApplicationConfigWrapper>([](DependencyContainer&) {
        return platform::isInstalled() ? std::make_shared<ApplicationConfigWrapper>() : nullptr;
    });
    container.registerSingleton<MerovantaAPI, HttpUtil>();
    container.registerSingleton<WebChat, ApplicationConfigWrapper, MerovantaAPI, Communication>();
    container.registerSingleton<Panoptra, InitSender, MessageSenderManager, ViewMonitor,
                                ApplicationConfigWrapper, NetworkManager>();
    container.registerSingleton<InitSender, ApplicationConfigWrapper, MerovantaAPI>();
    container.registerSingleton<MessageSenderManager, WebSocketMessageSender, XhrMessageSender, HealthCheck,
                                ApplicationConfigWrapper>();
    container.registerSingleton<XhrMessageSender, ApplicationConfigWrapper, BidirectionalMessageParser,
                                InitSender, HttpUtil, MerovantaAPI>();
    container.registerSingleton<WebSocketMessageSender, ApplicationConfigWrapper, BidirectionalMessageParser,
                                InitSender, ViewMonitor, HttpUtil, MerovantaAPI>();
    container.registerSingleton<ViewMonitor, ApplicationConfigWrapper>();
    container.registerSingleton<PingSender, ApplicationConfigWrapper>();
    container.registerSingleton<BidirectionalMessageParser, BidirectionalMessageHandler>();
    container.registerSingleton<BidirectionalMessageHandler, ApplicationConfigWrapper, UIStrings>();
    container.registerSingleton<HealthCheck, ApplicationConfigWrapper, MerovantaAPI>();
    container.registerSingleton<HttpUtil, ApplicationConfigWrapper>();
    container.registerSingleton<MonitoringSender, MerovantaAPI>();
    container.registerSingleton<NetworkManager, PingSender, HealthCheck, MonitoringSender>();
    container.registerSingleton<CoBrowsing, Panoptra, UIStrings, ApplicationConfigWrapper, Communication>();
    container.registerSingleton<UIStrings, MerovantaAPI>();
    container.registerSingleton<User, Panoptra, ApplicationConfigWrapper, WebChat, MerovantaAPI>();
    container.registerSingleton<Communication, MerovantaAPI, ApplicationConfigWrapper>();
}

std::unique_ptr<DependencyContainer> buildContainer() {
    auto container = std::make_unique<DependencyContainer>();
    registerComponents(*container);
    return container;
}

// The pointer is never destroyed: the components live until the process ends.
std::unique_ptr<DependencyContainer>& holder() {
    static auto* const container = new std::unique_ptr<DependencyContainer>(buildContainer());
    return *container;
}

}  // namespace

DependencyContainer& Injection::getContainer() {
    return *holder();
}

void Injection::discard() {
    holder() = buildContainer();
    ClientRegistry::clients().clear();
    ConstantUtils::forget();
}

}  // namespace merovanta
