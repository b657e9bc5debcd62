#include "InMemory/UserDefaultsInMemory.h"

namespace merovanta::inmemory {

std::optional<std::string> UserDefaultsInMemory::string(std::string_view key) {
    for (const auto* values : {&mStored, &mDefaults}) {
        if (const auto found = values->find(std::string(key)); found != values->end()) return found->second;
    }
    return std::nullopt;
}

}  // namespace merovanta::inmemory
