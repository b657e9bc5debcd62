#include "General/Panoptra/Network/MonitoringSender.h"

#include <string>
#include <utility>

#include "General/Log.h"
#include "General/Panoptra/Network/Json.h"
#include "General/Panoptra/Network/MonitoringLogDTO.h"

namespace merovanta {

MonitoringSender::MonitoringSender(std::shared_ptr<MerovantaAPI> api) : merovantaAPI(std::move(api)) {}

MonitoringSender::Completion MonitoringSender::logged(const char* event) {
    return [event](const std::optional<StringError>& error) {
        if (!error) return;
        // The line is the session controller's.
        Log::warning("Cannot log co-browsing " + std::string(event) + ": " + error->errorDescription(),
                     Log::Source("Panoptra"));
    };
}

void MonitoringSender::logCoBrowsingStart(Completion completion) const {
    send(VisitorActivityLogType::COBROWSE_START, std::move(completion));
}

void MonitoringSender::logCoBrowsingStop(Completion completion) const {
    send(VisitorActivityLogType::COBROWSE_STOP, std::move(completion));
}

void MonitoringSender::logCoBrowsingAccept(Completion completion) const {
    send(VisitorActivityLogType::COBROWSE_ACCEPT, std::move(completion));
}

void MonitoringSender::send(VisitorActivityLogType type, Completion completion) const {
    auto body = encodeJson(MonitoringLogDTO{.type = type, .meta = VisitorMetadata()}.toJson());
    if (!body) {
        completion(body.error());
        return;
    }
    merovantaAPI->post(
        "api/in/io/l", {}, std::move(body.value()),
        [completion = std::move(completion)](const HttpReply& reply) { completion(failureOf(reply)); });
}

}  // namespace merovanta
