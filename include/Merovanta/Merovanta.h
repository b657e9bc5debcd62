#pragma once

#include <Merovanta/CustomConfiguration.h>
#include <Merovanta/Export.h>
#include <Merovanta/MerovantaCoBrowsing.h>
#include <Merovanta/MerovantaConfiguration.h>
#include <Merovanta/MerovantaLog.h>
#include <Merovanta/MerovantaPanoptra.h>
#include <Merovanta/MerovantaPrivacy.h>
#include <Merovanta/MerovantaUser.h>
#include <Merovanta/MerovantaWebChat.h>

#include <string>

namespace merovanta {

/// The library's front door.
///
/// A toolkit's platform must have been initialised first (for Qt Quick: merovanta::quick::initialize());
/// without one, every call but those of configuration(), privacy() and log() logs an error and does nothing.
class MEROVANTA_EXPORT Merovanta {
 public:
    Merovanta() = delete;

    /// Names the tenant and its access token; the packaged host names are used. Thread: main.
    static void initConfig(const std::string& tenantId, const std::string& token);

    /// Names the tenant, its access token and, if set, the hosts. May be called again at any time with other
    /// values. Begins a new visit and keeps the service session's id; from now on the service is asked every
    /// few seconds whether an agent wants to co-browse. Called before the application object is made, it logs
    /// an error and takes effect once there is one. Thread: main.
    static void initConfig(const CustomConfiguration& config);

    /// The hosts. This facade and those below are each made on first use and are the same object until the
    /// process ends. Any thread may ask for them.
    [[nodiscard]] static MerovantaConfiguration& configuration();
    /// Where the log goes.
    [[nodiscard]] static MerovantaLog& log();
    /// Screen sharing.
    [[nodiscard]] static MerovantaPanoptra& panoptra();
    /// Screen sharing with a widget that shows the share code.
    [[nodiscard]] static MerovantaCoBrowsing& coBrowsing();
    /// The chat.
    [[nodiscard]] static MerovantaWebChat& webChat();
    /// Who the visitor is.
    [[nodiscard]] static MerovantaUser& user();
    /// What no agent sees.
    [[nodiscard]] static MerovantaPrivacy& privacy();
};

}  // namespace merovanta
