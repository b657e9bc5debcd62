#include "RequestLog.h"

#include "Text.h"

namespace merovanta::devservice {
namespace {

// The console's token opens it to whoever reads the log.
std::string withoutToken(const Request& request) {
    return request.target.query.contains("token") ? request.target.path : singleLine(request.rawTarget);
}

}  // namespace

void RequestLog::write(const Request& request, std::size_t bodyBytes, unsigned status) {
    if (!enabled_) return;
    out_ << request.method << ' ' << withoutToken(request) << " X-QD-SSID=" << singleLine(request.session)
         << " bytes=" << bodyBytes << " status=" << status << std::endl;
}

}  // namespace merovanta::devservice
