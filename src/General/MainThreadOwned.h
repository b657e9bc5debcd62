#pragma once

#include <memory>
#include <utility>

#include "General/Panoptra/Util/ViewUtils.h"
#include "Platform/Platform.h"

namespace merovanta {

/// Something of the host's or the toolkit's that any thread may hold and pass on, but that is used and
/// destroyed on the main thread alone.
template <typename Value>
[[nodiscard]] std::shared_ptr<Value> ownedByMainThread(Value value) {
    return {new Value(std::move(value)), [](Value* owned) {
                if (platform::isInstalled()) {
                    ViewUtils::runOnMainThread([owned] { delete owned; });
                } else {
                    delete owned;
                }
            }};
}

}  // namespace merovanta
