#include "SoakAnswerGenerator.h"

#include "../LoopbackHttpServer.h"
#include "balance/BalanceRequest.h"
#include "fakes/BalanceBody.h"

#include <array>
#include <string_view>

namespace quorvane {

namespace {

QByteArray bytes(const std::string& text) {
    return QByteArray(text.data(), static_cast<qsizetype>(text.size()));
}

QByteArray ok(const QByteArray& body) {
    return LoopbackHttpServer::httpAnswer(200, "OK", body, {"Content-Type: application/json"});
}

// A valid body that decodes to USD 7.00, used where only the size matters.
const std::string kSmallValid = balanceBody({{"USD", "7.00"}});

} // namespace

SoakAnswerGenerator::SoakAnswerGenerator(std::uint32_t seed)
    : m_engine(seed) {}

std::uint32_t SoakAnswerGenerator::below(std::uint32_t bound) {
    return static_cast<std::uint32_t>(m_engine() % bound);
}

std::string SoakAnswerGenerator::amount() {
    // From 0 to 99999, with zero to four fraction digits: low and healthy
    // balances of both currencies, and texts of every length the title trims.
    std::string text = std::to_string(below(100000) >> below(17));
    const std::uint32_t fractionDigits = below(5);
    if (fractionDigits > 0) {
        text += '.';
        for (std::uint32_t i = 0; i < fractionDigits; ++i) {
            text += static_cast<char>('0' + below(10));
        }
    }
    return text;
}

QByteArray SoakAnswerGenerator::randomBytes(std::size_t length, bool allowLineBreaks) {
    QByteArray out;
    out.reserve(static_cast<qsizetype>(length));
    while (static_cast<std::size_t>(out.size()) < length) {
        char c = static_cast<char>(below(256));
        if (!allowLineBreaks && (c == '\n' || c == '\r')) {
            continue;
        }
        out += c;
    }
    return out;
}

QByteArray SoakAnswerGenerator::paddedBody(std::size_t bodySize) const {
    // White space inside the object keeps the body valid JSON whatever its size.
    QByteArray body = bytes(kSmallValid);
    body.insert(1, QByteArray(static_cast<qsizetype>(bodySize - kSmallValid.size()), ' '));
    return body;
}

SoakAnswer SoakAnswerGenerator::valid(std::size_t currencies) {
    SoakAnswer answer;
    answer.kind = currencies == 1 ? SoakAnswer::Kind::ValidOne : SoakAnswer::Kind::ValidTwo;
    answer.expectSuccess = true;
    answer.isAvailable = below(8) != 0;
    if (currencies == 1) {
        answer.totals = {{below(2) == 0 ? "USD" : "CNY", amount()}};
    } else if (below(2) == 0) {
        answer.totals = {{"CNY", amount()}, {"USD", amount()}};
    } else {
        answer.totals = {{"USD", amount()}, {"CNY", amount()}};
    }
    answer.raw = ok(bytes(balanceBody(answer.totals, answer.isAvailable)));
    return answer;
}

SoakAnswer SoakAnswerGenerator::garbage() {
    SoakAnswer answer;
    answer.kind = SoakAnswer::Kind::Garbage;
    // The leading '<' keeps random bytes from being valid JSON by chance.
    answer.raw = ok("<" + randomBytes(1 + below(2000), true));
    answer.error = "Balance response is not valid JSON: ";
    return answer;
}

SoakAnswer SoakAnswerGenerator::truncatedJson() {
    SoakAnswer answer;
    answer.kind = SoakAnswer::Kind::TruncatedJson;
    const std::string body = balanceBody({{"USD", amount()}, {"CNY", amount()}});
    // Any proper prefix of an object is unfinished JSON.
    answer.raw = ok(bytes(body.substr(0, below(static_cast<std::uint32_t>(body.size())))));
    answer.error = "Balance response is not valid JSON: ";
    return answer;
}

SoakAnswer SoakAnswerGenerator::truncatedTransfer() {
    SoakAnswer answer;
    answer.kind = SoakAnswer::Kind::TruncatedTransfer;
    const QByteArray body = bytes(kSmallValid);
    const qsizetype sent = below(static_cast<std::uint32_t>(body.size()));
    // The head promises the whole body; the connection closes after part of it.
    answer.raw = "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) +
                 "\r\nConnection: close\r\n\r\n" + body.left(sent);
    return answer;
}

SoakAnswer SoakAnswerGenerator::huge(bool over) {
    SoakAnswer answer;
    const std::size_t limit = BalanceRequest::kMaxBodyBytes;
    if (over) {
        answer.kind = SoakAnswer::Kind::HugeOver;
        answer.raw = ok(paddedBody(limit + 1 + below(4096)));
        answer.error = "The response was too large.";
        answer.exactError = true;
    } else {
        answer.kind = SoakAnswer::Kind::HugeUnder;
        answer.raw = ok(paddedBody(limit - 1 - below(4096)));
        answer.expectSuccess = true;
        answer.totals = {{"USD", "7.00"}};
    }
    return answer;
}

SoakAnswer SoakAnswerGenerator::wrongType() {
    struct Case {
        std::string_view body;
        std::string_view error;
    };
    static constexpr std::array<Case, 6> kCases{{
        {R"({"is_available":true,"balance_infos":[{"currency":"USD","total_balance":12.5,)"
         R"("granted_balance":"0","topped_up_balance":"0"}]})",
         R"(Balance response: "balance_infos[0].total_balance" is a number, expected a string)"},
        {R"({"is_available":true,"balance_infos":{}})",
         R"(Balance response: "balance_infos" is an object, expected an array)"},
        {R"({"is_available":"true","balance_infos":[]})",
         R"(Balance response: "is_available" is a string, expected a boolean)"},
        {R"([{"is_available":true,"balance_infos":[]}])", "Balance response is an array, expected an object"},
        {R"({"is_available":true,"balance_infos":[{"currency":null,"total_balance":"1",)"
         R"("granted_balance":"0","topped_up_balance":"1"}]})",
         R"(Balance response: "balance_infos[0].currency" is null, expected a string)"},
        {R"({"is_available":true,"balance_infos":["USD"]})",
         R"(Balance response: "balance_infos[0]" is a string, expected an object)"},
    }};
    const Case& chosen = kCases[below(kCases.size())];
    SoakAnswer answer;
    answer.kind = SoakAnswer::Kind::WrongType;
    answer.raw = ok(QByteArray(chosen.body.data(), static_cast<qsizetype>(chosen.body.size())));
    answer.error = std::string(chosen.error);
    answer.exactError = true;
    return answer;
}

SoakAnswer SoakAnswerGenerator::httpErrorLong() {
    static constexpr std::array<int, 7> kStatuses{400, 401, 402, 403, 429, 500, 503};
    const int status = kStatuses[below(kStatuses.size())];
    // Printable ASCII and a two-byte letter, without line breaks: every byte
    // past the 80th character must stay out of the error.
    std::string body;
    const std::size_t length = 81 + below(20000);
    while (body.size() < length) {
        if (below(10) == 0) {
            body += "\xC3\xA9"; // é
        } else {
            body += static_cast<char>(' ' + below(95));
        }
    }
    std::string excerpt;
    std::size_t characters = 0;
    for (std::size_t i = 0; i < body.size() && characters < 80; ++characters) {
        const std::size_t width = static_cast<unsigned char>(body[i]) == 0xC3 ? 2 : 1;
        excerpt += body.substr(i, width);
        i += width;
    }
    SoakAnswer answer;
    answer.kind = SoakAnswer::Kind::HttpErrorLong;
    answer.raw = LoopbackHttpServer::httpAnswer(status, "Error", bytes(body));
    answer.error = "HTTP " + std::to_string(status) + " " + excerpt;
    answer.exactError = true;
    return answer;
}

SoakAnswer SoakAnswerGenerator::httpErrorNonUtf8() {
    const int status = below(2) == 0 ? 500 : 502;
    // A lone continuation byte makes the whole body invalid UTF-8.
    QByteArray body = "Bad gateway \x80" + randomBytes(below(3000), true);
    SoakAnswer answer;
    answer.kind = SoakAnswer::Kind::HttpErrorNonUtf8;
    answer.raw = LoopbackHttpServer::httpAnswer(status, "Error", body);
    answer.error = "HTTP " + std::to_string(status) + " ";
    answer.exactError = true;
    return answer;
}

SoakAnswer SoakAnswerGenerator::next() {
    // Per mille; the huge and slow answers are rare because each costs time.
    const std::uint32_t roll = below(1000);
    if (roll < 300) {
        return valid(1);
    }
    if (roll < 500) {
        return valid(2);
    }
    if (roll < 580) {
        return garbage();
    }
    if (roll < 650) {
        return truncatedJson();
    }
    if (roll < 700) {
        return truncatedTransfer();
    }
    if (roll < 706) {
        return huge(true);
    }
    if (roll < 712) {
        return huge(false);
    }
    if (roll < 792) {
        return wrongType();
    }
    if (roll < 872) {
        return httpErrorLong();
    }
    if (roll < 922) {
        return httpErrorNonUtf8();
    }
    if (roll < 942) {
        SoakAnswer answer = valid(1 + below(2));
        answer.kind = SoakAnswer::Kind::Slow;
        answer.delay = std::chrono::milliseconds(200 + below(200));
        return answer;
    }
    SoakAnswer answer;
    answer.kind = SoakAnswer::Kind::Dropped;
    answer.drop = true;
    return answer;
}

} // namespace quorvane
