#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessage.h"

namespace merovanta {

std::string BidirectionalMessage::description() const {
    std::string text = "BidirectionalMessage(";
    const auto append = [&text](const char* name, const std::string& value) {
        if (text.back() != '(') text += ", ";
        text.append(name).append(": ").append(value);
    };
    const auto appendFlag = [&append](const char* name, const std::optional<bool>& flag) {
        if (flag) append(name, *flag ? "true" : "false");
    };
    if (drawing) append("drawing", std::to_string(drawing->size()) + " bytes");
    appendFlag("start", start);
    appendFlag("bidirectional", bidirectional);
    appendFlag("stop", stop);
    if (click) append("click", std::to_string(click->x) + ", " + std::to_string(click->y));
    appendFlag("optIn", optIn);
    return text + ")";
}

}  // namespace merovanta
