#pragma once

#include <map>
#include <string>

#include "Platform/UserDefaults.h"

namespace merovanta::inmemory {

class UserDefaultsInMemory : public UserDefaults {
 public:
    [[nodiscard]] std::optional<std::string> string(std::string_view key) override;
    void set(std::string_view key, std::string_view value) override { mStored[std::string(key)] = value; }
    void remove(std::string_view key) override { mStored.erase(std::string(key)); }
    void registerDefault(std::string_view key, std::string_view value) override {
        mDefaults[std::string(key)] = value;
    }
    void synchronize() override { mSynchronized = mStored; }

    /// What would be on the disk.
    [[nodiscard]] const std::map<std::string, std::string>& synchronized() const { return mSynchronized; }

 private:
    std::map<std::string, std::string> mStored;
    std::map<std::string, std::string> mDefaults;
    std::map<std::string, std::string> mSynchronized;
};

}  // namespace merovanta::inmemory
