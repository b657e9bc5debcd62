#include "General/User/UserUtil.h"

#include <utility>

#include "General/Log.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/Util/IdUtils.h"
#include "General/User/User.h"

namespace merovanta {

void UserUtil::tagUserIfNeeded(std::function<void(bool)> callback) {
    const auto wrapper = Injection::resolve<ApplicationConfigWrapper>();
    if (wrapper && wrapper->config.activeUserTag) {
        callback(true);
        return;
    }
    const auto user = Injection::resolve<User>();
    if (!user) {
        Log::error("Cannot find instance of User");
        return;
    }
    user->tag(ActiveUser{.id = IdUtils::customerId(), .firstname = "", .lastname = "", .email = ""},
              std::move(callback));
}

}  // namespace merovanta
