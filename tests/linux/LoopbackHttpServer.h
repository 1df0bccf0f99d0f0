// An HTTP server on 127.0.0.1 that answers each connection as the test scripts it.
#pragma once

#include <QByteArray>
#include <QList>
#include <QTcpServer>

#include <chrono>
#include <string>

class QTcpSocket;

namespace quorvane {

// Runs on the test's own event loop: it answers only while the test waits
// in it. Each connection reads one request head, then follows the script.
class LoopbackHttpServer {
public:
    enum class Behaviour {
        // Write `answer` after `delay`, then close.
        Answer,
        // Close without a word.
        Drop,
        // Keep the connection open and never answer.
        Silent,
    };

    LoopbackHttpServer();
    ~LoopbackHttpServer();

    // A complete HTTP/1.1 answer with Content-Length and Connection: close.
    static QByteArray httpAnswer(int status, const QByteArray& reason, const QByteArray& body,
                                 const QList<QByteArray>& extraHeaders = {});

    void answerWith(QByteArray answer, std::chrono::milliseconds delay = std::chrono::milliseconds(0));
    void drop();
    void staySilent();

    std::string url(const std::string& path) const;
    // The request heads received so far, each up to and without its blank line.
    const QList<QByteArray>& requestHeads() const { return m_requestHeads; }

private:
    void onConnection();
    void onHeadReceived(QTcpSocket* socket);

    QTcpServer m_server;
    Behaviour m_behaviour = Behaviour::Answer;
    QByteArray m_answer;
    std::chrono::milliseconds m_delay{0};
    QList<QByteArray> m_requestHeads;
};

} // namespace quorvane
