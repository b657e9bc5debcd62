#include <Merovanta/MerovantaWebChat.h>

#include <memory>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "General/WebChat/WebChat.h"

namespace merovanta {

namespace {

std::shared_ptr<WebChat> resolveWebChat() {
    auto webChat = Injection::resolve<WebChat>();
    if (!webChat) Log::error("Cannot find instance of WebChat");
    return webChat;
}

}  // namespace

void MerovantaWebChat::open(const std::string& id) {
    if (const auto webChat = resolveWebChat()) webChat->open(id);
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
