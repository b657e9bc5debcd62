#include "Qt/QuickChat/ScriptReceiverQuick.h"

#include <QtCore/QPointer>
#include <algorithm>
#include <utility>

#include "General/Log.h"

namespace merovanta::quick {

namespace {

// A renderer that is no longer the engine's own must not get further than the scripts in it let it.
constexpr qsizetype maximumPiece = qsizetype{256} * 1024;
constexpr std::size_t maximumBody = std::size_t{3} * 48 * 1024 * 1024;

}  // namespace

ScriptReceiverQuick::ScriptReceiverQuick(std::vector<std::string> handlers, std::function<bool()> isPageShown,
                                         Received received)
    : mHandlers(std::move(handlers)), mIsPageShown(std::move(isPageShown)), mReceived(std::move(received)) {}

void ScriptReceiverQuick::receive(const QString& name, bool isString, bool isScript, const QString& piece,
                                  bool isFirst, bool isLast) {
    if (!isAcceptable(name, isFirst, piece.size())) {
        mMessage = {};
        // The next may be acceptable, for instance once the page is shown again.
        if (!mIsInWork) QMetaObject::invokeMethod(this, &ScriptReceiverQuick::taken, Qt::QueuedConnection);
        return;
    }
    if (isFirst) {
        mMessage = {
            .name = name.toStdString(),
            .body = isString ? std::optional(std::string()) : std::nullopt,
            .sender = isScript ? ScriptMessage::Sender::evaluatedScript : ScriptMessage::Sender::page};
    }
    if (mMessage.body) mMessage.body->append(piece.toStdString());
    if (!isLast) {
        emit taken();
        return;
    }
    mIsInWork = true;
    QMetaObject::invokeMethod(this, &ScriptReceiverQuick::deliver, Qt::QueuedConnection);
}

void ScriptReceiverQuick::dropped() {
    if (std::exchange(mHasWarned, true)) return;
    Log::warning("Script messages are dropped: too many or too long");
}

bool ScriptReceiverQuick::isAcceptable(const QString& name, bool isFirst, qsizetype length) const {
    const std::string handler = name.toStdString();
    const bool isKnown = std::find(mHandlers.begin(), mHandlers.end(), handler) != mHandlers.end();
    const bool isNext = isFirst || (handler == mMessage.name && mMessage.body);
    const std::size_t before = mMessage.body && !isFirst ? mMessage.body->size() : 0;
    const bool isBounded = length <= maximumPiece && before < maximumBody;
    return isKnown && isNext && isBounded && !mIsInWork && mIsPageShown();
}

void ScriptReceiverQuick::deliver() {
    mIsInWork = false;
    const ScriptMessage message = std::exchange(mMessage, {});
    if (!mIsPageShown()) {
        emit taken();
        return;
    }
    const QPointer<ScriptReceiverQuick> self(this);
    const auto received = mReceived;
    received(message);
    if (self) emit taken();
}

}  // namespace merovanta::quick
