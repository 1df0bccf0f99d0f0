#include "balance/BalanceRequest.h"

#include "platform/Utf8.h"

namespace quorvane {

HttpRequest BalanceRequest::make(std::string_view apiBaseUrl, const std::string& key) {
    std::string_view base = apiBaseUrl;
    while (!base.empty() && base.back() == '/') {
        base.remove_suffix(1);
    }
    HttpRequest request;
    request.method = "GET";
    request.url = std::string(base) + std::string(kPath);
    request.headers = {{"Accept", "application/json"}, {"Authorization", "Bearer " + key}};
    request.timeout = std::chrono::seconds(kTimeoutSeconds);
    return request;
}

RefreshOutcome BalanceRequest::interpret(const HttpResult& result, const TextSegmenter& segmenter) {
    if (const auto* failure = std::get_if<HttpTransportError>(&result)) {
        return {std::nullopt, failure->description};
    }
    const auto& answer = std::get<HttpResponse>(result);
    if (!answer.isHttp) {
        return {std::nullopt, "Invalid response"};
    }
    if (answer.status < 200 || answer.status > 299) {
        std::string excerpt;
        if (isValidUtf8(answer.body)) {
            excerpt = answer.body.substr(0, segmenter.prefixLength(answer.body, kErrorExcerptLength));
        }
        return {std::nullopt, "HTTP " + std::to_string(answer.status) + " " + excerpt};
    }
    BalanceDecoding decoded = BalanceResponse::decode(answer.body);
    if (!decoded.response) {
        return {std::nullopt, std::move(decoded.error)};
    }
    return {std::move(decoded.response), {}};
}

} // namespace quorvane
