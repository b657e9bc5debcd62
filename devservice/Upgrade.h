#pragma once

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <memory>

#include "ClientStream.h"
#include "Request.h"

namespace merovanta::devservice {

/// A connection whose client asks for a WebSocket, on its way from the HTTP side to the session that takes it
/// over.
struct Upgrade {
    const Request& request;
    boost::beast::http::request<boost::beast::http::string_body>& handshake;
    ClientStream& stream;
    /// Counts the connection; kept as long as the connection lives.
    std::shared_ptr<void> slot;
};

}  // namespace merovanta::devservice
