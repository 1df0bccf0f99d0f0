// One HTTP GET with headers and a time-out, answered later on the main loop.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quorvane {

struct HttpRequest {
    std::string method = "GET";
    std::string url;
    std::vector<std::pair<std::string, std::string>> headers;
    std::chrono::milliseconds timeout{20000};
    // The most of the body the client reads; the rest is left unread and the
    // answer is marked truncated. The caller decides it, so every client
    // holds the same limit.
    std::size_t maxBodyBytes = std::size_t{4} * 1024 * 1024;
};

// What came back over the connection. `isHttp` is false when the answer was not
// an HTTP response at all; status and body are then meaningless.
struct HttpResponse {
    bool isHttp = true;
    int status = 0;
    std::string body;
    // The body went on past what the client reads: `body` holds its start,
    // which may end inside a character.
    bool truncated = false;
};

// The connection failed: no route, refused, reset, TLS, or the time-out.
struct HttpTransportError {
    std::string description;
};

using HttpResult = std::variant<HttpResponse, HttpTransportError>;

class HttpClient {
public:
    virtual ~HttpClient() = default;

    // Starts the request and returns at once. The completion runs exactly once,
    // later, on the main loop: never from inside get().
    virtual void get(const HttpRequest& request, std::function<void(HttpResult)> completion) = 0;
};

} // namespace quorvane
