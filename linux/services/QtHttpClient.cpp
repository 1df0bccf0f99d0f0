#include "services/QtHttpClient.h"

#include <QByteArray>
#include <QMetaObject>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QString>
#include <QUrl>
#include <QVariant>

#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

namespace {

const char* const kTimedOut = "The request timed out.";
const char* const kTooLarge = "The response was too large.";
const char* const kInvalidHeader = "The request has an invalid header.";

// One request from get() to its completion, shared by the reply's handlers.
struct Exchange {
    std::function<void(HttpResult)> completion;
    std::size_t maxBodyBytes = 0;
    std::string body;
    // The body went past the limit: what was read up to it is kept.
    bool truncated = false;
    bool delivered = false;
};

std::string oneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

// The errors Qt derives from an HTTP status. The answer itself arrived; the
// status is the program's to judge.
bool isStatusError(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::ProtocolInvalidOperationError:
    case QNetworkReply::AuthenticationRequiredError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::ContentAccessDenied:
    case QNetworkReply::ContentOperationNotPermittedError:
    case QNetworkReply::ContentNotFoundError:
    case QNetworkReply::ContentConflictError:
    case QNetworkReply::ContentGoneError:
    case QNetworkReply::UnknownContentError:
    case QNetworkReply::InternalServerError:
    case QNetworkReply::OperationNotImplementedError:
    case QNetworkReply::ServiceUnavailableError:
    case QNetworkReply::UnknownServerError:
        return true;
    default:
        return false;
    }
}

// Stops the transfer: the status and the start of the body are all a
// caller can use of an answer this large.
void cutShort(QNetworkReply* reply, Exchange& exchange) {
    exchange.truncated = true;
    // Queued: Qt may still be reporting the status's own error once this
    // signal's handler returns, and an abort in between upsets that.
    QMetaObject::invokeMethod(reply, &QNetworkReply::abort, Qt::QueuedConnection);
}

bool isSuccess(QNetworkReply* reply) {
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    return status.isValid() && status.toInt() >= 200 && status.toInt() <= 299;
}

void readAvailable(QNetworkReply* reply, Exchange& exchange) {
    if (!reply->isOpen()) {
        return;
    }
    // Read even when cut short, so that nothing piles up until the abort.
    QByteArray chunk = reply->readAll();
    if (exchange.truncated) {
        return;
    }
    const std::size_t room = exchange.maxBodyBytes - exchange.body.size();
    const auto size = static_cast<std::size_t>(chunk.size());
    exchange.body.append(chunk.constData(), std::min(size, room));
    if (size > room) {
        cutShort(reply, exchange);
    }
}

HttpResult resultOf(QNetworkReply* reply, Exchange& exchange) {
    QNetworkReply::NetworkError error = reply->error();
    if (exchange.truncated) {
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (!status.isValid()) {
            return HttpTransportError{kTooLarge};
        }
        return HttpResponse{true, status.toInt(), std::move(exchange.body), true};
    }
    // Qt gives local files a status of 200 too; only the scheme tells.
    QString scheme = reply->url().scheme();
    if (scheme != QLatin1String("http") && scheme != QLatin1String("https")) {
        if (error == QNetworkReply::NoError) {
            return HttpResponse{false, 0, std::move(exchange.body)};
        }
    } else if (QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
               status.isValid()) {
        if (error == QNetworkReply::NoError || (isStatusError(error) && status.toInt() >= 400)) {
            return HttpResponse{true, status.toInt(), std::move(exchange.body)};
        }
    }
    // The transfer time-out aborts the reply; the only other abort, for the
    // size limit, was handled above.
    if (error == QNetworkReply::OperationCanceledError || error == QNetworkReply::TimeoutError) {
        return HttpTransportError{kTimedOut};
    }
    // The caller hides the key, which it knows, from this text.
    return HttpTransportError{oneLine(reply->errorString().toStdString())};
}

void finish(QNetworkReply* reply, const std::shared_ptr<Exchange>& exchange) {
    if (exchange->delivered) {
        return;
    }
    exchange->delivered = true;
    readAvailable(reply, *exchange);
    HttpResult result = resultOf(reply, *exchange);
    reply->deleteLater();
    // Moved out first: the completion may start the next request.
    auto completion = std::move(exchange->completion);
    completion(std::move(result));
}

// Qt sends header bytes as given: a line break in a value would end the
// header there and start another of the sender's choosing.
bool isValidHeader(const std::string& name, const std::string& value) {
    return !name.empty() && name.find_first_of(std::string(":\r\n \t\0", 6)) == std::string::npos &&
           value.find_first_of(std::string("\r\n\0", 3)) == std::string::npos;
}

int transferTimeoutMs(std::chrono::milliseconds timeout) {
    return static_cast<int>(
        std::clamp<std::chrono::milliseconds::rep>(timeout.count(), 1, std::numeric_limits<int>::max()));
}

} // namespace

QtHttpClient::~QtHttpClient() = default;

void QtHttpClient::get(const HttpRequest& request, std::function<void(HttpResult)> completion) {
    QNetworkRequest qtRequest(QUrl(QString::fromStdString(request.url)));
    for (const auto& [name, value] : request.headers) {
        if (!isValidHeader(name, value)) {
            QMetaObject::invokeMethod(
                &m_receiver,
                [completion = std::move(completion)] { completion(HttpTransportError{kInvalidHeader}); },
                Qt::QueuedConnection);
            return;
        }
        qtRequest.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    }
    qtRequest.setTransferTimeout(transferTimeoutMs(request.timeout));

    auto exchange = std::make_shared<Exchange>();
    exchange->completion = std::move(completion);
    exchange->maxBodyBytes = request.maxBodyBytes;

    QNetworkReply* reply =
        request.method == "GET"
            ? m_manager.get(qtRequest)
            : m_manager.sendCustomRequest(qtRequest, QByteArray::fromStdString(request.method));

    // A successful answer whose declared length is over the limit cannot be
    // used, so none of it is read; a failing one is read up to the limit for
    // the start of its text.
    QObject::connect(reply, &QNetworkReply::metaDataChanged, &m_receiver, [reply, exchange] {
        QVariant length = reply->header(QNetworkRequest::ContentLengthHeader);
        if (!exchange->truncated && length.isValid() && length.toULongLong() > exchange->maxBodyBytes &&
            isSuccess(reply)) {
            cutShort(reply, *exchange);
        }
    });
    QObject::connect(reply, &QNetworkReply::readyRead, &m_receiver,
                     [reply, exchange] { readAvailable(reply, *exchange); });
    QObject::connect(reply, &QNetworkReply::finished, &m_receiver,
                     [reply, exchange] { finish(reply, exchange); });
    // A reply may come back already finished (a data: address). Qt 6.4 still
    // queues its finished(), but nothing promises that; a second delivery of
    // our own costs nothing, as only the first one counts.
    if (reply->isFinished()) {
        QMetaObject::invokeMethod(
            &m_receiver, [reply, exchange] { finish(reply, exchange); }, Qt::QueuedConnection);
    }
}

} // namespace quorvane
