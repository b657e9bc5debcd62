#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "InMemory/VirtualTime.h"
#include "Platform/HttpSession.h"

namespace merovanta::inmemory {

/// A network whose other side is one function; each exchange takes the same time, unless a test says
/// otherwise.
class HttpSessionInMemory : public HttpSession {
 public:
    explicit HttpSessionInMemory(std::shared_ptr<VirtualTime> time) : mTime(std::move(time)) {}

    void execute(HttpRequest request, Completion completion) override;

    /// Answers a request; called when it is made. Without one there is no route to anywhere.
    std::function<HttpReply(const HttpRequest&)> server;

    /// From the request to its reply.
    std::chrono::milliseconds latency{20};

    /// If set, how long this request takes in place of that; called after the server.
    std::function<std::chrono::milliseconds(const HttpRequest&)> latencyOf;

    /// If set, called just before a reply is handed over.
    std::function<void(const HttpRequest&)> replying;

    /// All requests so far.
    std::vector<HttpRequest> requests;

    /// A reply with this status and body.
    [[nodiscard]] static HttpReply reply(int status, const std::string& body = {});
    [[nodiscard]] static HttpReply failure(const std::string& message);

 private:
    std::shared_ptr<VirtualTime> mTime;
};

}  // namespace merovanta::inmemory
