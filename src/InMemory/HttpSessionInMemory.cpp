#include "InMemory/HttpSessionInMemory.h"

#include <utility>

namespace merovanta::inmemory {

void HttpSessionInMemory::execute(HttpRequest request, Completion completion) {
    HttpReply answer = server ? server(request) : failure("No route to host");
    if (answer.data && answer.data->size() > maximumReplyBytes) answer = failure("Reply is too large");
    const auto duration = latencyOf ? latencyOf(request) : latency;
    if (replying) {
        completion = [announce = replying, request, completion = std::move(completion)](HttpReply reply) {
            announce(request);
            completion(std::move(reply));
        };
    }
    requests.push_back(std::move(request));
    mTime->schedule(
        duration, [answer = std::move(answer), completion = std::move(completion)] { completion(answer); },
        /*onMain=*/false);
}

HttpReply HttpSessionInMemory::reply(int status, const std::string& body) {
    HttpReply reply{.response = HttpResponse{.status = status}};
    if (!body.empty()) reply.data = body;
    return reply;
}

HttpReply HttpSessionInMemory::failure(const std::string& message) {
    return {.error = StringError(message)};
}

}  // namespace merovanta::inmemory
