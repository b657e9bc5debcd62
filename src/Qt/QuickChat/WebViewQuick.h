#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <map>

#include "Platform/WebView.h"
#include "Qt/Foundation/TaskReceiverQt.h"
#include "Qt/QuickChat/ScriptReceiverQuick.h"

class QQuickItem;
class QQuickWindow;

namespace merovanta::quick {

/// The browser of CommunicatingWKWebView.qml.
class WebViewQuick final : public QObject, public WebView {
    Q_OBJECT

 public:
    using Completion = std::function<void(const std::optional<StringError>&)>;

    WebViewQuick(std::vector<std::string> handlers, Delegate delegate);
    ~WebViewQuick() override;

    /// False if the interface file cannot be loaded. The superview must be in a window.
    [[nodiscard]] bool open(QQuickItem& superview);

    [[nodiscard]] std::shared_ptr<View> view() const override;
    void load(const std::string& url) override;
    void evaluateJavaScript(const std::string& script, Completion completion) override;

    // What the interface file asks and tells.

    /// isTyped: opened as a whole by this object, not by a page.
    Q_INVOKABLE bool mayOpen(const QUrl& url, bool isTyped);
    /// The server of the page, which is not there yet, redirects to another address.
    Q_INVOKABLE bool mayFollow(const QUrl& url);
    Q_INVOKABLE void loadingChanged(int status, int errorDomain, int errorCode, const QString& error);
    Q_INVOKABLE void terminated();
    Q_INVOKABLE bool mayChooseFiles();
    [[nodiscard]] Q_INVOKABLE QString pathOf(const QUrl& file) const { return file.toLocalFile(); }
    /// From before the dialog is there until it is closed.
    Q_INVOKABLE void choosingChanged(bool isChoosing);
    Q_INVOKABLE void evaluated(int id, const QVariant& result);

 private:
    /// Whether what is shown is of the page's origin; the scripts know whether it is the page.
    [[nodiscard]] bool isPageShown() const;
    void open(const QUrl& url);
    [[nodiscard]] bool isAllowed(const QUrl& url);
    /// Calls the delegate with a copy of the function: it may destroy this object.
    template <typename Function, typename Argument>
    void later(Function Delegate::*function, Argument argument);
    void complete(int id, const std::optional<StringError>& error);
    void fail(const std::string& error);

    const std::vector<std::string> mHandlers;
    const Delegate mDelegate;
    ScriptReceiverQuick mReceiver;
    qt::TaskReceiverQt mLater;
    QPointer<QQuickItem> mItem;
    QPointer<QQuickWindow> mChoosingIn;
    /// As load() was told to, until the engine asks whether it may; then as the engine writes it.
    QUrl mPage;
    bool mIsLoadWaiting = false;
    int mRedirects = 0;
    /// Whether the load was redirected out of its origin: from there on it is another's.
    bool mIsElsewhere = false;
    bool mHasFailed = false;
    /// The engine must not lose the item while it waits for an answer.
    bool mIsAsked = false;
    int mLastEvaluation = 0;
    std::map<int, Completion> mEvaluations;
};

}  // namespace merovanta::quick
