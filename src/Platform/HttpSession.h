#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "General/StringError.h"

namespace merovanta {

struct HttpRequest {
    std::string method = "GET";
    /// Absolute, percent-encoded: ASCII only.
    std::string url;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    /// Longest time without any progress.
    std::chrono::seconds timeout{60};
    /// Neither this request nor any after it runs on a connection that is open by now: those may be dead
    /// without anybody knowing.
    bool onNewConnection = false;
};

struct HttpResponse {
    int status = 0;
    /// A header that came several times is there as often, or joined by commas where that means the same.
    std::vector<std::pair<std::string, std::string>> headers;
};

/// What became of a request: a response, perhaps with data, or an error.
struct HttpReply {
    /// Absent if the body holds no byte.
    std::optional<std::string> data;
    std::optional<HttpResponse> response;
    /// The request failed: no route, time-out, connection lost in the middle, reply larger than the bound.
    /// A status such as 500 is a response and no error. A chunked reply whose connection was lost may pass
    /// for a whole one: readers do not trust that data is complete.
    std::optional<StringError> error;
};

/// Plain HTTP exchanges.
class HttpSession {
 public:
    using Completion = std::function<void(HttpReply)>;

    /// A reply whose body is longer fails.
    static constexpr std::size_t maximumReplyBytes = std::size_t{16} * 1024 * 1024;

    virtual ~HttpSession() = default;

    /// Starts the request and returns. The completion is called once, on a thread of the session's own, in
    /// particular never inside this call; it may be dropped uncalled when the application ends. Requests keep
    /// no cookies and run side by side. Any thread.
    virtual void execute(HttpRequest request, Completion completion) = 0;
};

}  // namespace merovanta
