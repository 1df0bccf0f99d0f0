#include "balance/BalanceRequest.h"

#include "values/Utf8.h"

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
    request.maxBodyBytes = kMaxBodyBytes;
    return request;
}

namespace {

// Below this length a key is hidden only as a word of its own.
constexpr std::size_t kShortKeyLength = 8;

bool isWordCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '_';
}

void hide(std::string& text, const std::string& secret) {
    if (secret.empty()) {
        return;
    }
    const bool wordsOnly = secret.size() < kShortKeyLength;
    std::size_t at = text.find(secret);
    while (at != std::string::npos) {
        const std::size_t end = at + secret.size();
        const bool word = (at == 0 || !isWordCharacter(text[at - 1])) &&
                          (end == text.size() || !isWordCharacter(text[end]));
        if (!wordsOnly || word) {
            text.replace(at, secret.size(), BalanceRequest::kHiddenKey);
            at = text.find(secret, at + BalanceRequest::kHiddenKey.size());
        } else {
            at = text.find(secret, at + 1);
        }
    }
}

} // namespace

std::string BalanceRequest::hideKey(std::string text, const std::string& key) {
    hide(text, "Bearer " + key);
    hide(text, key);
    return text;
}

RefreshOutcome BalanceRequest::interpret(const HttpResult& result, const std::string& key,
                                         const TextSegmenter& segmenter) {
    if (const auto* failure = std::get_if<HttpTransportError>(&result)) {
        return {std::nullopt, hideKey(failure->description, key)};
    }
    const auto& answer = std::get<HttpResponse>(result);
    if (!answer.isHttp) {
        return {std::nullopt, "Invalid response"};
    }
    if (answer.status < 200 || answer.status > 299) {
        const std::string_view body =
            answer.truncated ? withoutTruncatedTail(answer.body) : std::string_view(answer.body);
        std::string excerpt;
        if (isValidUtf8(body)) {
            excerpt = std::string(body.substr(0, segmenter.prefixLength(body, kErrorExcerptLength)));
        }
        return {std::nullopt, "HTTP " + std::to_string(answer.status) + " " + excerpt};
    }
    if (answer.truncated) {
        return {std::nullopt, std::string(kTooLargeText)};
    }
    BalanceDecoding decoded = BalanceResponse::decode(answer.body);
    if (!decoded.response) {
        return {std::nullopt, std::move(decoded.error)};
    }
    return {std::move(decoded.response), {}};
}

} // namespace quorvane
