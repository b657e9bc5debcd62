#pragma once

#include <panoptra.pb.h>

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>

#include "AgentIdentity.h"
#include "AgentMessages.h"
#include "EndReason.h"
#include "Frame.h"
#include "InitRecord.h"
#include "LineMeter.h"
#include "Moment.h"
#include "RateMeter.h"
#include "Timeline.h"
#include "Transport.h"
#include "VisitorObserver.h"

namespace merovanta::devservice {

/// The session of one visitor: who it is, what it streamed, and the agent's messages waiting for it. Its
/// memory is bounded however long it streams: the timeline is a ring and only the last frame is kept.
class Visitor {
 public:
    enum class State {
        Waiting,  ///< initialised, nothing streamed yet
        Live,
        Ended
    };

    struct Counters {
        std::uint64_t frames = 0, invalidFrames = 0, pages = 0, taps = 0, pings = 0, tags = 0, userTags = 0;
        std::uint64_t inits = 0, gets = 0, posts = 0, deletes = 0, bytes = 0, warnings = 0;
        std::uint64_t sockets = 0, socketFrames = 0, disconnects = 0;
    };

    Visitor(std::uint32_t number, std::string tenantId, std::string sessionId, Moment now,
            VisitorObserver& observer);

    /// An initialisation record arrived; what is wrong with it is noted.
    void initialised(const InitRecord& record, Moment now);
    /// The stream was opened.
    void connected(const std::string& page, Transport transport, Moment now);
    /// The connection that carried the stream went away; it may come back, so the stream goes on.
    void disconnected(const std::string& how, Moment now);
    /// A request body or frame arrived and was decoded.
    void received(const com::merovanta::panoptra::ProtoMessageList& events, std::size_t bodyBytes,
                  Transport transport, Moment now);
    /// The stream was closed (DELETE).
    void ended(Moment now);
    /// The visitor's activity log reported something, under the type of its record.
    void activity(const std::string& type, const std::string& text, Moment now);
    /// Ends the session of an app that has been silent for too long; one that comes back all the same is live
    /// again. To be called about once a second.
    void expire(Moment now);
    /// The same visitor has begun another session, so that one that was left for the background is over.
    void continued();
    /// Notes misbehaviour. The same note is not repeated within ten seconds.
    void warn(const std::string& text, Moment now);
    /// Takes over the identifiers that a stream request carries; empty ones change nothing.
    void identify(const std::string& visitorId, const std::string& visitId, const std::string& shareId);

    /// Notes what the agent did for this visitor, apart from messages.
    void agentActed(const std::string& text, const AgentIdentity& agent, Moment now);
    /// Queues an agent's message. Returns its number, or nothing when too many wait. One that goes on with
    /// what an earlier one began need not be noted in the timeline again.
    std::optional<std::uint64_t> queueAgentMessage(const nlohmann::json& message, const AgentIdentity& agent,
                                                   Moment now, bool noted = true);
    /// The oldest queued message as JSON text, removed from the queue; nothing when none waits.
    std::optional<std::string> takeAgentMessage();

    /// How this session is recorded, for the console (see README.md); null when nothing is.
    void setRecording(nlohmann::json recording) { recording_ = std::move(recording); }

    std::uint32_t number() const { return number_; }
    const std::string& tenantId() const { return tenantId_; }
    const std::string& sessionId() const { return sessionId_; }
    const std::string& visitorId() const { return visitorId_; }
    State state() const { return state_; }
    Moment lastSeen() const { return lastSeen_; }
    const Counters& counters() const { return counters_; }
    const Timeline& timeline() const { return timeline_; }
    /// The last picture, or null.
    const std::shared_ptr<const Frame>& lastFrame() const { return lastFrame_; }

    /// Everything but timeline and picture, for the console and the control API.
    nlohmann::json summary(Moment now) const;

 private:
    void receive(const com::merovanta::panoptra::ProtoMessage& event, Moment now);
    void receiveFrame(const std::string& image, std::optional<std::uint64_t> time, Moment now);
    void receiveTap(const com::merovanta::panoptra::ProtoClickEvent& tap, std::optional<std::uint64_t> time,
                    Moment now);
    void receiveUserTag(const com::merovanta::panoptra::UserTag& tag, std::optional<std::uint64_t> time,
                        Moment now);
    void end(EndReason reason, Moment now);
    void add(std::string kind, std::string text, Moment now, std::optional<std::uint64_t> time = std::nullopt,
             nlohmann::json detail = nullptr);

    std::uint32_t number_;
    std::string tenantId_, sessionId_, visitorId_, visitId_, shareId_, page_;
    int screenWidth_ = 0, screenHeight_ = 0;
    bool forced_ = false;
    State state_ = State::Waiting;
    std::optional<Transport> transport_;
    Moment firstSeen_, lastSeen_;
    std::optional<Moment> startedAt_, endedAt_, lastPing_;
    std::optional<EndReason> endReason_;
    bool saidItStops_ = false;
    /// Whether the connection that carries the stream is there, for transports that have one.
    bool connected_ = false;
    Counters counters_;
    LineMeter line_;
    RateMeter frameRate_, byteRate_;
    Timeline timeline_;
    std::shared_ptr<const Frame> lastFrame_;
    nlohmann::json userTag_, recording_;
    AgentMessages agentMessages_;
    std::string lastWarning_;
    Moment lastWarningAt_{};
    VisitorObserver& observer_;
};

}  // namespace merovanta::devservice
