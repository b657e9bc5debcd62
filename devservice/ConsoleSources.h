#pragma once

#include "AgentRegistry.h"
#include "ContactRegistry.h"
#include "Controls.h"
#include "Faults.h"
#include "InitReply.h"
#include "PresenceRegistry.h"
#include "VisitorRegistry.h"

namespace merovanta::devservice {

/// All that a console page shows; outlives every page.
struct ConsoleSources {
    VisitorRegistry& visitors;
    const PresenceRegistry& presences;
    const ContactRegistry& contacts;
    const InitReply& initReply;
    const Faults& faults;
    AgentRegistry& agents;
    Controls& controls;
};

}  // namespace merovanta::devservice
