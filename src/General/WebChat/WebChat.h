#pragma once

#include <Merovanta/Observation.h>
#include <Merovanta/Outcome.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Communication/Communication.h"
#include "General/Panoptra/Network/MerovantaAPI.h"
#include "General/WebChat/ChatView.h"
#include "Platform/View.h"

namespace merovanta {

/// Opens the chat over the screen in front. Thread: main, unless stated.
class WebChat : public std::enable_shared_from_this<WebChat> {
 public:
    WebChat(std::shared_ptr<ApplicationConfigWrapper> applicationConfig,
            std::shared_ptr<MerovantaAPI> merovantaAPI, std::shared_ptr<Communication> communication);

    /// Reports that the visitor is there, fetches this chat configuration and opens the chat page with it,
    /// unless the chat is open on the screen in front. What fails is said in the log. The outcome is told
    /// once: nothing when the chat lies over the screen, whatever its page is about to load. Any thread.
    void open(const std::string& id, Outcome outcome = {});

    /// Closes the chat on every screen that has one; one that is being opened is not. Any thread.
    void close();

    /// Whether a chat lies over any screen.
    [[nodiscard]] bool isOpen() const;

    /// Calls the observer with isOpen() when that has changed, in a turn of its own, until the handle is
    /// destroyed. Never null.
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void(bool isOpen)> observer);

    /// Another visitor uses the application from now on: no chat shows any more documents before it is opened
    /// anew.
    void visitorChanged();

    /// Opens the page of an open chat anew, for the visitor of the current visit.
    void reload();

    /// The device's push token, absent until the host supplies one.
    std::optional<std::string> mobileDeviceToken;

    /// Whether the visitor may give files to the chat.
    bool areAttachmentsAllowed = false;

 private:
    /// One call that is on its way.
    struct Opening;
    class Handle;
    using Observer = std::function<void(bool isOpen)>;

    void openNow(const std::string& id, const std::shared_ptr<Opening>& opening);
    void fetchConfiguration(const std::string& id, const std::shared_ptr<Opening>& opening);
    void show(const Opening& opening, WebChatConfigurationDTO configuration);
    [[nodiscard]] std::string visitorId() const;
    void tellSoon();
    void tell();

    /// The chat that is open on this screen; null if none is.
    [[nodiscard]] std::shared_ptr<ChatView> chatOn(const View& screen) const;

    std::shared_ptr<ApplicationConfigWrapper> applicationConfig;
    std::shared_ptr<MerovantaAPI> merovantaAPI;
    std::shared_ptr<Communication> communication;
    // One a screen; some may have been closed. The last is the one built last.
    std::vector<std::shared_ptr<ChatView>> mChatViews;
    // Counts the closings: what they have overtaken is not opened any more.
    unsigned mClosings = 0;
    std::vector<std::shared_ptr<Observer>> mObservers;
    bool mHasToldOfOpen = false;
};

}  // namespace merovanta
