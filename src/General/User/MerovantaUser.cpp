#include <Merovanta/MerovantaUser.h>

#include <memory>
#include <utility>

#include "General/Log.h"
#include "General/Panoptra/Injection.h"
#include "General/User/User.h"

namespace merovanta {

namespace {

std::shared_ptr<User> resolveUser() {
    auto user = Injection::resolve<User>();
    if (!user) Log::error("Cannot find instance of User");
    return user;
}

}  // namespace

void MerovantaUser::tag(const ActiveUser& user) {
    tag(user, [](bool) {});
}

void MerovantaUser::tag(const ActiveUser& activeUser, std::function<void(bool)> callback) {
    if (const auto user = resolveUser()) user->tag(activeUser, std::move(callback));
}

void MerovantaUser::tag(const ActiveUser& activeUser, std::function<void(bool)> callback,
                        std::function<void(const std::string& error)> failure) {
    if (const auto user = resolveUser()) {
        user->tag(activeUser, std::move(callback), std::move(failure));
    } else if (failure) {
        failure("Cannot find instance of User");
    }
}

void MerovantaUser::clear() {
    if (const auto user = resolveUser()) user->clear();
}

}  // namespace merovanta
