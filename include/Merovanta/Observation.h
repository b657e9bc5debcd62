#pragma once

#include <Merovanta/Export.h>

namespace merovanta {

/// Keeps an observer installed; destroying it takes the observer away, also inside its own call. It may
/// outlive what it observes. Thread: main.
class MEROVANTA_EXPORT Observation {
 public:
    Observation() = default;
    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;
    virtual ~Observation() = default;
};

}  // namespace merovanta
