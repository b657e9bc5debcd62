#pragma once

#include <Merovanta/ActiveUser.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Network/InitSender.h"
#include "General/Panoptra/Network/MerovantaAPI.h"
#include "General/Panoptra/Network/Message/WireMessages.h"
#include "General/StringError.h"

namespace merovanta {

/// Base of the transports: builds each kind of message, stamps it with the time and hands it to the transport
/// later on the main queue, in the order of the calls.
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

    virtual ~MessageSender() = default;
    MessageSender(const MessageSender&) = delete;
    MessageSender& operator=(const MessageSender&) = delete;

    /// Opens the stream for the page (or address) given.
    virtual void connect(const std::string& url, std::function<void()> successCallback,
                         std::function<void()> errorCallback) = 0;

    /// Tells the service that the stream has ended; does not wait for the answer. Transports call this first.
    virtual void close();

    void sendPing(std::int64_t offset, Callback callback = {});
    void sendScreenshot(std::string image, std::int64_t offset, Callback callback);
    void sendClick(float x, float y, std::int64_t offset, Callback callback);
    void sendPageChange(std::string pageName, std::int64_t offset, Callback callback = {});
    void sendTag(std::string tag, std::int64_t offset, Callback callback = {});
    void sendUserTag(const ActiveUser& user, std::int64_t offset, Callback callback);

    /// Hands the message to the transport; the callback is called once, inside the call. Transports override
    /// it: the base version ends the process.
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

 private:
    void dispatch(ProtoMessage message, Callback callback);
};

}  // namespace merovanta
