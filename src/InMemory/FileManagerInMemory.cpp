#include "InMemory/FileManagerInMemory.h"

#include <cstdlib>
#include <filesystem>

namespace merovanta::inmemory {

FileManagerInMemory::~FileManagerInMemory() {
    std::error_code ignored;
    if (!mDirectory.empty()) std::filesystem::remove_all(mDirectory, ignored);
}

std::string FileManagerInMemory::temporaryDirectory() {
    if (isBroken) return {};
    if (mDirectory.empty() || !std::filesystem::is_directory(mDirectory)) {
        std::string directory = std::filesystem::temp_directory_path() / "merovanta-XXXXXX";
        if (mkdtemp(directory.data()) != nullptr) mDirectory = std::move(directory);
    }
    return mDirectory;
}

}  // namespace merovanta::inmemory
