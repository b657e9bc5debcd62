#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessage.h"
#include "General/Panoptra/Network/Message/Bidirectional/BidirectionalMessageHandler.h"

namespace merovanta {

/// Reads the agent's messages part by part and hands them to the handler. A part that is missing or not of
/// its type is left absent. Thread: main, unless stated.
class BidirectionalMessageParser {
 public:
    explicit BidirectionalMessageParser(
        std::shared_ptr<BidirectionalMessageHandler> bidirectionalMessageHandler);

    /// The dictionary is a JSON object. Any thread: a message may hold a large picture.
    [[nodiscard]] BidirectionalMessage read(const nlohmann::json& dictionary) const;

    /// Has the messages followed, in order and one after the other.
    void handOver(std::vector<BidirectionalMessage> messages) const;

    /// The stream is closed: what still waits to be followed is not followed any more.
    void discardWaiting() const;

 private:
    void readDrawing(const nlohmann::json& dictionary, BidirectionalMessage& message) const;
    void readConfiguration(const nlohmann::json& dictionary, BidirectionalMessage& message) const;
    void readAction(const nlohmann::json& dictionary, BidirectionalMessage& message) const;
    void readClick(const nlohmann::json& dictionary, BidirectionalMessage& message) const;

    const char* const drawing = "d";
    const char* const drawingUrl = "u";
    const char* const configuration = "co";
    const char* const configurationStart = "s";
    const char* const configurationBidirectional = "b";
    const char* const configurationOptIn = "opt";
    const char* const action = "a";
    const char* const actionClose = "c";
    const char* const clickX = "x";
    const char* const clickY = "y";
    const char* const base64Prefix = "data:image/png;base64,";
    std::shared_ptr<BidirectionalMessageHandler> bidirectionalMessageHandler;
};

}  // namespace merovanta
