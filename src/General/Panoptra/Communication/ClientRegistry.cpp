#include "General/Panoptra/Communication/ClientRegistry.h"

namespace merovanta {

ClientRegistry::Clients& ClientRegistry::clients() {
    // Never destroyed: a callback may run while the process ends.
    static auto* const table = new Clients();
    return *table;
}

}  // namespace merovanta
