#pragma once

#include "General/Panoptra/Communication/CommunicationBase.h"

namespace merovanta {

/// The one that the container hands out.
class Communication final : public CommunicationBase {
 public:
    using CommunicationBase::CommunicationBase;
};

}  // namespace merovanta
