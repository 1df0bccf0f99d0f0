// The balance endpoint's request, and how its answer becomes a response or an error text.
#pragma once

#include "balance/BalanceResponse.h"
#include "platform/HttpClient.h"
#include "platform/TextSegmenter.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

struct RefreshOutcome {
    std::optional<BalanceResponse> response;
    // The one-line text shown when the refresh failed; empty on success.
    std::string error;
};

class BalanceRequest {
public:
    static constexpr std::string_view kDefaultApiBaseUrl = "https://api.deepseek.com";
    static constexpr std::string_view kPath = "/user/balance";
    static constexpr int kTimeoutSeconds = 20;
    static constexpr std::size_t kErrorExcerptLength = 80;
    // Far above any balance answer; a body this long is not one.
    static constexpr std::size_t kMaxBodyBytes = std::size_t{4} * 1024 * 1024;

    // A new request for every refresh; the key goes out exactly as stored.
    static HttpRequest make(std::string_view apiBaseUrl, const std::string& key);

    static constexpr std::string_view kTooLargeText = "The response was too large.";
    static constexpr std::string_view kHiddenKey = "[key]";

    // The status is tested before anything is decoded, so the body of a
    // failing status is never read as JSON. A body the client cut short
    // still gives a failing status its excerpt, and fails a successful one
    // as a body that cannot decode. `key` is hidden from the platform's
    // error texts.
    static RefreshOutcome interpret(const HttpResult& result, const std::string& key,
                                    const TextSegmenter& segmenter);

    // The text with every appearance of the key, or of its Authorization
    // value, replaced by kHiddenKey. A key shorter than eight characters is
    // hidden only where it stands as a word of its own: "a" is no key to see
    // inside "api.deepseek.com".
    static std::string hideKey(std::string text, const std::string& key);
};

} // namespace quorvane
