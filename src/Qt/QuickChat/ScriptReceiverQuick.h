#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <functional>
#include <string>
#include <vector>

#include "Platform/WebView.h"

namespace merovanta::quick {

/// Puts together the messages that js/ScriptHandlers.js hands over in pieces, through a web channel of its
/// own world. One message is in work at a time.
class ScriptReceiverQuick final : public QObject {
    Q_OBJECT

 public:
    /// May destroy this object.
    using Received = std::function<void(const ScriptMessage&)>;

    /// isPageShown: whether what is shown is the page that may send messages.
    ScriptReceiverQuick(std::vector<std::string> handlers, std::function<bool()> isPageShown,
                        Received received);

 public Q_SLOTS:
    void receive(const QString& name, bool isString, bool isScript, const QString& piece, bool isFirst,
                 bool isLast);
    /// A message was not sent, for too much is waiting.
    void dropped();

 Q_SIGNALS:
    /// The next piece may come.
    void taken();

 private:
    [[nodiscard]] bool isAcceptable(const QString& name, bool isFirst, qsizetype length) const;
    void deliver();

    const std::vector<std::string> mHandlers;
    const std::function<bool()> mIsPageShown;
    const Received mReceived;
    /// The pieces so far.
    ScriptMessage mMessage;
    bool mIsInWork = false;
    bool mHasWarned = false;
};

}  // namespace merovanta::quick
