#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string_view>

#include "Recorder.h"
#include "Request.h"
#include "Transport.h"
#include "VisitorRegistry.h"

namespace merovanta::devservice {

/// What visitors stream, the same for every transport. A stream is known by the query of the request that
/// opened it; each of its events names the visitor anew, who may have been forgotten in between.
class VisitorStreams {
 public:
    enum class Receipt { Taken, NoEvents, NoSession };

    VisitorStreams(VisitorRegistry& visitors, Recorder& recorder)
        : visitors_(visitors), recorder_(recorder) {}

    /// The stream was opened; false when the request names no session.
    bool open(const Request& request, Transport transport);

    /// A serialised list of events arrived.
    Receipt receive(const Request& request, std::string_view body, Transport transport);

    /// The visitor ended its stream; false when the request names no session.
    bool close(const Request& request);

    /// The visitor's connection went away; the stream goes on when it comes back.
    void disconnected(const Request& request, const std::string& how);

    /// The visitor whose stream this is, or null.
    Visitor* find(const Request& request);

    static void checkSessionHeader(Visitor& visitor, const Request& request, const std::string& sessionId,
                                   Moment now);

 private:
    /// The visitor that the request names, made if new; null when it names none.
    Visitor* obtain(const Request& request, Moment now);

    VisitorRegistry& visitors_;
    Recorder& recorder_;
};

}  // namespace merovanta::devservice
