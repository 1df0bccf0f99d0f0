// The HTTP client on QNetworkAccessManager: one GET at a time per call, answered on the main loop.
#pragma once

#include "platform/HttpClient.h"

#include <QNetworkAccessManager>
#include <QObject>

#include <cstddef>
#include <functional>

namespace quorvane {

// An answer with an HTTP status is an HttpResponse whatever the status: a 401
// or a 503 arrives with its body, for the program to judge. An answer over
// another scheme (a data: or file: address) is an HttpResponse with isHttp
// false. A body longer than the request's size limit is read up to the limit
// (a successful status declared that long is not read at all) and arrives cut
// short, marked truncated. Only a failed exchange is an
// HttpTransportError: no connection, a reset or a body that ends before its
// declared length, TLS, too many redirects, or the time-out ("The request
// timed out."). A header whose name or value holds a line break or a NUL (or
// whose name is empty or holds a colon or a blank) is never sent: the
// request fails with "The request has an invalid header.". Descriptions are
// Qt's own; the caller, who knows the key, hides it from them.
//
// The time-out bounds the wait for each next byte, as a URL session's does;
// it is at least 1 ms, so no request waits forever. Cookies, caching and
// redirects are QNetworkAccessManager's defaults.
//
// Must be made and used on the thread that runs the main event loop. A request
// still running when the client is destroyed never completes; the client must
// not be destroyed from inside a completion.
class QtHttpClient : public HttpClient {
public:
    QtHttpClient() = default;
    ~QtHttpClient() override;

    void get(const HttpRequest& request, std::function<void(HttpResult)> completion) override;

private:
    QNetworkAccessManager m_manager;
    // The context of every connection to a reply; destroyed before the
    // manager, so that tearing the replies down calls no completion.
    QObject m_receiver;
};

} // namespace quorvane
