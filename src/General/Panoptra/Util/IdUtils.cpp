#include "General/Panoptra/Util/IdUtils.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <random>

#include "General/Fatal.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

constexpr auto customerIdKey = "cId";

}  // namespace

std::string IdUtils::newUuid() {
    Random& random = platform::current().random();
    std::uint64_t high = random();
    std::uint64_t low = random();
    high = (high & 0xFFFFFFFFFFFF0FFFULL) | 0x4000;               // version 4: random
    low = (low & 0x3FFFFFFFFFFFFFFFULL) | 0x8000000000000000ULL;  // the common variant
    std::array<char, 37> text{};
    std::snprintf(text.data(), text.size(), "%08X-%04X-%04X-%04X-%012llX", static_cast<unsigned>(high >> 32),
                  static_cast<unsigned>(high >> 16 & 0xFFFF), static_cast<unsigned>(high & 0xFFFF),
                  static_cast<unsigned>(low >> 48), static_cast<unsigned long long>(low & 0xFFFFFFFFFFFFULL));
    return text.data();
}

std::string IdUtils::newShareCode() {
    std::uniform_int_distribution<int> code(10000, 99999);
    return std::to_string(code(platform::current().random()));
}

std::string IdUtils::deviceIdentifier() {
    const auto identifier = platform::current().application().identifierForVendor();
    if (!identifier) fatalError("The device has no vendor identifier");
    return *identifier;
}

std::string IdUtils::customerId() {
    UserDefaults& defaults = platform::current().userDefaults();
    if (const auto stored = defaults.string(customerIdKey); stored && !stored->empty()) return *stored;
    std::string id = newUuid();
    std::erase(id, '-');
    std::transform(id.begin(), id.end(), id.begin(), [](unsigned char digit) { return std::tolower(digit); });
    defaults.registerDefault(customerIdKey, "");
    defaults.set(customerIdKey, id);
    defaults.synchronize();
    return id;
}

void IdUtils::forgetCustomerId() {
    UserDefaults& defaults = platform::current().userDefaults();
    defaults.remove(customerIdKey);
    defaults.synchronize();
}

}  // namespace merovanta
