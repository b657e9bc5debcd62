#include "General/Panoptra/Network/Message/MessageSender.h"

#include <chrono>
#include <utility>

#include "General/Fatal.h"
#include "General/Log.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "General/WebChat/WebChat.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

/// Whole seconds first, milliseconds after: the last three digits come from the offset alone.
std::uint64_t timeSince(std::int64_t offset) {
    const std::int64_t seconds =
        std::chrono::duration_cast<std::chrono::seconds>(platform::current().clock().sinceEpoch()).count();
    std::int64_t milliseconds = 0;
    if (__builtin_mul_overflow(seconds, std::int64_t{1000}, &milliseconds) ||
        __builtin_sub_overflow(milliseconds, offset, &milliseconds) || milliseconds < 0) {
        fatalError("The time of a message overflows");
    }
    return static_cast<std::uint64_t>(milliseconds);
}

ProtoMessage messageAt(std::int64_t offset) {
    ProtoMessage message;
    message.set_time(timeSince(offset));
    return message;
}

void fill(UserTag& tag, const ActiveUser& user) {
    if (user.id) tag.set_id(*user.id);
    if (user.email) tag.set_email(*user.email);
    if (user.firstname) tag.set_firstname(*user.firstname);
    if (user.lastname) tag.set_lastname(*user.lastname);
    for (const auto& label : user.tags.value_or(std::vector<std::string>()))
        tag.add_label(label);
    if (user.assignedUser) tag.set_assigneduser(*user.assignedUser);
}

}  // namespace

MessageSender::MessageSender(std::shared_ptr<InitSender> init, std::shared_ptr<MerovantaAPI> api,
                             std::shared_ptr<ApplicationConfigWrapper> wrapper)
    : initSender(std::move(init)),
      merovantaAPI(std::move(api)),
      applicationConfigWrapper(std::move(wrapper)) {}

ApplicationConfig MessageSender::streamConfig() const {
    ApplicationConfig config = applicationConfigWrapper->config;
    if (mVisit) config.visitConfig = mVisit;
    return config;
}

MerovantaAPI::Query MessageSender::currentStream() const {
    const ApplicationConfig config = streamConfig();
    const VisitConfig visit = config.visitConfig.value_or(VisitConfig());
    const auto storageType = config.panoptraConfig ? config.panoptraConfig->storageType : std::nullopt;
    return {{"id", visit.visitId.value_or("")},
            {"sId", visit.sessionId.value_or("")},
            {"tId", config.tenantId.value_or("")},
            {"vId", visit.visitorId.value_or("")},
            {"url", ""},
            {"fsTy", storageType.value_or("")}};
}

void MessageSender::rememberStream() {
    mStream = currentStream();
}

std::string MessageSender::streamSession() const {
    return mStream ? mStream->at("sId") : "";
}

void MessageSender::close() {
    // Not those of the moment: the visitor may have become another since.
    merovantaAPI->deleteMessages(
        mStream.value_or(currentStream()), [](const MerovantaAPI::VoidResult& result) {
            if (result) {
                Log::debug("Delete sent");
            } else {
                Log::warning("Failed to send delete: " + result.error().errorDescription());
            }
        });
    discardWaiting(StringError("Sender is closed"));
}

void MessageSender::sendPing(std::int64_t offset, Callback callback) {
    dispatch(messageAt(offset), std::move(callback));
}

void MessageSender::sendScreenshot(std::string image, std::int64_t offset, Callback callback) {
    ProtoMessage message = messageAt(offset);
    message.add_screenshotevent()->set_image(std::move(image));
    dispatch(std::move(message), std::move(callback));
}

void MessageSender::sendClick(float x, float y, std::int64_t offset, Callback callback) {
    ProtoMessage message = messageAt(offset);
    ProtoClickEvent* const click = message.add_clickevent();
    click->set_x(x);
    click->set_y(y);
    dispatch(std::move(message), std::move(callback));
}

void MessageSender::sendPageChange(std::string pageName, std::int64_t offset, Callback callback) {
    ProtoMessage message = messageAt(offset);
    message.set_pagechange(std::move(pageName));
    dispatch(std::move(message), std::move(callback));
}

void MessageSender::sendTag(std::string tag, std::int64_t offset, Callback callback) {
    ProtoMessage message = messageAt(offset);
    message.set_tag(std::move(tag));
    dispatch(std::move(message), std::move(callback));
}

void MessageSender::sendUserTag(const ActiveUser& user, std::int64_t offset, Callback callback) {
    ProtoMessage message = messageAt(offset);
    fill(*message.add_usertag(), user);
    // Messages are built on any thread; the push token is the main thread's.
    ViewUtils::runOnMainThread(
        [self = shared_from_this(), message = std::move(message), callback = std::move(callback)]() mutable {
            const auto webChat = Injection::resolve<WebChat>();
            if (webChat && webChat->mobileDeviceToken)
                message.mutable_usertag(0)->set_mobiledevicetoken(*webChat->mobileDeviceToken);
            self->dispatch(std::move(message), std::move(callback));
        });
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): transports keep the message.
void MessageSender::send(ProtoMessage /*message*/, const Callback& /*callback*/) {
    fatalError("It is required to override send()");
}

void MessageSender::dispatch(ProtoMessage message, Callback callback) {
    if (!callback) callback = [](const std::optional<StringError>&) {};
    ViewUtils::runOnMainQueue(
        [weak = weak_from_this(), message = std::move(message), callback = std::move(callback)]() mutable {
            if (const auto self = weak.lock()) self->sendOrKeep(std::move(message), std::move(callback));
        });
}

void MessageSender::sendOrKeep(ProtoMessage message, Callback callback) {
    if (takesMessages()) {
        send(std::move(message), callback);
    } else {
        mOutbox.put({std::move(message), std::move(callback)});
    }
}

void MessageSender::sendWaiting() {
    for (auto& entry : mOutbox.take())
        send(std::move(entry.message), entry.callback);
}

void MessageSender::notify(const std::function<void()> StreamObserver::*event) const {
    // Copied: the observer may be replaced inside.
    const auto callback = mObserver.*event;
    if (callback) callback();
}

}  // namespace merovanta
