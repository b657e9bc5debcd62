#pragma once

#include <memory>
#include <utility>

#include "General/Panoptra/Network/Message/PingSender.h"

namespace merovanta {

/// What the session controller needs of the network beside its transport.
struct NetworkManager {
    explicit NetworkManager(std::shared_ptr<PingSender> ping) : pingSender(std::move(ping)) {}

    std::shared_ptr<PingSender> pingSender;
};

}  // namespace merovanta
