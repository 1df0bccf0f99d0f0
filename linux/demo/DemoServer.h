// The demo's balance endpoint: an HTTP server on 127.0.0.1 that answers for the simulated account.
#pragma once

#include "demo/DemoAccount.h"

#include <QByteArray>
#include <QTcpServer>

#include <string>

class QTcpSocket;

namespace quorvane {

// GET of the balance path with the demo's key takes the account's next
// reading and answers it; another key gets 401, another path 404, another
// method 405, a request head that never ends 431. Every answer closes its
// connection. Runs on the main event loop, like the program's HTTP client,
// so requests are answered while the program waits for them.
class DemoServer {
public:
    // The account outlives the server.
    DemoServer(DemoAccount& account, const std::string& acceptedKey);
    ~DemoServer();
    DemoServer(const DemoServer&) = delete;
    DemoServer& operator=(const DemoServer&) = delete;

    // On a port the system picks; false when nothing could be bound.
    bool listen();
    // "http://127.0.0.1:<port>", the base the program appends its path to.
    std::string baseUrl() const;

    static constexpr qsizetype kMaxHeadBytes = qsizetype{16} * 1024;

    // The whole answer for one request head (request line and headers,
    // without the blank line that ends them).
    QByteArray answer(const QByteArray& head);

    static QByteArray httpAnswer(int status, const QByteArray& reason, const QByteArray& body,
                                 const QByteArray& extraHeaders = {});

private:
    void onConnection();
    void onReadyRead(QTcpSocket* socket);

    QTcpServer m_server;
    DemoAccount& m_account;
    QByteArray m_expectedAuthorization;
};

} // namespace quorvane
