#pragma once

#include <Merovanta/Export.h>

#include <optional>
#include <string>

namespace merovanta {

/// The hosts that the library talks to. The one instance is Merovanta::configuration(). Thread: main.
class MEROVANTA_EXPORT MerovantaConfiguration {
 public:
    MerovantaConfiguration(const MerovantaConfiguration&) = delete;
    MerovantaConfiguration& operator=(const MerovantaConfiguration&) = delete;

    /// Moves the service, and with it the content delivery, to this host ("service.example:8443").
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
    std::optional<std::string> mCdnPath;
    std::optional<std::string> mServer;
};

}  // namespace merovanta
