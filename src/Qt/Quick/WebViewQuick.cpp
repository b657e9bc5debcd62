#include "Qt/Quick/WebViewQuick.h"

#include <QtCore/QMetaObject>
#include <QtCore/QScopedValueRollback>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWebChannel/QWebChannel>
#include <QtWebEngineCore/QWebEngineLoadingInfo>
#include <utility>

#include "Qt/Quick/InterfaceFileQuick.h"
#include "Qt/Quick/ScriptSourcesQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace merovanta::quick {

namespace {

// Of the engine's network errors. What was cancelled, by a policy or a newer navigation, has not failed.
constexpr int aborted = -3;

QUrl withoutParameters(const QUrl& url) {
    return url.adjusted(QUrl::RemoveQuery | QUrl::RemoveFragment);
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
    return true;
}

std::shared_ptr<View> WebViewQuick::view() const {
    return std::make_shared<ViewQuick>(mItem);
}

void WebViewQuick::load(const std::string& url) {
    if (!mItem) return;
    mPage = QUrl(QString::fromStdString(url));
    mHasFailed = false;
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
    return withoutParameters(mItem->property("url").toUrl()) == withoutParameters(mPage);
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
