#pragma once

#include <string>

namespace merovanta {

/// Thread: any.
class FileManager {
 public:
    virtual ~FileManager() = default;

    /// A directory for passing files of this application alone, which no other user may enter; made if it is
    /// missing. Empty if there is none to be had.
    [[nodiscard]] virtual std::string temporaryDirectory() = 0;
};

}  // namespace merovanta
