#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>

#include "ContactRegistry.h"
#include "RecordingStore.h"
#include "RecordingWriter.h"
#include "VisitorObserver.h"
#include "VisitorRegistry.h"

namespace merovanta::devservice {

/// Records the sessions of the visitors: what the console shows of them, and the chat. Recording never stands
/// in the way of the live work: when the disk is full or the directory cannot be used, that is said once,
/// what comes is not recorded, and it is tried again after a while.
class SessionRecorder : public VisitorObserver {
 public:
    /// Between two calls of `settle`; what was recorded since then is lost when the process is killed.
    static constexpr std::chrono::milliseconds kSettlePause{250};

    /// Problems go to `log`, a line each; it must outlive the recorder.
    SessionRecorder(RecordingStore& store, VisitorRegistry& visitors, const ContactRegistry& contacts,
                    std::ostream& log)
        : store_(store), visitors_(visitors), contacts_(contacts), log_(log) {}

    ~SessionRecorder() override;

    /// Records from now on. When the directory cannot be used, `problem` says why.
    void open(const std::filesystem::path& directory, const RecordingStore::Limits& limits);

    /// Whether sessions are to be recorded at all.
    bool isEnabled() const { return enabled_; }
    /// Why nothing is recorded although it should be, if so.
    const std::optional<std::string>& problem() const { return problem_; }

    /// Switches the recording of one session off or on.
    void switchOff(Visitor& visitor, bool off, const AgentIdentity& agent, Moment now);
    /// Has nothing more to do with this recording, which is about to be deleted; if its session goes on it is
    /// recorded no more.
    void letGo(std::int64_t recording);

    /// Makes everything that was recorded durable, and deletes what is kept no longer; to be called every
    /// `kSettlePause`. False when something went wrong, which `problem` tells then.
    bool settle(Moment now);

    void visitorChanged(const Visitor& visitor) override;
    void frameArrived(const Visitor& visitor) override;
    void visitorRemoved(const Visitor& visitor) override;

 private:
    struct Session {
        std::unique_ptr<RecordingWriter> writer;
        bool off = false;
        /// Whether there is a recording of it, which a problem may have taken the writer from.
        bool recorded = false;
        /// Up to which entry the timeline is recorded, and since when and up to which message the chat.
        std::uint64_t timelineSeen = 0, chatSeen = 0;
        Moment since{};
    };

    /// The writer of a visitor who is to be recorded, or null.
    RecordingWriter* writer(const Visitor& visitor);
    void open(Session& session, const Visitor& visitor, Moment now);
    void recordEntry(RecordingWriter& writer, const nlohmann::json& entry);
    void recordChat(Session& session, const Contact& contact);
    void describe(Session& session, const Visitor& visitor, Moment now);
    void settle(Session& session, const Visitor& visitor, Moment now);
    void tell(const Session& session, Visitor& visitor) const;
    /// Stops to record when something went wrong since the last check; false then.
    bool check();
    void pause(std::string problem);

    RecordingStore& store_;
    VisitorRegistry& visitors_;
    const ContactRegistry& contacts_;
    std::ostream& log_;
    bool enabled_ = false;
    std::optional<std::string> problem_;
    /// How often `settle` is still called before recording is tried again, and how often it was called.
    int pause_ = 0;
    unsigned settled_ = 0;
    std::map<std::uint32_t, Session> sessions_;
};

}  // namespace merovanta::devservice
