#include "General/WebChat/WebChat.h"

#include <algorithm>
#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/MainThreadOwned.h"
#include "General/Panoptra/Util/IdUtils.h"
#include "General/Panoptra/Util/Url.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr const char* noChat = "This application is built without the chat";

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

struct WebChat::Opening {
    Outcome outcome;
    std::shared_ptr<View> parent;
    unsigned closings = 0;

    void end(const std::optional<std::string>& error = {}) const {
        if (outcome) outcome(error);
    }
};

class WebChat::Handle final : public Observation {
 public:
    Handle(std::weak_ptr<WebChat> webChat, std::shared_ptr<Observer> observer)
        : mWebChat(std::move(webChat)), mObserver(std::move(observer)) {}

    ~Handle() override {
        if (const auto webChat = mWebChat.lock()) std::erase(webChat->mObservers, mObserver);
    }

 private:
    std::weak_ptr<WebChat> mWebChat;
    std::shared_ptr<Observer> mObserver;
};

void WebChat::open(const std::string& id, Outcome outcome) {
    ViewUtils::runOnMainQueue(
        [weak = weak_from_this(), id, opening = ownedByMainThread(Opening{.outcome = std::move(outcome)})] {
            if (const auto self = weak.lock()) self->openNow(id, opening);
        });
}

void WebChat::openNow(const std::string& id, const std::shared_ptr<Opening>& opening) {
    if (platform::current().webViews() == nullptr) {
        Log::error(noChat);
        return opening->end(noChat);
    }
    communication->registerStatus();
    opening->closings = mClosings;
    opening->parent = ViewUtils::rootView();
    if (!opening->parent) return opening->end("Cannot find view of controller");
    if (chatOn(*opening->parent)) return opening->end();
    fetchConfiguration(id, opening);
}

void WebChat::fetchConfiguration(const std::string& id, const std::shared_ptr<Opening>& opening) {
    const auto report = [opening](const StringError& error) {
        Log::error("Get WebChat configuration failed: " + error.errorDescription());
        ViewUtils::runOnMainQueue([opening, text = error.errorDescription()] { opening->end(text); });
    };
    const auto url = MerovantaAPI::buildUrl("api/in/wc/c/" + encodePathSegment(id), {});
    if (!url) return report(StringError("Cannot construct URL"));
    merovantaAPI->get(*url, [weak = weak_from_this(), report, opening](const HttpReply& reply) {
        auto configuration = decode(reply);
        if (!configuration) return report(configuration.error());
        ViewUtils::runOnMainQueue(
            [weak, opening, configuration = std::move(configuration.value())]() mutable {
                if (const auto self = weak.lock()) self->show(*opening, std::move(configuration));
            });
    });
}

void WebChat::show(const Opening& opening, WebChatConfigurationDTO configuration) {
    assertMainThread();
    // Meanwhile the host may have closed it or left the screen, or a second call have opened the chat.
    if (opening.closings != mClosings) return opening.end("The chat was closed while it opened");
    if (!opening.parent->isAlive()) return opening.end("The screen is gone");
    if (chatOn(*opening.parent)) return opening.end();
    std::erase_if(mChatViews, [](const auto& chat) { return chat->isGone(); });
    const auto chatView = std::make_shared<ChatView>(opening.parent, std::move(configuration),
                                                     applicationConfig->config.tenantId, visitorId(),
                                                     [weak = weak_from_this()] {
                                                         if (const auto self = weak.lock()) self->tellSoon();
                                                     });
    mChatViews.push_back(chatView);
    chatView->show();
    tellSoon();
    opening.end(chatView->isGone() ? std::optional<std::string>("Cannot show the web view") : std::nullopt);
}

void WebChat::close() {
    ViewUtils::runOnMainQueue([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self) return;
        ++self->mClosings;
        for (const auto& chat : std::exchange(self->mChatViews, {}))
            chat->removeFromSuperview();
    });
}

bool WebChat::isOpen() const {
    assertMainThread();
    return std::any_of(mChatViews.begin(), mChatViews.end(),
                       [](const auto& chat) { return !chat->isGone(); });
}

std::unique_ptr<Observation> WebChat::observe(Observer observer) {
    assertMainThread();
    auto shared = std::make_shared<Observer>(std::move(observer));
    mObservers.push_back(shared);
    return std::make_unique<Handle>(weak_from_this(), std::move(shared));
}

void WebChat::tellSoon() {
    ViewUtils::runOnMainQueue([weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->tell();
    });
}

void WebChat::tell() {
    const bool isOpenNow = isOpen();
    if (std::exchange(mHasToldOfOpen, isOpenNow) == isOpenNow) return;
    // A copy: observers come and go inside the calls.
    const auto observers = mObservers;
    for (const auto& observer : observers) {
        const bool isThere = std::find(mObservers.begin(), mObservers.end(), observer) != mObservers.end();
        if (isThere && *observer) (*observer)(isOpenNow);
    }
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
