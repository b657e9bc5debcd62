#include "General/Panoptra/Util/HostName.h"

#include <algorithm>

#include "General/Log.h"

namespace merovanta {

std::string HostName::hostOf(std::string_view name) {
    constexpr std::string_view blanks = " \t\r\n";
    name.remove_prefix(std::min(name.find_first_not_of(blanks), name.size()));
    if (const auto scheme = name.find("://"); scheme != std::string_view::npos)
        name.remove_prefix(scheme + 3);
    name = name.substr(0, name.find_first_of("/?#"));
    if (const auto user = name.find_last_of('@'); user != std::string_view::npos)
        name.remove_prefix(user + 1);
    name = name.substr(0, name.find_first_of(blanks));
    return std::string(name);
}

void HostName::warnIfMalformed(std::string_view name) {
    const std::string host = hostOf(name);
    if (host == name) return;
    std::string warning = "\"" + std::string(name) + "\" is no host name";
    if (!host.empty()) warning += ": use \"" + host + "\"";
    Log::warning(warning);
}

}  // namespace merovanta
