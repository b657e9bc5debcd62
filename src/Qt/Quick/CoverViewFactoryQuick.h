#pragma once

#include "Platform/CoverView.h"

namespace merovanta::quick {

class CoverViewFactoryQuick final : public CoverViewFactory {
 public:
    [[nodiscard]] std::unique_ptr<CoverView> create(const View& parent, const std::string& className,
                                                    std::function<void()> dismissed) override;
};

}  // namespace merovanta::quick
