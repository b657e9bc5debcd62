#include "General/Panoptra/Network/Initialisation.h"

#include <optional>
#include <utility>

#include "General/MainThread.h"
#include "General/Panoptra/Util/ViewUtils.h"

namespace merovanta {

StringError Initialisation::noControllerName() {
    return StringError("Cannot get current controller name");
}

std::shared_ptr<Initialisation> Initialisation::begin(
    std::shared_ptr<InitSender> initSender, std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
    bool force, Done done) {
    std::shared_ptr<Initialisation> self(
        new Initialisation(std::move(initSender), std::move(applicationConfig), force, std::move(done)));
    self->findPage();
    return self;
}

Initialisation::Initialisation(std::shared_ptr<InitSender> initSender,
                               std::shared_ptr<ApplicationConfigWrapper> applicationConfig, bool force,
                               Done done)
    : mInitSender(std::move(initSender)),
      mApplicationConfig(std::move(applicationConfig)),
      mForce(force),
      mDone(std::move(done)) {}

void Initialisation::findPage() {
    ViewUtils::frontScreenName([weak = weak_from_this()](const std::optional<std::string>& name) {
        const auto self = weak.lock();
        if (!self) return;
        if (name) {
            self->send(*name);
        } else {
            self->replied({}, noControllerName());
        }
    });
}

void Initialisation::send(const std::string& pageName) {
    mVisit = mApplicationConfig->config.visitConfig;
    mInitSender->sendInit(pageName, mForce, [weak = weak_from_this(), pageName](InitSender::Reply reply) {
        ViewUtils::runOnMainQueue([weak, pageName, reply = std::move(reply)] {
            if (const auto self = weak.lock()) self->replied(pageName, reply);
        });
    });
}

void Initialisation::replied(const std::string& pageName, const InitSender::Reply& reply) const {
    assertMainThread();
    mDone(pageName, reply);
}

}  // namespace merovanta
