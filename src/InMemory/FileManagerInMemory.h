#pragma once

#include <string>

#include "Platform/FileManager.h"

namespace merovanta::inmemory {

/// The one part of the machine that is real: a directory of its own, removed at the end.
class FileManagerInMemory : public FileManager {
 public:
    FileManagerInMemory() = default;
    ~FileManagerInMemory() override;
    FileManagerInMemory(const FileManagerInMemory&) = delete;
    FileManagerInMemory& operator=(const FileManagerInMemory&) = delete;

    [[nodiscard]] std::string temporaryDirectory() override;

    /// Makes temporaryDirectory() fail.
    bool isBroken = false;

 private:
    std::string mDirectory;
};

}  // namespace merovanta::inmemory
