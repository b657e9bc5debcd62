#pragma once

#include <boost/beast/websocket/stream_base.hpp>
#include <chrono>

namespace merovanta::devservice {

/// What every WebSocket of the service keeps to: a silent peer is asked with a ping, and closed when it does
/// not answer that either.
inline boost::beast::websocket::stream_base::timeout socketTimeouts() {
    using std::chrono::seconds;
    return {seconds(10), seconds(30), true};
}

}  // namespace merovanta::devservice
