#include "RequestLog.h"

#include "Text.h"

namespace merovanta::devservice {

void RequestLog::write(const Request& request, std::size_t bodyBytes, unsigned status) {
    if (!enabled_) return;
    out_ << request.method << ' ' << singleLine(request.rawTarget)
         << " X-QD-SSID=" << singleLine(request.session) << " bytes=" << bodyBytes << " status=" << status
         << std::endl;
}

}  // namespace merovanta::devservice
