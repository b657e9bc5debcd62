// Replies of the polled stream, and the agent's messages in them.
#include <cstdint>

#include "General/Panoptra/Network/Message/Xhr/AgentReply.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto reply = merovanta::AgentReply::parse(std::string(reinterpret_cast<const char*>(data), size));
    for (const auto& message : reply.messages) {
        if (!message.is_object()) __builtin_trap();
    }
    return 0;
}
