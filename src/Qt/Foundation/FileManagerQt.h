#pragma once

#include <mutex>
#include <string>

#include "Platform/FileManager.h"

namespace merovanta::qt {

/// A directory of this process's own, which stays when the process ends: other applications may still show
/// files of it.
class FileManagerQt final : public FileManager {
 public:
    [[nodiscard]] std::string temporaryDirectory() override;

 private:
    std::mutex mMutex;
    std::string mPath;
};

}  // namespace merovanta::qt
