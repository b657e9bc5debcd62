#pragma once

#include <Merovanta/Export.h>
#include <Merovanta/Observation.h>
#include <Merovanta/Outcome.h>

#include <functional>
#include <memory>
#include <string>

namespace merovanta {

/// The chat between the visitor and an agent: a page of the service in a web view over the application. A
/// tap in the top fifth of the screen closes it, the visitor's or one of the agent's. Documents that the
/// agent shares are written to a private temporary directory, where they stay, and shown in a preview; what
/// it cannot show goes to another program when the visitor presses "Open" there. The one instance is
/// Merovanta::webChat(); it holds no state.
///
/// Nothing is thrown and nothing blocks: what fails is said in the log. Thread: any, unless stated; outcomes
/// come on the main thread.
class MEROVANTA_EXPORT MerovantaWebChat {
 public:
    MerovantaWebChat(const MerovantaWebChat&) = delete;
    MerovantaWebChat& operator=(const MerovantaWebChat&) = delete;

    /// Opens the chat over the screen in front, as this chat configuration of the service says; does nothing
    /// if it is open there. A visitor whom nobody has identified is given an anonymous identity first, as by
    /// MerovantaUser::tag(): consent is taken back and a running session restarted.
    void open(const std::string& id);

    /// As open(); the outcome is nothing when the chat lies over the screen, else why it does not, also if a
    /// close() comes first. What the page then loads is said in the log alone.
    void open(const std::string& id, Outcome outcome);

    /// Closes the chat, as the visitor can; does nothing if none is open.
    void close();

    /// Whether the chat lies over a screen of the application. Thread: main.
    [[nodiscard]] bool isOpen() const;

    /// Calls the observer whenever isOpen() has changed, whoever brought it about, in a turn of its own,
    /// until the handle is destroyed. Inside it may do anything: open, close, remove itself. Null if there is
    /// no platform. Thread: main.
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void(bool isOpen)> observer);

    /// The device's push token, which the service is told with the visitor's identity when a session starts.
    void setMobileDeviceToken(const std::string& token);

    /// Whether the visitor may attach files to the chat, where its page offers that: the toolkit's file
    /// dialog then opens. Not allowed unless the host says so; holds from the next time that the visitor
    /// wants to. While the visitor chooses, no picture of the screen is sent and no tap of an agent's played
    /// back.
    void setAttachmentsAllowed(bool areAllowed);

    /// Thread: main.
    [[nodiscard]] bool attachmentsAllowed() const;

 private:
    friend class Merovanta;
    MerovantaWebChat() = default;
};

}  // namespace merovanta
