#pragma once

#include <Merovanta/ActiveUser.h>
#include <Merovanta/Export.h>

#include <functional>
#include <string>

namespace merovanta {

/// Who the visitor is. The one instance is Merovanta::user(); it holds no state.
///
/// Nothing is thrown and nothing blocks: what fails is said in the log. Thread: main, unless stated;
/// callbacks always come on the main thread.
class MEROVANTA_EXPORT MerovantaUser {
 public:
    MerovantaUser(const MerovantaUser&) = delete;
    MerovantaUser& operator=(const MerovantaUser&) = delete;

    /// Identifies the visitor from now on and tells the service. The visitor's consent is taken back; a
    /// visitor without id gets new visitor, visit and session ids. When the service knows, a running session
    /// is stopped and started again under the new identity, and until then goes on under the earlier one; if
    /// that start fails, the log says so and no session runs. A visitor without id then is known by the
    /// device again. The host's registered callbacks stay. An open chat is loaded anew, as this visitor's.
    /// Any thread.
    void tag(const ActiveUser& user);

    /// As tag(); the callback is then called with true once the service knows. It is not called if the
    /// service cannot be told. Any thread.
    void tag(const ActiveUser& user, std::function<void(bool)> callback);

    /// As tag(); if the service cannot be told, failure is called with the reason, in place of the callback.
    /// The visitor is this one here all the same. Any thread.
    void tag(const ActiveUser& user, std::function<void(bool)> callback,
             std::function<void(const std::string& error)> failure);

    /// Forgets who the visitor is, ends a running session and makes the next anonymous visitor a new one.
    /// An open chat stays as it is until it is closed or somebody is tagged.
    void clear();

 private:
    friend class Merovanta;
    MerovantaUser() = default;
};

}  // namespace merovanta
