#include "Qt/QuickChat/WebViewQuick.h"

#include <QtCore/QMetaObject>
#include <QtCore/QScopedValueRollback>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWebChannel/QWebChannel>
#include <QtWebEngineCore/QWebEngineLoadingInfo>
#include <utility>

#include "Qt/Quick/FileChoiceQuick.h"
#include "Qt/Quick/InterfaceFileQuick.h"
#include "Qt/Quick/MerovantaQuick.h"
#include "Qt/Quick/ViewQuick.h"
#include "Qt/QuickChat/ScriptSourcesQuick.h"

namespace merovanta::quick {

namespace {

// Of the engine's network errors. What was cancelled, by a policy or a newer navigation, has not failed.
constexpr int aborted = -3;

constexpr int maximumRedirects = 20;

bool areOfOneOrigin(const QUrl& one, const QUrl& other) {
    const auto port = [](const QUrl& url) {
        return url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
    };
    return one.scheme() == other.scheme() && one.host() == other.host() && port(one) == port(other);
}

}  // namespace

WebViewQuick::WebViewQuick(std::vector<std::string> handlers, Delegate delegate)
    : mHandlers(handlers),
      mDelegate(std::move(delegate)),
      mReceiver(
          std::move(handlers), [this] { return isPageShown(); },
          [received = mDelegate.didReceiveScriptMessage](const ScriptMessage& message) {
              if (received) received(message);
          }) {}

WebViewQuick::~WebViewQuick() {
    choosingChanged(false);
    if (!mItem) return;
    if (!mIsAsked) {
        delete mItem.data();
        return;
    }
    mItem->setParentItem(nullptr);
    mItem->deleteLater();
}

bool WebViewQuick::open(QQuickItem& superview) {
    QObject* const object = loadInterfaceFile(
        QStringLiteral("CommunicatingWKWebView.qml"), *superview.window(), superview,
        {{"page", QVariant::fromValue<QObject*>(this)}, {"parent", QVariant::fromValue(&superview)}});
    mItem = qobject_cast<QQuickItem*>(object);
    auto* const channel = mItem ? mItem->property("webChannel").value<QWebChannel*>() : nullptr;
    if (channel == nullptr) {
        delete object;
        return false;
    }
    channel->registerObject(QStringLiteral("receiver"), &mReceiver);
    if (auto* const ground = mItem->findChild<QQuickItem*>(QStringLiteral("ground"))) {
        if (auto* const marks = MerovantaQuick::attachedTo(*ground)) marks->setGround();
    }
    return true;
}

std::shared_ptr<View> WebViewQuick::view() const {
    return std::make_shared<ViewQuick>(mItem);
}

void WebViewQuick::load(const std::string& url) {
    mRedirects = 0;
    mIsElsewhere = false;
    mHasFailed = false;
    open(QUrl(QString::fromStdString(url)));
}

void WebViewQuick::open(const QUrl& url) {
    if (!mItem) return;
    mPage = url;
    const bool isOfWeb = mPage.scheme() == QLatin1String("http") || mPage.scheme() == QLatin1String("https");
    if (!isOfWeb || mPage.host().isEmpty()) return fail("Not an address of the web");
    mIsLoadWaiting = true;
    const auto scripts = ScriptSourcesQuick::make(mPage, mHandlers);
    QMetaObject::invokeMethod(mItem, "open", Q_ARG(QUrl, mPage), Q_ARG(QString, scripts.page),
                              Q_ARG(QString, scripts.own));
}

void WebViewQuick::evaluateJavaScript(const std::string& script, Completion completion) {
    const int id = ++mLastEvaluation;
    mEvaluations.emplace(id, std::move(completion));
    // Not while the engine waits for an answer.
    mLater.post([this, id, text = evaluable(script)] {
        if (!mItem || !isPageShown()) return complete(id, StringError("The page is not shown"));
        QMetaObject::invokeMethod(mItem, "evaluate", Q_ARG(QString, text), Q_ARG(int, id));
    });
}

bool WebViewQuick::mayOpen(const QUrl& url, bool isTyped) {
    if (isTyped && std::exchange(mIsLoadWaiting, false)) {
        mPage = url;
        return true;
    }
    return isAllowed(url);
}

// Opened anew under its last address: the scripts that give a page the handlers go by the address at which it
// is created.
bool WebViewQuick::mayFollow(const QUrl& url) {
    const bool isElsewhere = mIsElsewhere || !areOfOneOrigin(url, mPage);
    mIsElsewhere = isElsewhere;
    if (!isAllowed(url)) return false;
    if (isElsewhere) return true;
    mLater.post([this, url] {
        if (++mRedirects > maximumRedirects) return fail("Too many redirects");
        open(url);
    });
    return false;
}

bool WebViewQuick::isAllowed(const QUrl& url) {
    const auto decide = mDelegate.decidePolicyForNavigationAction;
    if (!decide) return false;
    const QPointer<WebViewQuick> self(this);
    mIsAsked = true;
    const bool isAllowed = decide(url.toString(QUrl::FullyEncoded).toStdString()) == Policy::allow;
    if (!self) return false;
    mIsAsked = false;
    return isAllowed;
}

void WebViewQuick::loadingChanged(int status, int errorDomain, int errorCode, const QString& error) {
    if (errorDomain == QWebEngineLoadingInfo::HttpStatusCodeDomain) {
        later(&Delegate::didReceiveNavigationResponse, errorCode);
    } else if (status == QWebEngineLoadingInfo::LoadFailedStatus && errorCode != aborted) {
        fail(error.toStdString());
    }
}

void WebViewQuick::terminated() {
    for (const auto& entry : std::map(mEvaluations))
        complete(entry.first, StringError("The page's process ended"));
    fail("The page's process ended");
}

bool WebViewQuick::mayChooseFiles() {
    const auto decide = mDelegate.mayChooseFiles;
    return isPageShown() && decide && decide();
}

void WebViewQuick::choosingChanged(bool isChoosing) {
    if (mChoosingIn) FileChoiceQuick::end(*mChoosingIn);
    mChoosingIn = isChoosing && mItem ? mItem->window() : nullptr;
    if (mChoosingIn) FileChoiceQuick::begin(*mChoosingIn);
}

void WebViewQuick::evaluated(int id, const QVariant& result) {
    const QString text = result.toString();
    std::optional<StringError> error;
    if (result.typeId() != QMetaType::QString) {
        error = StringError("The script cannot be run");
    } else if (!text.isEmpty()) {
        error = StringError(text.toStdString());
    }
    complete(id, error);
}

bool WebViewQuick::isPageShown() const {
    if (!mItem || mPage.isEmpty()) return false;
    return areOfOneOrigin(mItem->property("url").toUrl(), mPage);
}

template <typename Function, typename Argument>
void WebViewQuick::later(Function Delegate::*function, Argument argument) {
    mLater.post([call = mDelegate.*function, argument] {
        if (call) call(argument);
    });
}

void WebViewQuick::complete(int id, const std::optional<StringError>& error) {
    auto evaluation = mEvaluations.extract(id);
    if (evaluation.empty() || !evaluation.mapped()) return;
    mLater.post([completion = std::move(evaluation.mapped()), error] { completion(error); });
}

void WebViewQuick::fail(const std::string& error) {
    if (std::exchange(mHasFailed, true)) return;
    later(&Delegate::didFailNavigation, StringError(error));
}

}  // namespace merovanta::quick
