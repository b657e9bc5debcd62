#pragma once

#include <Merovanta/Export.h>

#include <optional>
#include <string>

namespace merovanta {

/// The hosts that the library talks to. The one instance is Merovanta::configuration(). Nothing fails; a host
/// with a scheme or a path is taken as it is, with a warning in the log that names the right form. The
/// protocol of the addresses comes with the platform: set the hosts before or after it is initialised, and
/// read the addresses after. Thread: main.
class MEROVANTA_EXPORT MerovantaConfiguration {
 public:
    MerovantaConfiguration(const MerovantaConfiguration&) = delete;
    MerovantaConfiguration& operator=(const MerovantaConfiguration&) = delete;

    /// Sends the requests that start a session, poll for the agent, tag the visitor and configure the chat to
    /// this host ("service.example:8443"), and moves the content delivery there. A session's own stream goes
    /// to the host that Merovanta::initConfig() has set: name the host there as well, or only there.
    void setServer(std::string hostname);

    /// Moves only the content delivery to this host.
    void setCdnServer(const std::string& hostname);

    /// The service's host; empty if neither the host application nor the packaged defaults name one.
    [[nodiscard]] std::string server() const;

    /// The address below which the chat page lies, for example "https://content.example/cdn".
    [[nodiscard]] std::string cdnPath() const;

 private:
    friend class Merovanta;
    MerovantaConfiguration() = default;

    // Absent for as long as the packaged defaults hold, which can be read only once there is a platform.
    std::optional<std::string> mCdnServer;
    std::optional<std::string> mServer;
};

}  // namespace merovanta
