#include "MacHttpClient.h"

#import "NSString+QVStdString.h"

#import <Foundation/Foundation.h>
#include <chrono>
#include <string>
#include <utility>

namespace quorvane {

namespace {

std::string bodyOf(NSData* data) {
    if (data.length == 0) {
        return {};
    }
    return std::string(static_cast<const char*>(data.bytes), data.length);
}

HttpResult resultOf(NSData* data, NSURLResponse* response, NSError* error) {
    if (error != nil) {
        return HttpTransportError{[error.localizedDescription qv_stdString]};
    }
    id answer = response;
    if ([answer isKindOfClass:[NSHTTPURLResponse class]]) {
        NSHTTPURLResponse* http = answer;
        return HttpResponse{true, static_cast<int>(http.statusCode), bodyOf(data)};
    }
    return HttpResponse{false, 0, bodyOf(data)};
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
        deliverOnMainQueue(std::move(completion), resultOf(nil, nil, badUrl));
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
    NSURLSessionDataTask* task = [[NSURLSession sharedSession]
        dataTaskWithRequest:urlRequest
          completionHandler:^(NSData* data, NSURLResponse* response, NSError* error) {
              deliverOnMainQueue(completion, resultOf(data, response, error));
          }];
    [task resume];
}

} // namespace quorvane
