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

    // A new request for every refresh; the key goes out exactly as stored.
    static HttpRequest make(std::string_view apiBaseUrl, const std::string& key);

    // The status is tested before anything is decoded, so the body of a
    // failing status is never read as JSON.
    static RefreshOutcome interpret(const HttpResult& result, const TextSegmenter& segmenter);
};

} // namespace quorvane
