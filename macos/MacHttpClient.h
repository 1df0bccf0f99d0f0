// The HTTP client on the shared URL session: one task per request, answered on the main queue.
#pragma once

#include "platform/HttpClient.h"

#include <functional>

namespace quorvane {

// An answer with an HTTP status is an HttpResponse whatever the status: a 401
// or a 503 arrives with its body for the program to judge. An answer of
// another kind (a file: or data: address) is an HttpResponse with isHttp
// false. A failed exchange is an HttpTransportError carrying the system's
// localized description ("The request timed out."), which names the failure,
// never a header of the request.
//
// The time-out is the request's timeoutInterval: the longest wait for the
// next bytes, as URL sessions measure it. Cookies, caching and redirects are
// the shared session's. The completion always runs later, on the main queue.
class MacHttpClient : public HttpClient {
public:
    void get(const HttpRequest& request, std::function<void(HttpResult)> completion) override;
};

} // namespace quorvane
