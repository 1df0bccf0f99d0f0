#include "LoopbackHttpServer.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

#include <memory>
#include <stdexcept>
#include <utility>

namespace quorvane {

LoopbackHttpServer::LoopbackHttpServer() {
    if (!m_server.listen(QHostAddress::LocalHost, 0)) {
        throw std::runtime_error("the loopback server could not listen");
    }
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { onConnection(); });
}

LoopbackHttpServer::~LoopbackHttpServer() {
    m_server.close();
}

QByteArray LoopbackHttpServer::httpAnswer(int status, const QByteArray& reason, const QByteArray& body,
                                          const QList<QByteArray>& extraHeaders) {
    QByteArray answer = "HTTP/1.1 " + QByteArray::number(status) + " " + reason + "\r\n";
    answer += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    answer += "Connection: close\r\n";
    for (const QByteArray& header : extraHeaders) {
        answer += header + "\r\n";
    }
    answer += "\r\n";
    answer += body;
    return answer;
}

void LoopbackHttpServer::answerWith(QByteArray answer, std::chrono::milliseconds delay) {
    m_behaviour = Behaviour::Answer;
    m_answer = std::move(answer);
    m_delay = delay;
}

void LoopbackHttpServer::drop() {
    m_behaviour = Behaviour::Drop;
}

void LoopbackHttpServer::staySilent() {
    m_behaviour = Behaviour::Silent;
}

std::string LoopbackHttpServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(m_server.serverPort()) + path;
}

void LoopbackHttpServer::onConnection() {
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        // The socket is the server's child; the buffer lives as long as it.
        auto received = std::make_shared<QByteArray>();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, received] {
            if (received->contains("\r\n\r\n")) {
                socket->readAll();
                return;
            }
            *received += socket->readAll();
            qsizetype end = received->indexOf("\r\n\r\n");
            if (end >= 0) {
                m_requestHeads.append(received->left(end));
                onHeadReceived(socket);
            }
        });
    }
}

void LoopbackHttpServer::onHeadReceived(QTcpSocket* socket) {
    switch (m_behaviour) {
    case Behaviour::Answer:
        QTimer::singleShot(m_delay, socket, [socket, answer = m_answer] {
            socket->write(answer);
            socket->disconnectFromHost();
        });
        break;
    case Behaviour::Drop:
        socket->abort();
        break;
    case Behaviour::Silent:
        break;
    }
}

} // namespace quorvane
