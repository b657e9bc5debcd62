#include "OriginPolicy.h"

#include <boost/asio/ip/address.hpp>
#include <boost/system/error_code.hpp>
#include <string_view>

namespace merovanta::devservice {
namespace {

// The name of "name:port", "address" or "[address]:port".
std::string hostName(std::string_view hostHeader) {
    if (hostHeader.starts_with('[')) {
        return std::string(hostHeader.substr(1, hostHeader.find(']') - 1));
    }
    return std::string(hostHeader.substr(0, hostHeader.find(':')));
}

}  // namespace

bool OriginPolicy::allows(const Request& request) const {
    const std::string name = hostName(request.host);
    boost::system::error_code noAddress;
    boost::asio::ip::make_address(name, noAddress);
    if (noAddress && name != "localhost" && name != host_) return false;
    return request.origin.empty() ||
           request.origin == (request.encrypted ? "https://" : "http://") + request.host;
}

}  // namespace merovanta::devservice
