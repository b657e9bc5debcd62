#include "General/User/User.h"

#include <utility>

#include "General/Log.h"
#include "General/MainThread.h"
#include "General/MainThreadOwned.h"
#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Util/IdUtils.h"
#include "General/Panoptra/Util/Url.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "General/User/ActiveUserDTO.h"

namespace merovanta {

User::User(std::shared_ptr<Panoptra> controller, std::shared_ptr<ApplicationConfigWrapper> wrapper,
           std::shared_ptr<WebChat> chat, std::shared_ptr<MerovantaAPI> api)
    : applicationConfig(std::move(wrapper)),
      panoptra(std::move(controller)),
      webChat(std::move(chat)),
      merovantaAPI(std::move(api)) {}

void User::tag(const ActiveUser& activeUser, Callback callback, Failure failure) {
    ViewUtils::runOnMainThread(
        [self = shared_from_this(), activeUser,
         closures = ownedByMainThread(Closures{std::move(callback), std::move(failure)})] {
            self->tagNow(activeUser, closures);
        });
}

void User::tagNow(const ActiveUser& activeUser, const std::shared_ptr<Closures>& closures) {
    assertMainThread();
    const auto& former = applicationConfig->config.activeUserTag;
    if (!activeUser.id || !former || former->id != activeUser.id) webChat->visitorChanged();
    adopt(activeUser);
    const auto report = [closures](const StringError& error) {
        Log::warning("Cannot send tag: " + error.errorDescription());
        ViewUtils::runOnMainQueue([closures, text = error.errorDescription()] {
            if (closures->failure) closures->failure(text);
        });
    };
    auto body = encodeJson(ActiveUserDTO{activeUser}.toJson());
    if (!body) {
        report(body.error());
        return;
    }
    const ApplicationConfig& config = applicationConfig->config;
    const std::string visitorId = config.visitConfig ? config.visitConfig->visitorId.value_or("") : "";
    merovantaAPI->post("rest/v1/customerstatus/tag/byVisitor/" + encodePathSegment(visitorId),
                       {{"tId", config.tenantId.value_or("")}}, std::move(body.value()),
                       [weak = weak_from_this(), report, closures](const HttpReply& reply) {
                           if (const auto error = failureOf(reply)) {
                               report(*error);
                               return;
                           }
                           ViewUtils::runOnMainQueue([weak, closures] {
                               if (const auto self = weak.lock()) self->tagged(closures->callback);
                           });
                       });
}

void User::clear() {
    assertMainThread();
    const SessionObservers::Scope scope(panoptra->observers());
    applicationConfig->config.activeUserTag.reset();
    webChat->visitorChanged();
    panoptra->stop(SessionEnd::host);
    IdUtils::forgetCustomerId();
}

void User::adopt(const ActiveUser& activeUser) {
    ApplicationConfig& config = applicationConfig->config;
    config.activeUserTag = activeUser;
    if (config.panoptraConfig) config.panoptraConfig->optIn = false;
    auto& visit = config.visitConfig;
    if (!visit) return;
    if (activeUser.id) {
        visit->visitorId = activeUser.id;
        return;
    }
    visit->visitId = IdUtils::newUuid();
    visit->sessionId = IdUtils::newUuid();
    visit->visitorId = IdUtils::newUuid();
}

void User::tagged(const Callback& callback) {
    if (callback) callback(true);
    // Forgotten meanwhile: nothing is brought in line with that visitor.
    if (!applicationConfig->config.activeUserTag) return;
    const SessionObservers::Scope scope(panoptra->observers());
    if (panoptra->isRunning()) {
        panoptra->restart([](const std::optional<StringError>& error) {
            if (!error) return;
            Log::warning("Cannot restart Panoptra");
            Log::debug(error->errorDescription());
        });
    }
    webChat->reload();
}

}  // namespace merovanta
