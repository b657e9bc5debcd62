#include "Qt/Foundation/HttpExchangeQt.h"

#include <QtNetwork/QNetworkRequest>
#include <chrono>
#include <utility>
#include <variant>

#include "Qt/Foundation/RequestQt.h"

namespace merovanta::qt {

namespace {

constexpr const char* tooLarge = "Reply is too large";

QNetworkReply* send(QNetworkAccessManager& manager, const QNetworkRequest& request, const HttpRequest& from) {
    const QByteArray body = bytesOf(from.body);
    if (body.isEmpty() && from.method == "GET") return manager.get(request);
    if (body.isEmpty() && from.method == "DELETE") return manager.deleteResource(request);
    if (from.method == "POST") return manager.post(request, body);
    if (from.method == "PUT") return manager.put(request, body);
    return manager.sendCustomRequest(request, bytesOf(from.method), body);
}

/// Whether the error is but Qt's reading of a status that the service sent.
bool tellsOnlyTheStatus(QNetworkReply::NetworkError error, int status) {
    if (status < 400) return false;
    // 400 and 418 are said with this one.
    if (error == QNetworkReply::ProtocolInvalidOperationError) return true;
    return error >= QNetworkReply::ContentAccessDenied && error != QNetworkReply::ProtocolUnknownError &&
           error != QNetworkReply::ProtocolFailure;
}

}  // namespace

HttpExchangeQt::HttpExchangeQt(QObject* parent, HttpSession::Completion completion)
    : QObject(parent), mCompletion(std::move(completion)) {}

void HttpExchangeQt::start(QNetworkAccessManager& manager, const HttpRequest& request) {
    auto checked = nativeRequest(request, {u"http", u"https"});
    if (auto* const refusal = std::get_if<StringError>(&checked)) return fail(std::move(refusal->mMsg));
    auto& native = std::get<QNetworkRequest>(checked);
    native.setTransferTimeout(
        static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(request.timeout).count()));
    native.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    native.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);

    mReply = send(manager, native, request);
    mReply->setParent(this);
    connect(mReply, &QNetworkReply::metaDataChanged, this, &HttpExchangeQt::checkAnnouncedLength);
    connect(mReply, &QNetworkReply::readyRead, this, &HttpExchangeQt::receive);
    connect(mReply, &QNetworkReply::finished, this, &HttpExchangeQt::finish);
}

void HttpExchangeQt::checkAnnouncedLength() {
    const qlonglong length = mReply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (length > static_cast<qlonglong>(HttpSession::maximumReplyBytes)) abort(tooLarge);
}

void HttpExchangeQt::receive() {
    if (!mAbortReason.empty() || !mReply->isOpen()) return;
    const QByteArray chunk = mReply->readAll();
    if (static_cast<std::size_t>(chunk.size()) > HttpSession::maximumReplyBytes - mBody.size()) {
        return abort(tooLarge);
    }
    mBody.append(chunk.constData(), static_cast<std::size_t>(chunk.size()));
}

void HttpExchangeQt::finish() {
    receive();
    std::string reason = failure();
    const bool isTimeout = mReply->error() == QNetworkReply::OperationCanceledError;
    if (mAbortReason.empty() && isTimeout) Q_EMIT timedOut();
    if (!reason.empty()) return fail(std::move(reason));
    HttpReply reply;
    reply.response = response();
    if (!mBody.empty()) reply.data = std::move(mBody);
    complete(std::move(reply));
}

void HttpExchangeQt::abort(std::string reason) {
    if (!mAbortReason.empty()) return;
    mAbortReason = std::move(reason);
    mBody.clear();
    // Queued: the reply may be in the middle of telling us something.
    QMetaObject::invokeMethod(mReply, "abort", Qt::QueuedConnection);
}

void HttpExchangeQt::fail(std::string reason) {
    HttpReply reply;
    reply.error = StringError(std::move(reason));
    complete(std::move(reply));
}

void HttpExchangeQt::complete(HttpReply reply) {
    if (const auto completion = std::exchange(mCompletion, nullptr)) completion(std::move(reply));
    deleteLater();
}

HttpResponse HttpExchangeQt::response() const {
    HttpResponse response;
    response.status = mReply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const auto pairs = mReply->rawHeaderPairs();
    for (const auto& [name, value] : pairs) {
        // Qt writes a header that comes several times, where it may not join them, into lines of one.
        const auto values = value.split('\n');
        for (const QByteArray& each : values)
            response.headers.emplace_back(name.toStdString(), each.toStdString());
    }
    return response;
}

std::string HttpExchangeQt::failure() const {
    if (!mAbortReason.empty()) return mAbortReason;
    const auto error = mReply->error();
    const int status = mReply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (error == QNetworkReply::OperationCanceledError) return "The request timed out";
    if (error != QNetworkReply::NoError && !tellsOnlyTheStatus(error, status)) {
        return mReply->errorString().toStdString();
    }
    if (status == 0) return "The reply is not HTTP";
    if (isCutShort()) return "Connection closed";
    return {};
}

bool HttpExchangeQt::isCutShort() const {
    // Qt now and then takes a lost connection for the end of the body. The header is gone if Qt unpacked it.
    const QVariant length = mReply->header(QNetworkRequest::ContentLengthHeader);
    return length.isValid() && length.toULongLong() > mBody.size();
}

}  // namespace merovanta::qt
