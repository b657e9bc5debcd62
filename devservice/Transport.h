#pragma once

namespace merovanta::devservice {

/// How a visitor's events arrive and agent messages reach it.
enum class Transport {
    Polling,   ///< requests to api/ix/m
    WebSocket  ///< a connection to api/in/imws
};

}  // namespace merovanta::devservice
