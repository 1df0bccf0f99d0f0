#include "MacHttpClient.h"

#import "NSString+QVStdString.h"

#import <Foundation/Foundation.h>
#include <chrono>
#include <cstddef>
#include <string>
#include <utility>

namespace quorvane {

namespace {

// The session has read the whole body by the time the handler runs; the
// request's limit is applied here, so the program sees what the Linux
// client, which stops reading at the limit, gives it.
HttpResponse responseOf(bool isHttp, int status, NSData* data, std::size_t maxBodyBytes) {
    HttpResponse response{isHttp, status, {}, data.length > maxBodyBytes};
    const std::size_t length = response.truncated ? maxBodyBytes : data.length;
    if (length > 0) {
        response.body.assign(static_cast<const char*>(data.bytes), length);
    }
    return response;
}

HttpResult resultOf(NSData* data, NSURLResponse* response, NSError* error, std::size_t maxBodyBytes) {
    if (error != nil) {
        return HttpTransportError{[error.localizedDescription qv_stdString]};
    }
    id answer = response;
    if ([answer isKindOfClass:[NSHTTPURLResponse class]]) {
        NSHTTPURLResponse* http = answer;
        return responseOf(true, static_cast<int>(http.statusCode), data, maxBodyBytes);
    }
    return responseOf(false, 0, data, maxBodyBytes);
}

void deliverOnMainQueue(std::function<void(HttpResult)> completion, HttpResult result) {
    dispatch_async(dispatch_get_main_queue(), ^{
        completion(result);
    });
}

} // namespace

void MacHttpClient::get(const HttpRequest& request, std::function<void(HttpResult)> completion) {
    NSURL* url = [NSURL URLWithString:[NSString qv_stringWithStdString:request.url]];
    if (url == nil) {
        // The session would refuse such a request too; the answer still comes later, like any other.
        NSError* badUrl = [NSError errorWithDomain:NSURLErrorDomain code:NSURLErrorBadURL userInfo:nil];
        deliverOnMainQueue(std::move(completion), resultOf(nil, nil, badUrl, request.maxBodyBytes));
        return;
    }

    NSMutableURLRequest* urlRequest = [NSMutableURLRequest requestWithURL:url];
    urlRequest.HTTPMethod = [NSString qv_stringWithStdString:request.method];
    urlRequest.timeoutInterval = std::chrono::duration<double>(request.timeout).count();
    for (const auto& header : request.headers) {
        [urlRequest setValue:[NSString qv_stringWithStdString:header.second]
            forHTTPHeaderField:[NSString qv_stringWithStdString:header.first]];
    }

    // The handler runs on the session's own queue; the result is made there and
    // handed to the main queue, where the program's state lives.
    const std::size_t maxBodyBytes = request.maxBodyBytes;
    NSURLSessionDataTask* task = [[NSURLSession sharedSession]
        dataTaskWithRequest:urlRequest
          completionHandler:^(NSData* data, NSURLResponse* response, NSError* error) {
              deliverOnMainQueue(completion, resultOf(data, response, error, maxBodyBytes));
          }];
    [task resume];
}

} // namespace quorvane
