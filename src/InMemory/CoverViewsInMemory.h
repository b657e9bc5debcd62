#pragma once

#include "Platform/CoverView.h"

namespace merovanta::inmemory {

class CoverViewsInMemory : public CoverViewFactory {
 public:
    [[nodiscard]] std::unique_ptr<CoverView> create(const View& parent,
                                                    const std::string& className) override;
};

}  // namespace merovanta::inmemory
