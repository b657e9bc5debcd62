#include "General/Panoptra/Network/Message/Xhr/AgentReply.h"

#include "General/Panoptra/Network/Json.h"

namespace merovanta {

AgentReply AgentReply::parse(const std::string& body, const BidirectionalMessageParser& parser) {
    AgentReply reply;
    const auto elements = parseJson(body);
    if (!elements || !elements->is_array()) {
        reply.isMalformed = true;
        return reply;
    }
    for (const auto& element : *elements) {
        if (!element.is_string()) continue;
        const auto messages = parseJson(element.get_ref<const std::string&>());
        if (!messages) {
            reply.isMalformed = true;
            return reply;
        }
        if (!messages->is_array()) continue;
        for (const auto& message : *messages) {
            if (!message.is_object()) continue;
            if (reply.messages.size() == maximumMessages) {
                reply.isMalformed = true;
                return reply;
            }
            reply.messages.push_back(parser.read(message));
        }
    }
    return reply;
}

}  // namespace merovanta
