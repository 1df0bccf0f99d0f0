#include "demo/DemoServer.h"

#include "balance/BalanceRequest.h"

#include <QHostAddress>
#include <QList>
#include <QTcpSocket>

namespace quorvane {

namespace {

const QByteArray kHeadEnd = "\r\n\r\n";

QByteArray errorBody(const QByteArray& message, const QByteArray& type) {
    return R"({"error":{"message":")" + message + R"(","type":")" + type + R"("}})";
}

// The value of the first header of that name (names compare without case), or nothing.
QByteArray headerValue(const QList<QByteArray>& lines, const QByteArray& name) {
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const qsizetype colon = lines[i].indexOf(':');
        if (colon > 0 && lines[i].left(colon).trimmed().compare(name, Qt::CaseInsensitive) == 0) {
            return lines[i].mid(colon + 1).trimmed();
        }
    }
    return {};
}

} // namespace

DemoServer::DemoServer(DemoAccount& account, const std::string& acceptedKey)
    : m_account(account)
    , m_expectedAuthorization("Bearer " + QByteArray::fromStdString(acceptedKey)) {
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { onConnection(); });
}

DemoServer::~DemoServer() {
    m_server.close();
}

bool DemoServer::listen() {
    return m_server.listen(QHostAddress::LocalHost, 0);
}

std::string DemoServer::baseUrl() const {
    return "http://127.0.0.1:" + std::to_string(m_server.serverPort());
}

QByteArray DemoServer::httpAnswer(int status, const QByteArray& reason, const QByteArray& body,
                                  const QByteArray& extraHeaders) {
    return "HTTP/1.1 " + QByteArray::number(status) + " " + reason +
           "\r\nContent-Type: application/json\r\nContent-Length: " + QByteArray::number(body.size()) +
           "\r\nConnection: close\r\n" + extraHeaders + "\r\n" + body;
}

QByteArray DemoServer::answer(const QByteArray& head) {
    const QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> requestLine = lines.value(0).trimmed().split(' ');
    if (requestLine.size() != 3 || !requestLine[2].startsWith("HTTP/1.")) {
        return httpAnswer(400, "Bad Request", errorBody("Bad Request", "invalid_request_error"));
    }
    const qsizetype query = requestLine[1].indexOf('?');
    const QByteArray path = query < 0 ? requestLine[1] : requestLine[1].left(query);
    if (path != QByteArray(BalanceRequest::kPath.data(), BalanceRequest::kPath.size())) {
        return httpAnswer(404, "Not Found", errorBody("Not Found", "invalid_request_error"));
    }
    if (requestLine[0] != "GET") {
        return httpAnswer(405, "Method Not Allowed", errorBody("Method Not Allowed", "invalid_request_error"),
                          "Allow: GET\r\n");
    }
    // The provider's wording, without ever repeating the key that was sent.
    if (headerValue(lines, "Authorization") != m_expectedAuthorization) {
        return httpAnswer(401, "Unauthorized",
                          errorBody("Authentication Fails, the demo account takes its own key only",
                                    "authentication_error"));
    }
    m_account.advance();
    return httpAnswer(200, "OK", QByteArray::fromStdString(m_account.body()));
}

void DemoServer::onConnection() {
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { onReadyRead(socket); });
    }
}

void DemoServer::onReadyRead(QTcpSocket* socket) {
    // The head gathers in the socket's own buffer until it is complete.
    const QByteArray pending = socket->peek(kMaxHeadBytes + kHeadEnd.size());
    const qsizetype end = pending.indexOf(kHeadEnd);
    if (end < 0) {
        if (pending.size() > kMaxHeadBytes) {
            socket->readAll();
            socket->write(httpAnswer(431, "Request Header Fields Too Large",
                                     errorBody("Request Header Fields Too Large", "invalid_request_error")));
            socket->disconnectFromHost();
        }
        return;
    }
    const QByteArray head = socket->read(end + kHeadEnd.size()).left(end);
    // One request per connection: whatever follows is not read.
    QObject::disconnect(socket, &QTcpSocket::readyRead, nullptr, nullptr);
    socket->write(answer(head));
    socket->disconnectFromHost();
}

} // namespace quorvane
