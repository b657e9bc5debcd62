#include <Merovanta/MerovantaWebChat.h>

#include <memory>
#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "General/WebChat/WebChat.h"

namespace merovanta {

namespace {

constexpr const char* noInstance = "Cannot find instance of WebChat";

std::shared_ptr<WebChat> resolveWebChat() {
    auto webChat = Injection::resolve<WebChat>();
    if (!webChat) Log::error(noInstance);
    return webChat;
}

}  // namespace

void MerovantaWebChat::open(const std::string& id) {
    open(id, {});
}

void MerovantaWebChat::open(const std::string& id, Outcome outcome) {
    if (const auto webChat = resolveWebChat()) {
        webChat->open(id, std::move(outcome));
    } else if (outcome) {
        outcome(noInstance);
    }
}

void MerovantaWebChat::close() {
    if (const auto webChat = resolveWebChat()) webChat->close();
}

bool MerovantaWebChat::isOpen() const {
    const auto webChat = resolveWebChat();
    return webChat && webChat->isOpen();
}

std::unique_ptr<Observation> MerovantaWebChat::observe(std::function<void(bool isOpen)> observer) {
    const auto webChat = resolveWebChat();
    return webChat ? webChat->observe(std::move(observer)) : nullptr;
}

void MerovantaWebChat::setMobileDeviceToken(const std::string& token) {
    if (const auto webChat = resolveWebChat())
        ViewUtils::runOnMainQueue([webChat, token] { webChat->mobileDeviceToken = token; });
}

void MerovantaWebChat::setAttachmentsAllowed(bool areAllowed) {
    if (const auto webChat = resolveWebChat())
        ViewUtils::runOnMainThread([webChat, areAllowed] { webChat->areAttachmentsAllowed = areAllowed; });
}

bool MerovantaWebChat::attachmentsAllowed() const {
    assertMainThread();
    const auto webChat = resolveWebChat();
    return webChat && webChat->areAttachmentsAllowed;
}

}  // namespace merovanta
