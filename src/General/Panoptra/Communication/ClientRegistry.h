#pragma once

#include <map>
#include <string>

#include "General/Panoptra/Communication/RegisteredClient.h"

namespace merovanta {

/// The process's one table of polling clients, by id. Thread: main.
class ClientRegistry {
 public:
    using Clients = std::map<std::string, RegisteredClient>;

    ClientRegistry() = delete;

    [[nodiscard]] static Clients& clients();
};

}  // namespace merovanta
