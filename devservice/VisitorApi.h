#pragma once

#include "ContactRegistry.h"
#include "InitReply.h"
#include "PresenceRegistry.h"
#include "Recorder.h"
#include "Router.h"
#include "Tenants.h"
#include "VisitorRegistry.h"
#include "VisitorSockets.h"
#include "VisitorStreams.h"

namespace merovanta::devservice {

/// The endpoints that the visitor's library calls.
class VisitorApi {
 public:
    VisitorApi(VisitorRegistry& visitors, const InitReply& initReply, Recorder& recorder,
               VisitorStreams& streams, VisitorSockets& sockets, PresenceRegistry& presences,
               ContactRegistry& contacts, const Tenants& tenants)
        : visitors_(visitors),
          initReply_(initReply),
          recorder_(recorder),
          streams_(streams),
          sockets_(sockets),
          presences_(presences),
          contacts_(contacts),
          tenants_(tenants) {}

    void addRoutes(Router& router);

 private:
    Response initialise(const Request& request);
    Response openStream(const Request& request);
    Response receiveEvents(const Request& request);
    Response closeStream(const Request& request);
    Response logActivity(const Request& request);
    Response pollChannels(const Request& request);
    Response identify(const Request& request);

    VisitorRegistry& visitors_;
    const InitReply& initReply_;
    Recorder& recorder_;
    VisitorStreams& streams_;
    VisitorSockets& sockets_;
    PresenceRegistry& presences_;
    ContactRegistry& contacts_;
    const Tenants& tenants_;
};

}  // namespace merovanta::devservice
