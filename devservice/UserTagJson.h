#pragma once

#include <panoptra.pb.h>

#include <cstddef>
#include <nlohmann/json_fwd.hpp>

namespace merovanta::devservice {

/// A visitor's identity as JSON under the wire's own names; absent fields are left out, each text and the
/// number of labels are bounded.
nlohmann::json userTagJson(const com::merovanta::panoptra::UserTag& tag, std::size_t maxTextBytes,
                           int maxLabels);

}  // namespace merovanta::devservice
