#include "services/QtHttpClient.h"

#include "EventLoopWait.h"
#include "LoopbackHttpServer.h"

#include <QTcpServer>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

using namespace std::chrono_literals;
using Behaviour = LoopbackHttpServer::Behaviour;

HttpRequest balanceRequest(const std::string& url, std::chrono::milliseconds timeout = 20000ms) {
    HttpRequest request;
    request.url = url;
    request.headers = {{"Accept", "application/json"}, {"Authorization", "Bearer sk-test-0123456789"}};
    request.timeout = timeout;
    return request;
}

std::string describe(const HttpResult& result) {
    if (auto* response = std::get_if<HttpResponse>(&result)) {
        return std::string(response->isHttp ? "http " : "not-http ") + std::to_string(response->status) +
               " " + response->body + (response->truncated ? " [cut]" : "");
    }
    return "error " + std::get<HttpTransportError>(result).description;
}

QByteArray answer(int status, const QByteArray& body, const QList<QByteArray>& headers = {}) {
    return LoopbackHttpServer::httpAnswer(status, "Reason", body, headers);
}

// A port nothing listens on: taken from the kernel, then given back.
std::string refusedUrl() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return "http://127.0.0.1:" + std::to_string(probe.serverPort()) + "/user/balance";
}

// One client, limited to 1000 bytes of body, goes through every case, so it
// also carries on after time-outs and failures.
TEST(QtHttpClientTest, EachExchangeCompletesExactlyOnceAndNeverInsideGet) {
    struct Case {
        std::string expected;
        QByteArray answer;
        Behaviour behaviour = Behaviour::Answer;
        std::string url = {};
        std::pair<std::string, std::string> header = {};
        std::chrono::milliseconds timeout = 20000ms;
        std::chrono::milliseconds delay = 0ms;
    };
    const QByteArray atLimit(1000, 'a');
    const QByteArray overLimit(1001, 'b');
    const std::string invalid = "error The request has an invalid header.";
    const std::string firstThousand = std::string(1000, 'b') + " [cut]";
    const Case cases[] = {
        {"http 200 {}", answer(200, "{}", {"Content-Type: application/json"})},
        {"http 204 ", answer(204, "")},
        // Qt reports each of these as an error of its own; the answer still arrived.
        {R"(http 401 {"error":"key"})", answer(401, R"({"error":"key"})", {"WWW-Authenticate: Bearer"})},
        {"http 407 proxy", answer(407, "proxy", {"Proxy-Authenticate: Basic realm=\"p\""})},
        {"http 500 oops", answer(500, "oops")},
        // No length: the body runs until the server closes.
        {"http 200 until close", "HTTP/1.0 200 OK\r\n\r\nuntil close"},
        {"error Connection closed", "", Behaviour::Drop},
        {"error Connection closed", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n0123456789"},
        {"error Too many redirects", answer(302, "", {"Location: /user/balance"})},
        {"error The request timed out.", "", Behaviour::Silent, "", {}, 300ms},
        // An answer that comes within the time-out, if late, still arrives.
        {"http 200 late", answer(200, "late"), Behaviour::Answer, "", {}, 10000ms, 100ms},
        {"http 200 " + atLimit.toStdString(), answer(200, atLimit)},
        {"http 200 " + atLimit.toStdString(), "HTTP/1.0 200 OK\r\n\r\n" + atLimit},
        // Cut at the limit: a failing status keeps the start of its text, a
        // successful one declared too long is not read at all.
        {"http 401 " + firstThousand, answer(401, overLimit)},
        {"http 200 " + firstThousand, "HTTP/1.0 200 OK\r\n\r\n" + overLimit},
        {"http 200  [cut]", answer(200, overLimit)},
        {"error Connection refused", "", Behaviour::Answer, refusedUrl()},
        {"error Protocol \"ftp\" is unknown", "", Behaviour::Answer, "ftp://127.0.0.1/user/balance"},
        // Finished before get() returns.
        {"not-http 0 hello there", "", Behaviour::Answer, "data:text/plain,hello%20there"},
        // Qt's text as it stands: the caller hides the key from it.
        {"error Connection refused",
         "",
         Behaviour::Answer,
         refusedUrl(),
         {"Authorization", "Bearer refused"}},
        {invalid, "", Behaviour::Answer, "", {"Authorization", "Bearer sk-a\r\nX-Injected: yes"}},
        {invalid, "", Behaviour::Answer, "", {"Authorization", "Bearer sk-a\nX-Injected: yes"}},
        {invalid, "", Behaviour::Answer, "", {"Authorization", std::string("Bearer sk-a\0b", 13)}},
        {invalid, "", Behaviour::Answer, "", {"X-Bad Name", "v"}},
    };
    QtHttpClient client;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.expected);
        LoopbackHttpServer server;
        if (c.behaviour == Behaviour::Drop) {
            server.drop();
        } else if (c.behaviour == Behaviour::Silent) {
            server.staySilent();
        } else {
            server.answerWith(c.answer, c.delay);
        }
        HttpRequest request = balanceRequest(c.url.empty() ? server.url("/user/balance") : c.url, c.timeout);
        request.maxBodyBytes = 1000;
        if (c.header.first == "Authorization") {
            request.headers = {c.header};
        } else if (!c.header.first.empty()) {
            request.headers.push_back(c.header);
        }
        std::vector<HttpResult> results;
        client.get(request, [&](HttpResult result) { results.push_back(std::move(result)); });
        EXPECT_TRUE(results.empty());
        ASSERT_TRUE(waitUntil([&] { return !results.empty(); }));
        drainPostedEvents();
        ASSERT_EQ(results.size(), 1u);
        EXPECT_EQ(describe(results.front()), c.expected);
        if (c.expected == invalid) {
            EXPECT_TRUE(server.requestHeads().empty());
        }
    }
}

} // namespace
} // namespace quorvane
