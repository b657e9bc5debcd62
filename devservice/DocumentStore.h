#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "SharedDocument.h"

namespace merovanta::devservice {

/// The documents that agents have shared, in memory and bounded by number and bytes; the oldest make room.
class DocumentStore {
 public:
    static constexpr std::size_t kMaxDocuments = 64;
    static constexpr std::size_t kMaxBytes = 64U << 20U;

    /// Keeps the document under a new random identifier that nobody can guess, and returns that.
    std::string add(SharedDocument document);

    /// The document of an identifier, or null; valid until the next `add`.
    const SharedDocument* find(std::string_view id) const;

 private:
    std::deque<std::pair<std::string, SharedDocument>> documents_;
    std::size_t bytes_ = 0;
};

}  // namespace merovanta::devservice
