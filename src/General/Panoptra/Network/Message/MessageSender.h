#pragma once

#include <Merovanta/ActiveUser.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/InitSender.h"
#include "General/Panoptra/Network/MerovantaAPI.h"
#include "General/Panoptra/Network/Message/Outbox.h"
#include "General/Panoptra/Network/Message/WireMessages.h"
#include "General/StringError.h"

namespace merovanta {

/// Base of the transports: builds each kind of message, stamps it with the time and hands it to the transport
/// later on the main queue, in the order of the calls. While the transport takes none, because a request is
/// under way or the stream is broken, messages wait in an outbox.
///
/// Time offsets are milliseconds since 1970, normally the session's start, and 0 for none; a message's time
/// is the whole seconds since 1970 in milliseconds less the offset. An offset in the future ends the process.
///
/// Building may happen on any thread; all else, and every callback, on the main thread. Owned by shared_ptr:
/// a message whose sender is gone by its turn is dropped.
class MessageSender : public std::enable_shared_from_this<MessageSender> {
 public:
    /// Receives nothing on success.
    using Callback = std::function<void(const std::optional<StringError>&)>;

    /// What becomes of the stream. Called on the main thread as the last thing that the transport does, so
    /// that it may be closed or connected inside.
    struct StreamObserver {
        /// It is open, for the first time or again; also said of one that was silent and is answered after
        /// all.
        std::function<void()> opened;
        /// It broke, or could not be opened: nothing is sent until it is open again.
        std::function<void()> lost;
        /// A request has been without an answer for so long that one may doubt whether there is a network.
        std::function<void()> silent;
    };

    virtual ~MessageSender() = default;
    MessageSender(const MessageSender&) = delete;
    MessageSender& operator=(const MessageSender&) = delete;

    /// The ids under which connect() opens a stream, those that the service was told of: the visitor may have
    /// become another in the meantime. Without them, those of the moment.
    void setVisit(std::optional<VisitConfig> visit) { mVisit = std::move(visit); }

    /// Opens the stream for the page (or address) given.
    virtual void connect(const std::string& url, std::function<void()> successCallback,
                         std::function<void()> errorCallback) = 0;

    /// Opens a stream that broke once more, under the ids and the address that opened it; what was kept goes
    /// first. A request without an answer is given up.
    virtual void reconnect() = 0;

    /// Whether the transport does that of its own accord, once the stream was open.
    [[nodiscard]] virtual bool reconnectsByItself() const = 0;

    /// Tells the service that the stream has ended, under the ids that opened it; does not wait for the
    /// answer. Transports call this first. What waits in the outbox is dropped.
    virtual void close();

    /// Replaces the observer.
    void observeStream(StreamObserver observer) { mObserver = std::move(observer); }

    /// Whether the request under way is without an answer for so long that the observer was told.
    [[nodiscard]] virtual bool isSilent() const { return false; }

    /// Whether anything has arrived since the stream was last opened.
    [[nodiscard]] bool hasDelivered() const { return mHasDelivered; }

    void sendPing(std::int64_t offset, Callback callback = {});
    void sendScreenshot(std::string image, std::int64_t offset, Callback callback);
    void sendClick(float x, float y, std::int64_t offset, Callback callback);
    void sendPageChange(std::string pageName, std::int64_t offset, Callback callback = {});
    void sendTag(std::string tag, std::int64_t offset, Callback callback = {});
    void sendUserTag(const ActiveUser& user, std::int64_t offset, Callback callback);

    /// Hands the message to the transport, whatever it is about; the callback is called once, inside the
    /// call. Transports override it: the base version ends the process.
    virtual void send(ProtoMessage message, const Callback& callback);

    /// Whether connect() calls its callbacks. Of a transport that does not, being asked to connect is all
    /// there is to know: it counts as connected.
    [[nodiscard]] virtual bool reportsConnection() const = 0;

    /// The transport's class name.
    [[nodiscard]] virtual const char* typeName() const = 0;

 protected:
    MessageSender(std::shared_ptr<InitSender> initSender, std::shared_ptr<MerovantaAPI> merovantaAPI,
                  std::shared_ptr<ApplicationConfigWrapper> applicationConfigWrapper);

    // The size budget of one visit's upload and what counts against it; nothing enforces it so far.
    std::int64_t visitSizeThreshold = std::int64_t{7} * 1024 * 1024;
    std::shared_ptr<InitSender> initSender;
    std::shared_ptr<MerovantaAPI> merovantaAPI;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfigWrapper;
    std::int64_t byteCount = 0;

    /// Whether messages may be handed over now; else they wait for sendWaiting().
    [[nodiscard]] virtual bool takesMessages() const { return true; }

    /// Hands over what waits.
    void sendWaiting();
    void discardWaiting(const StringError& error) { mOutbox.discard(error); }

    /// What an address is made of, with the ids under which the stream is to be opened.
    [[nodiscard]] ApplicationConfig streamConfig() const;

    /// The stream is opened now: its ids name it until the next.
    void rememberStream();
    /// The session that the stream belongs to; empty before the first.
    [[nodiscard]] std::string streamSession() const;

    void setDelivered(bool hasDelivered) { mHasDelivered = hasDelivered; }
    void notify(const std::function<void()> StreamObserver::*event) const;

 private:
    void dispatch(ProtoMessage message, Callback callback);
    void sendOrKeep(ProtoMessage message, Callback callback);
    [[nodiscard]] MerovantaAPI::Query currentStream() const;

    Outbox mOutbox;
    StreamObserver mObserver;
    std::optional<VisitConfig> mVisit;
    std::optional<MerovantaAPI::Query> mStream;
    bool mHasDelivered = false;
};

}  // namespace merovanta
