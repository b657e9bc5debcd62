#pragma once

#include "ContactRegistry.h"
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
};

}  // namespace merovanta::devservice
