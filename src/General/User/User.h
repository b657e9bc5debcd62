#pragma once

#include <Merovanta/ActiveUser.h>

#include <functional>
#include <memory>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/MerovantaAPI.h"
#include "General/Panoptra/Panoptra.h"
#include "General/WebChat/WebChat.h"

namespace merovanta {

/// Keeps who the visitor is and tells the service. Thread: main, unless stated.
class User : public std::enable_shared_from_this<User> {
 public:
    using Callback = std::function<void(bool)>;
    using Failure = std::function<void(const std::string& error)>;

    User(std::shared_ptr<Panoptra> panoptra, std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
         std::shared_ptr<WebChat> webChat, std::shared_ptr<MerovantaAPI> merovantaAPI);

    /// The visitor is this one from now on, whatever the service says; consent is to be given anew. The
    /// callback is called on the main thread, with true, when the service knows, and not at all if it cannot
    /// be told: then failure is, with the reason. After the callback a running session is restarted and an
    /// open chat loaded anew. Any thread; off the main thread all of it comes later.
    void tag(const ActiveUser& activeUser, Callback callback, Failure failure = {});

    /// Forgets the visitor, here and in the user defaults, and ends the session.
    void clear();

 private:
    struct Closures {
        Callback callback;
        Failure failure;
    };

    void tagNow(const ActiveUser& activeUser, const std::shared_ptr<Closures>& closures);
    void adopt(const ActiveUser& activeUser);
    void tagged(const Callback& callback);

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<Panoptra> panoptra;
    std::shared_ptr<WebChat> webChat;
    std::shared_ptr<MerovantaAPI> merovantaAPI;
};

}  // namespace merovanta
