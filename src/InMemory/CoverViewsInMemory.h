#pragma once

#include "InMemory/VirtualTime.h"
#include "Platform/CoverView.h"

namespace merovanta::inmemory {

class CoverViewsInMemory : public CoverViewFactory {
 public:
    explicit CoverViewsInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    [[nodiscard]] std::unique_ptr<CoverView> create(const View& parent, const std::string& className,
                                                    std::function<void()> dismissed) override;

    /// The visitor asks the last cover to go away, if it is there.
    void dismiss() {
        if (const auto dismissed = mDismissed.lock()) (*dismissed)();
    }

 private:
    std::shared_ptr<VirtualTime> mTime;
    std::weak_ptr<std::function<void()>> mDismissed;
};

}  // namespace merovanta::inmemory
