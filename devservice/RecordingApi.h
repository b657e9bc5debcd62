#pragma once

#include <cstdint>
#include <string>

#include "AgentRegistry.h"
#include "GuardedRoutes.h"
#include "RecordingCatalog.h"
#include "SessionRecorder.h"
#include "VisitorRegistry.h"

namespace merovanta::devservice {

/// The part of the control API that is about recorded sessions.
class RecordingApi {
 public:
    RecordingApi(RecordingStore& store, SessionRecorder& recorder, VisitorRegistry& visitors,
                 AgentRegistry& agents)
        : store_(store), catalog_(store), recorder_(recorder), visitors_(visitors), agents_(agents) {}

    void addRoutes(GuardedRoutes& routes);

 private:
    using Handler = Response (RecordingApi::*)(std::int64_t recording, const Request& request);

    void add(GuardedRoutes& routes, const char* method, const std::string& rest, Handler handler);

    Response list(const Request& request);
    Response show(std::int64_t recording, const Request& request);
    Response contents(std::int64_t recording, const Request& request);
    Response picture(std::int64_t recording, const Request& request);
    Response setLabels(std::int64_t recording, const Request& request);
    Response addNote(std::int64_t recording, const Request& request);
    Response removeNote(std::int64_t recording, const Request& request);
    Response remove(std::int64_t recording, const Request& request);
    Response switchRecording(const Request& request);

    /// The response, unless the store failed meanwhile; what was written is durable then.
    Response settled(Response response, const Request& request);

    RecordingStore& store_;
    RecordingCatalog catalog_;
    SessionRecorder& recorder_;
    VisitorRegistry& visitors_;
    AgentRegistry& agents_;
};

}  // namespace merovanta::devservice
