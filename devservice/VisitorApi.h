#pragma once

#include "InitReply.h"
#include "Recorder.h"
#include "Router.h"
#include "VisitorRegistry.h"

namespace merovanta::devservice {

/// The endpoints that the visitor's library calls.
class VisitorApi {
 public:
    VisitorApi(VisitorRegistry& visitors, const InitReply& initReply, Recorder& recorder)
        : visitors_(visitors), initReply_(initReply), recorder_(recorder) {}

    void addRoutes(Router& router);

 private:
    Response initialise(const Request& request);
    Response openStream(const Request& request);
    Response receiveEvents(const Request& request);
    Response closeStream(const Request& request);
    Response logActivity(const Request& request);

    /// The visitor that a stream request names in its query, made if new; null when it names none.
    Visitor* streamVisitor(const Request& request, Moment now);

    VisitorRegistry& visitors_;
    const InitReply& initReply_;
    Recorder& recorder_;
};

}  // namespace merovanta::devservice
