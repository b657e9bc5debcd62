#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "General/CoBrowsing/DefaultUIView.h"
#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Communication/Communication.h"
#include "General/Panoptra/Panoptra.h"
#include "General/Panoptra/UIStrings.h"
#include "General/StringError.h"

namespace merovanta {

/// Lets an agent start a session from the other side, and shows the widget while one runs. Thread: main.
class CoBrowsing : public std::enable_shared_from_this<CoBrowsing> {
 public:
    /// Receives nothing and true once the session runs, else false and the error: none if the service leaves
    /// the visitor alone.
    using Completion = std::function<void(const std::optional<StringError>&, bool isStarted)>;

    CoBrowsing(std::shared_ptr<Panoptra> panoptra, std::shared_ptr<UIStrings> uiStrings,
               std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
               std::shared_ptr<Communication> communication);

    /// Begins to wait for an agent's request.
    void startPolling();

    /// Shows the widget and starts a forced session under the visit's own session id. The completion is
    /// called once, also if a stop comes first.
    void start(SessionStarter by, Completion completion);

    /// An agent asks to co-browse: start(), but a widget that is left of a start that failed gives way.
    void invited();

    /// Takes the widget away and stops the session.
    void hide(SessionEnd reason);

    /// Called before each picture of this screen: whether it may be taken. A session with a widget has it
    /// there; if it is not, because its window is gone or another one has come to the front, it is put there.
    [[nodiscard]] bool keepWidgetOn(const View& screen);

    /// Takes the widget away: the session has been stopped.
    void sessionStopped();

    /// A stop came while no session was there: an invitation that is about to start one ends.
    void startOvertaken();

    /// The session connects anew under the same widget, after a restart, an outage or a return: shows that,
    /// then the outcome.
    void sessionReconnects();
    void sessionReconnected();

    /// The session could not be opened again, and waits to be stopped: shows so.
    void sessionIsLost();

    /// Whether the service offers the chat, which the widget opens.
    void setChatActivated(bool isActivated);

    /// Shows what is known now: the share code, once the session runs.
    void refresh();

 private:
    /// One request to co-browse, from the start to the end of its widget. What is still on its way for it
    /// holds it weakly.
    struct Invitation {
        SessionStarter by;
        /// Called once; gone when it has been, or is for the session to call.
        Completion completion;
        /// Its session has begun; before that, the one that runs is another.
        bool hasSession = false;
        /// The widget shows the share code of a session that runs.
        bool isConnected = false;
    };

    void showWidget();
    [[nodiscard]] std::optional<StringError> createWidget();
    [[nodiscard]] bool hasSession() const { return mInvitation && mInvitation->hasSession; }
    void startSession();
    void startFailed();
    void sessionStarted();
    void setText(const std::string& text);
    void removeWidget();
    [[nodiscard]] std::string textOr(const char* key, const char* fallback) const;

    std::shared_ptr<Panoptra> panoptra;
    std::shared_ptr<UIStrings> uiStrings;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<Communication> communication;
    const std::string startCoBrowsingId = "SCB";
    const double startCoBrowsingPollRate = 3.0;
    const char* const errorString = "ui.mobile.error";
    const char* const connectingString = "ui.mobile.connecting";
    std::shared_ptr<DefaultUIView> view;
    bool isStarted = false;
    std::shared_ptr<Invitation> mInvitation;
};

}  // namespace merovanta
