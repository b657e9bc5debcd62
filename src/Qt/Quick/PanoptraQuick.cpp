#include "Qt/Quick/PanoptraQuick.h"

#include <Merovanta/Merovanta.h>

#include <QtCore/QPointer>
#include <chrono>
#include <utility>

#include "Qt/Quick/CallbackQuick.h"

namespace merovanta::quick {

PanoptraQuick::PanoptraQuick(QObject* parent)
    : QObject(parent),
      mStatus(Merovanta::panoptra().status()),
      mObservation(Merovanta::panoptra().observe([this](const SessionStatus& status) { changed(status); })) {}

void PanoptraQuick::changed(const SessionStatus& status) {
    const bool isNewCode = status.shareId != mStatus.shareId;
    mStatus = status;
    // Each may destroy this object.
    const QPointer<PanoptraQuick> self(this);
    if (isNewCode) emit shareIdChanged();
    if (self) emit stateChanged();
}

QString PanoptraQuick::state() const {
    switch (mStatus.state) {
        case SessionState::idle:
            return QStringLiteral("idle");
        case SessionState::starting:
            return QStringLiteral("starting");
        case SessionState::sharing:
            return QStringLiteral("sharing");
        case SessionState::suspended:
            return QStringLiteral("suspended");
        case SessionState::reconnecting:
            return QStringLiteral("reconnecting");
        case SessionState::ended:
            return QStringLiteral("ended");
    }
    return {};
}

QString PanoptraQuick::endReason() const {
    if (!mStatus.endReason) return {};
    switch (*mStatus.endReason) {
        case SessionEnd::host:
            return QStringLiteral("host");
        case SessionEnd::visitor:
            return QStringLiteral("visitor");
        case SessionEnd::agent:
            return QStringLiteral("agent");
        case SessionEnd::failure:
            return QStringLiteral("failure");
        case SessionEnd::restart:
            return QStringLiteral("restart");
    }
    return {};
}

QString PanoptraQuick::startedBy() const {
    if (!mStatus.startedBy) return {};
    switch (*mStatus.startedBy) {
        case SessionStarter::host:
            return QStringLiteral("host");
        case SessionStarter::invitation:
            return QStringLiteral("invitation");
        case SessionStarter::forced:
            return QStringLiteral("forced");
    }
    return {};
}

QDateTime PanoptraQuick::since() const {
    if (!mStatus.since) return {};
    const auto sinceEpoch = mStatus.since->time_since_epoch();
    return QDateTime::fromMSecsSinceEpoch(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count());
}

void PanoptraQuick::start(const QJSValue& outcome) {
    bool isRefused = false;
    const auto callback = CallbackQuick::of(*this, outcome, isRefused);
    if (!isRefused) Merovanta::panoptra().start(outcomeOf(callback));
}

void PanoptraQuick::start(const QString& tenantId, const QString& token, const QJSValue& outcome) {
    bool isRefused = false;
    const auto callback = CallbackQuick::of(*this, outcome, isRefused);
    if (isRefused) return;
    Merovanta::panoptra().start(tenantId.toStdString(), token.toStdString(), outcomeOf(callback));
}

void PanoptraQuick::preferWebSocket(bool isPreferred) {
    Merovanta::panoptra().preferWebSocket(isPreferred);
}

void PanoptraQuick::stop() {
    Merovanta::panoptra().stop();
}

void PanoptraQuick::tag(const QJSValue& text, const QJSValue& outcome) {
    bool isRefused = false;
    const auto callback = CallbackQuick::of(*this, outcome, isRefused);
    if (isRefused) return;
    if (text.isUndefined() || text.isNull() || text.isObject())
        return CallbackQuick::throwTypeError(*this,
                                             QStringLiteral("A tag is a text, not ") + text.toString());
    Merovanta::panoptra().tag(text.toString().toStdString(), outcomeOf(callback));
}

void PanoptraQuick::registerCallbacks(const QJSValue& startCallback, const QJSValue& stopCallback) {
    bool isRefused = false;
    const auto callbackOf = [&](const QJSValue& function) -> std::function<void()> {
        const auto callback = CallbackQuick::of(*this, function, isRefused);
        if (!callback) return {};
        return [callback] { (*callback)({}); };
    };
    auto onStart = callbackOf(startCallback);
    if (isRefused) return;
    auto onStop = callbackOf(stopCallback);
    if (!isRefused) Merovanta::panoptra().registerCallbacks(std::move(onStart), std::move(onStop));
}

bool PanoptraQuick::connected() const {
    return Merovanta::panoptra().connected();
}

}  // namespace merovanta::quick
