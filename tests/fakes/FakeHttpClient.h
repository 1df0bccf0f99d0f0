// An HTTP client whose answers the test delivers, one pending request at a time.
#pragma once

#include "platform/HttpClient.h"

#include <deque>
#include <stdexcept>
#include <utility>
#include <vector>

namespace quorvane {

class FakeHttpClient : public HttpClient {
public:
    void get(const HttpRequest& request, std::function<void(HttpResult)> completion) override {
        m_requests.push_back(request);
        m_pending.push_back(std::move(completion));
    }

    const std::vector<HttpRequest>& requests() const { return m_requests; }

    // Delivers the answer to the oldest request still waiting, as the main loop would.
    void respond(HttpResult result) {
        if (m_pending.empty()) {
            throw std::logic_error("no request is waiting for an answer");
        }
        auto completion = std::move(m_pending.front());
        m_pending.pop_front();
        completion(std::move(result));
    }
    void respond(int status, std::string body) { respond(HttpResponse{true, status, std::move(body)}); }

private:
    std::vector<HttpRequest> m_requests;
    std::deque<std::function<void(HttpResult)>> m_pending;
};

} // namespace quorvane
