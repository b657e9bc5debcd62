#include "General/WebChat/WebChat.h"

#include <algorithm>
#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/MainThreadOwned.h"
#include "General/Panoptra/Util/IdUtils.h"
#include "General/Panoptra/Util/Url.h"
#include "General/Panoptra/Util/ViewUtils.h"

namespace merovanta {

namespace {

Result<WebChatConfigurationDTO> decode(const HttpReply& reply) {
    if (const auto error = failureOf(reply)) return *error;
    if (!reply.data) return StringError("Data is nil");
    return WebChatConfigurationDTO::decode(*reply.data);
}

}  // namespace

WebChat::WebChat(std::shared_ptr<ApplicationConfigWrapper> wrapper, std::shared_ptr<MerovantaAPI> api,
                 std::shared_ptr<Communication> channels)
    : applicationConfig(std::move(wrapper)),
      merovantaAPI(std::move(api)),
      communication(std::move(channels)) {}

void WebChat::open(const std::string& id) {
    ViewUtils::runOnMainQueue([weak = weak_from_this(), id] {
        const auto self = weak.lock();
        if (!self) return;
        self->communication->registerStatus();
        const auto parent = ViewUtils::rootView();
        if (parent && !self->chatOn(*parent)) self->fetchConfiguration(id, parent);
    });
}

void WebChat::fetchConfiguration(const std::string& id, const std::shared_ptr<View>& parent) {
    const auto report = [](const StringError& error) {
        Log::error("Get WebChat configuration failed: " + error.errorDescription());
    };
    const auto url = MerovantaAPI::buildUrl("api/in/wc/c/" + encodePathSegment(id), {});
    if (!url) return report(StringError("Cannot construct URL"));
    merovantaAPI->get(*url, [weak = weak_from_this(), report,
                             owned = ownedByMainThread(parent)](const HttpReply& reply) {
        auto configuration = decode(reply);
        if (!configuration) return report(configuration.error());
        ViewUtils::runOnMainQueue([weak, owned, configuration = std::move(configuration.value())]() mutable {
            if (const auto self = weak.lock()) self->show(*owned, std::move(configuration));
        });
    });
}

void WebChat::show(const std::shared_ptr<View>& parent, WebChatConfigurationDTO configuration) {
    assertMainThread();
    // Meanwhile the host may have left the screen, or a second call have opened the chat.
    if (!parent->isAlive() || chatOn(*parent)) return;
    std::erase_if(mChatViews, [](const auto& chat) { return chat->isGone(); });
    const auto chatView = std::make_shared<ChatView>(parent, std::move(configuration),
                                                     applicationConfig->config.tenantId, visitorId());
    mChatViews.push_back(chatView);
    chatView->show();
}

std::shared_ptr<ChatView> WebChat::chatOn(const View& screen) const {
    const auto chat = std::find_if(mChatViews.begin(), mChatViews.end(),
                                   [&](const auto& each) { return each->isSubviewOf(screen); });
    return chat == mChatViews.end() ? nullptr : *chat;
}

std::string WebChat::visitorId() const {
    const auto& user = applicationConfig->config.activeUserTag;
    return user && user->id ? *user->id : IdUtils::deviceIdentifier();
}

void WebChat::visitorChanged() {
    assertMainThread();
    for (const auto& chat : mChatViews)
        chat->visitorChanged();
}

void WebChat::reload() {
    assertMainThread();
    const auto screen = ViewUtils::rootView();
    const auto chatView = screen ? chatOn(*screen) : nullptr;
    if (!chatView) return;
    const auto& visit = applicationConfig->config.visitConfig;
    chatView->reload(visit ? visit->visitorId : std::nullopt);
}

}  // namespace merovanta
