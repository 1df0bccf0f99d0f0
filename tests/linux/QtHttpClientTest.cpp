#include "platform/QtHttpClient.h"

#include "EventLoopWait.h"
#include "LoopbackHttpServer.h"

#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace quorvane {
namespace {

using namespace std::chrono_literals;

// Every completion a request made, in order.
struct Completions {
    std::vector<HttpResult> results;

    std::function<void(HttpResult)> recorder() {
        return [this](HttpResult result) {
            results.push_back(std::move(result));
        };
    }
    bool waitForOne() {
        return waitUntil([this] { return !results.empty(); });
    }
};

HttpRequest balanceRequest(const std::string& url, std::chrono::milliseconds timeout = 20000ms) {
    HttpRequest request;
    request.url = url;
    request.headers = {{"Accept", "application/json"}, {"Authorization", "Bearer sk-test-0123456789"}};
    request.timeout = timeout;
    return request;
}

QList<QByteArray> headLines(const QByteArray& head) {
    return head.split('\n');
}

std::string describe(const HttpResult& result) {
    if (auto* response = std::get_if<HttpResponse>(&result)) {
        return std::string(response->isHttp ? "http " : "not-http ") + std::to_string(response->status) +
               " " + response->body;
    }
    return "error " + std::get<HttpTransportError>(result).description;
}

// A port nothing listens on: taken from the kernel, then given back.
quint16 closedPort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    quint16 port = probe.serverPort();
    probe.close();
    return port;
}

TEST(QtHttpClientTest, SendsTheRequestLineAndHeadersAndDeliversTheBody) {
    LoopbackHttpServer server;
    QByteArray body = R"({"is_available":true,"balance_infos":[]})";
    server.answerWith(LoopbackHttpServer::httpAnswer(200, "OK", body, {"Content-Type: application/json"}));
    QtHttpClient client;
    Completions completions;

    client.get(balanceRequest(server.url("/user/balance")), completions.recorder());
    EXPECT_TRUE(completions.results.empty());
    ASSERT_TRUE(completions.waitForOne());

    ASSERT_EQ(server.requestHeads().size(), 1);
    QList<QByteArray> lines = headLines(server.requestHeads().front());
    EXPECT_EQ(lines.front(), "GET /user/balance HTTP/1.1\r");
    EXPECT_TRUE(lines.contains("Accept: application/json\r"));
    EXPECT_TRUE(lines.contains("Authorization: Bearer sk-test-0123456789\r"));
    EXPECT_EQ(describe(completions.results.front()), "http 200 " + body.toStdString());
}

TEST(QtHttpClientTest, HttpStatusesArriveAsResponsesWithTheirBodies) {
    struct Case {
        QByteArray answer;
        std::string expected;
    };
    const std::string longBody(200, 'x');
    const Case cases[] = {
        {LoopbackHttpServer::httpAnswer(204, "No Content", ""), "http 204 "},
        {LoopbackHttpServer::httpAnswer(299, "Odd", "{}"), "http 299 {}"},
        {LoopbackHttpServer::httpAnswer(300, "Multiple Choices", "choose"), "http 300 choose"},
        // Qt reports each of these as an error of its own; the answer still arrived.
        {LoopbackHttpServer::httpAnswer(400, "Bad Request", "bad"), "http 400 bad"},
        {LoopbackHttpServer::httpAnswer(401, "Unauthorized", QByteArray::fromStdString(longBody)),
         "http 401 " + longBody},
        {LoopbackHttpServer::httpAnswer(401, "Unauthorized", R"({"error":"key"})",
                                        {"WWW-Authenticate: Bearer"}),
         R"(http 401 {"error":"key"})"},
        {LoopbackHttpServer::httpAnswer(402, "Payment Required", "pay"), "http 402 pay"},
        {LoopbackHttpServer::httpAnswer(404, "Not Found", "none"), "http 404 none"},
        {LoopbackHttpServer::httpAnswer(407, "Proxy Authentication Required", "proxy",
                                        {"Proxy-Authenticate: Basic realm=\"p\""}),
         "http 407 proxy"},
        {LoopbackHttpServer::httpAnswer(429, "Too Many Requests", "slow down"), "http 429 slow down"},
        {LoopbackHttpServer::httpAnswer(500, "Internal Server Error", "oops"), "http 500 oops"},
        {LoopbackHttpServer::httpAnswer(503, "Service Unavailable", ""), "http 503 "},
        // No length: the body runs until the server closes.
        {"HTTP/1.0 200 OK\r\n\r\nuntil close", "http 200 until close"},
    };
    for (const Case& c : cases) {
        LoopbackHttpServer server;
        server.answerWith(c.answer);
        QtHttpClient client;
        Completions completions;
        client.get(balanceRequest(server.url("/user/balance")), completions.recorder());
        ASSERT_TRUE(completions.waitForOne()) << c.expected;
        EXPECT_EQ(describe(completions.results.front()), c.expected);
    }
}

TEST(QtHttpClientTest, FailedExchangesAreTransportErrors) {
    struct Case {
        std::function<void(LoopbackHttpServer&)> script;
        std::string expected;
    };
    const Case cases[] = {
        {[](LoopbackHttpServer& server) { server.drop(); }, "error Connection closed"},
        {[](LoopbackHttpServer& server) { server.answerWith("SSH-2.0-OpenSSH_9.2\r\n"); },
         "error Connection closed"},
        // Headers and a status came, but only part of the promised body.
        {[](LoopbackHttpServer& server) {
             server.answerWith("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n0123456789");
         },
         "error Connection closed"},
        {[](LoopbackHttpServer& server) {
             server.answerWith(LoopbackHttpServer::httpAnswer(302, "Found", "", {"Location: /user/balance"}));
         },
         "error Too many redirects"},
    };
    for (const Case& c : cases) {
        LoopbackHttpServer server;
        c.script(server);
        QtHttpClient client;
        Completions completions;
        client.get(balanceRequest(server.url("/user/balance")), completions.recorder());
        ASSERT_TRUE(completions.waitForOne()) << c.expected;
        EXPECT_EQ(describe(completions.results.front()), c.expected);
    }
}

TEST(QtHttpClientTest, AServerThatNeverAnswersTimesOutAndTheClientCarriesOn) {
    LoopbackHttpServer server;
    server.staySilent();
    QtHttpClient client;
    Completions silent;
    client.get(balanceRequest(server.url("/user/balance"), 300ms), silent.recorder());
    ASSERT_TRUE(silent.waitForOne());
    EXPECT_EQ(describe(silent.results.front()), "error The request timed out.");

    // An answer that comes within the time-out, if late, still arrives.
    server.answerWith(LoopbackHttpServer::httpAnswer(200, "OK", "prompt"), 100ms);
    Completions prompt;
    client.get(balanceRequest(server.url("/user/balance"), 10000ms), prompt.recorder());
    ASSERT_TRUE(prompt.waitForOne());
    EXPECT_EQ(describe(prompt.results.front()), "http 200 prompt");
    EXPECT_EQ(server.requestHeads().size(), 2);
}

TEST(QtHttpClientTest, BodiesOverTheLimitAreTransportErrors) {
    struct Case {
        QByteArray answer;
        std::string expected;
    };
    const QByteArray atLimit(1000, 'a');
    const QByteArray overLimit(1001, 'b');
    const Case cases[] = {
        {LoopbackHttpServer::httpAnswer(200, "OK", atLimit), "http 200 " + atLimit.toStdString()},
        // Refused on the declared length, before the body is read.
        {LoopbackHttpServer::httpAnswer(200, "OK", overLimit), "error The response was too large."},
        {LoopbackHttpServer::httpAnswer(401, "Unauthorized", overLimit), "error The response was too large."},
        // No declared length: refused once the bytes read pass the limit.
        {"HTTP/1.0 200 OK\r\n\r\n" + overLimit, "error The response was too large."},
        {"HTTP/1.0 200 OK\r\n\r\n" + atLimit, "http 200 " + atLimit.toStdString()},
    };
    for (const Case& c : cases) {
        LoopbackHttpServer server;
        server.answerWith(c.answer);
        QtHttpClient client(1000);
        Completions completions;
        client.get(balanceRequest(server.url("/user/balance")), completions.recorder());
        ASSERT_TRUE(completions.waitForOne());
        EXPECT_EQ(describe(completions.results.front()), c.expected);
        EXPECT_EQ(completions.results.size(), 1u);
    }
}

TEST(QtHttpClientTest, AddressesWithoutHttpAreNotHttpResponses) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("answer.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{\"from\":\"file\"}");
    file.close();

    const std::pair<std::string, std::string> cases[] = {
        {"data:text/plain,hello%20there", "not-http 0 hello there"},
        {"file://" + file.fileName().toStdString(), R"(not-http 0 {"from":"file"})"},
    };
    for (const auto& [url, expected] : cases) {
        QtHttpClient client;
        Completions completions;
        client.get(balanceRequest(url), completions.recorder());
        ASSERT_TRUE(completions.waitForOne());
        EXPECT_EQ(describe(completions.results.front()), expected);
    }
}

TEST(QtHttpClientTest, CompletesExactlyOnceAndNeverInsideGet) {
    LoopbackHttpServer server;
    server.answerWith(LoopbackHttpServer::httpAnswer(200, "OK", "ok"));
    const std::pair<HttpRequest, std::string> cases[] = {
        {balanceRequest(server.url("/user/balance")), "http 200 ok"},
        {balanceRequest("http://127.0.0.1:" + std::to_string(closedPort()) + "/"),
         "error Connection refused"},
        {balanceRequest("ftp://127.0.0.1/user/balance"), "error Protocol \"ftp\" is unknown"},
        {balanceRequest(""), "error Protocol \"\" is unknown"},
        // Finished before get() returns.
        {balanceRequest("data:,inline"), "not-http 0 inline"},
    };
    for (const auto& [request, expected] : cases) {
        QtHttpClient client;
        Completions completions;
        client.get(request, completions.recorder());
        EXPECT_TRUE(completions.results.empty()) << expected;
        ASSERT_TRUE(completions.waitForOne()) << expected;
        drainPostedEvents();
        ASSERT_EQ(completions.results.size(), 1u) << expected;
        EXPECT_EQ(describe(completions.results.front()), expected);
    }
}

TEST(QtHttpClientTest, ACompletionMayStartTheNextRequest) {
    LoopbackHttpServer server;
    server.answerWith(LoopbackHttpServer::httpAnswer(200, "OK", "again"));
    QtHttpClient client;
    std::vector<std::string> seen;
    client.get(balanceRequest(server.url("/first")), [&](HttpResult first) {
        seen.push_back(describe(first));
        client.get(balanceRequest(server.url("/second")),
                   [&](HttpResult second) { seen.push_back(describe(second)); });
    });
    ASSERT_TRUE(waitUntil([&] { return seen.size() == 2; }));
    EXPECT_EQ(seen, (std::vector<std::string>{"http 200 again", "http 200 again"}));
    ASSERT_EQ(server.requestHeads().size(), 2);
    EXPECT_TRUE(server.requestHeads()[1].startsWith("GET /second HTTP/1.1\r\n"));
}

TEST(QtHttpClientTest, HeadersThatWouldSplitTheRequestAreNeverSent) {
    LoopbackHttpServer server;
    server.answerWith(LoopbackHttpServer::httpAnswer(200, "OK", "ok"));
    const std::pair<std::string, std::string> headers[] = {
        {"Authorization", "Bearer sk-a\r\nX-Injected: yes"},
        {"Authorization", "Bearer sk-a\nX-Injected: yes"},
        {"Authorization", std::string("Bearer sk-a\0b", 13)},
        {"X-Bad Name", "v"},
        {"X-Bad:Name", "v"},
        {"", "v"},
    };
    for (const auto& header : headers) {
        QtHttpClient client;
        Completions completions;
        HttpRequest request = balanceRequest(server.url("/user/balance"));
        request.headers.push_back(header);
        client.get(request, completions.recorder());
        EXPECT_TRUE(completions.results.empty());
        ASSERT_TRUE(completions.waitForOne());
        EXPECT_EQ(describe(completions.results.front()), "error The request has an invalid header.");
    }
    drainPostedEvents();
    EXPECT_TRUE(server.requestHeads().empty());
}

TEST(QtHttpClientTest, ADescriptionNeverRepeatsTheAuthorizationValue) {
    std::string refused = "http://127.0.0.1:" + std::to_string(closedPort()) + "/user/balance";
    const std::pair<std::string, std::string> cases[] = {
        {"Bearer sk-real-key", "error Connection refused"},
        // Qt's text would hold the credential: the generic text replaces it.
        {"Bearer refused", "error The request failed."},
        {"Connection refused", "error The request failed."},
    };
    for (const auto& [authorization, expected] : cases) {
        QtHttpClient client;
        Completions completions;
        HttpRequest request;
        request.url = refused;
        request.headers = {{"authorization", authorization}};
        client.get(request, completions.recorder());
        ASSERT_TRUE(completions.waitForOne());
        EXPECT_EQ(describe(completions.results.front()), expected);
    }
}

} // namespace
} // namespace quorvane
