// The real delegate over the real Qt client, against a loopback server that
// answers each refresh with one kind of good, broken, huge, slow or cut-off
// answer, with the delegate's invariants checked after each.
#include "../EventLoopWait.h"
#include "../LoopbackHttpServer.h"
#include "SoakRig.h"
#include "app/AppDelegate.h"
#include "balance/BalanceRequest.h"
#include "fakes/BalanceBody.h"
#include "menu/MenuTextRenderer.h"
#include "menu/StatusTitle.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace quorvane {
namespace {

using std::chrono::milliseconds;
// A guard against a hang, far above any answer's delay; never a measurement.
constexpr std::chrono::seconds kAnswerLimit{30};

bool holdsKey(const std::string& text) {
    return text.find(SoakRig::kKey) != std::string::npos;
}

QByteArray ok(const std::string& body) {
    return LoopbackHttpServer::httpAnswer(200, "OK", QByteArray::fromStdString(body),
                                          {"Content-Type: application/json"});
}

// A valid body of USD 7.00, padded with white space inside the object to `size` bytes.
QByteArray padded(std::size_t size) {
    std::string body = balanceBody({{"USD", "7.00"}});
    body.insert(1, size - body.size(), ' ');
    return ok(body);
}

struct Answer {
    const char* kind;
    QByteArray raw; // empty: the connection is closed without a word
    milliseconds delay;
    // After the app's mark, or the low mark when `low`; empty for a failure.
    std::string amount;
    bool low;
    std::string error; // exact
    // Qt sends an idempotent GET once more when the connection closes before
    // the whole answer is in: always with no answer at all, and now and then
    // after a head and part of its body. The refresh is still one, as the titles show.
    bool mayResend = false;
};

std::vector<Answer> answers() {
    const std::string cutBody = balanceBody({{"USD", "7.00"}});
    const std::string longBody = std::string(79, 'x') + "\xC3\xA9" + "tail that stays out";
    return {
        {"one currency", ok(balanceBody({{"USD", "12.5"}})), milliseconds(0), " $12.50", false, ""},
        {"two, the second preferred", ok(balanceBody({{"CNY", "99999.9"}, {"USD", "0.8"}}, false)),
         milliseconds(0), " $0.80", true, ""},
        {"not JSON", ok("<html>\x01\xFF"), milliseconds(0), "", false,
         "Balance response is not valid JSON: not valid UTF-8"},
        {"unfinished JSON", ok(R"({"is_available":true,"balance_infos":[{"curr)"), milliseconds(0), "", false,
         "Balance response is not valid JSON: unexpected end of input"},
        {"a body cut off in transfer",
         "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(cutBody.size()) +
             "\r\nConnection: close\r\n\r\n" + QByteArray::fromStdString(cutBody.substr(0, 20)),
         milliseconds(0), "", false, "Connection closed", true},
        {"one byte over the limit", padded(BalanceRequest::kMaxBodyBytes + 1), milliseconds(0), "", false,
         "The response was too large."},
        {"the largest body taken", padded(BalanceRequest::kMaxBodyBytes), milliseconds(0), " $7.00", false,
         ""},
        {"a number where a string belongs",
         ok(R"({"is_available":true,"balance_infos":[{"currency":"USD","total_balance":12.5,)"
            R"("granted_balance":"0","topped_up_balance":"0"}]})"),
         milliseconds(0), "", false,
         R"(Balance response: "balance_infos[0].total_balance" is a number, expected a string)"},
        {"an HTTP error with a long body",
         LoopbackHttpServer::httpAnswer(429, "Too Many Requests", QByteArray::fromStdString(longBody)),
         milliseconds(0), "", false, "HTTP 429 " + std::string(79, 'x') + "\xC3\xA9"},
        {"an HTTP error that is not UTF-8",
         LoopbackHttpServer::httpAnswer(502, "Bad Gateway", "Bad gateway \x80"), milliseconds(0), "", false,
         "HTTP 502 "},
        {"slow", ok(balanceBody({{"CNY", "5"}})), milliseconds(700),
         " CN\xC2\xA5"
         "5.00",
         true, ""},
        {"dropped", {}, milliseconds(0), "", false, "Connection closed", true},
    };
}

TEST(RefreshSoak, EveryKindOfAnswerLeavesTheStateConsistent) {
    LoopbackHttpServer server;
    SoakRig rig;
    AppDelegate delegate(rig.platform(), server.url(""));
    const std::string failed = StatusTitle::of(StatusTitle::State::Failed, delegate.appMark()).full();
    const std::string inFlight = StatusTitle::of(StatusTitle::State::Refreshing, delegate.appMark()).full();
    qsizetype requests = 0;
    std::size_t samples = 0;
    int road = 0;

    for (const Answer& answer : answers()) {
        SCOPED_TRACE(answer.kind);
        if (answer.raw.isEmpty()) {
            server.drop();
        } else {
            server.answerWith(answer.raw, answer.delay);
        }
        const std::size_t titlesBefore = rig.statusItem.titles().size();
        // Every road into a refresh: the launch, the timer, the menu command, the direct call.
        switch (road == 0 ? 0 : 1 + road % 3) {
        case 0:
            delegate.applicationDidFinishLaunching();
            break;
        case 1:
            rig.timers.fireActive();
            break;
        case 2:
            delegate.perform(MenuCommand::Refresh);
            break;
        default:
            delegate.refreshClicked();
        }
        ASSERT_TRUE(delegate.isRefreshing());
        // A second request while one is in flight is dropped: no title, no request.
        delegate.refreshClicked();
        const std::size_t titlesInFlight = rig.statusItem.titles().size();
        EXPECT_EQ(rig.statusItem.title(), inFlight);
        ASSERT_TRUE(waitUntil([&] { return !delegate.isRefreshing(); }, kAnswerLimit));

        // One title for the start (two at launch), one for the end.
        EXPECT_EQ(titlesInFlight, titlesBefore + (road++ == 0 ? 2U : 1U));
        EXPECT_EQ(rig.statusItem.titles().size(), titlesInFlight + 1);
        if (answer.amount.empty()) {
            ASSERT_TRUE(delegate.lastError().has_value());
            EXPECT_FALSE(delegate.lastResponse().has_value());
            EXPECT_EQ(*delegate.lastError(), answer.error);
            EXPECT_EQ(delegate.lastError()->find_first_of("\r\n"), std::string::npos);
            EXPECT_EQ(rig.statusItem.title(), failed);
        } else {
            ASSERT_TRUE(delegate.lastResponse().has_value()) << *delegate.lastError();
            EXPECT_FALSE(delegate.lastError().has_value());
            const std::string mark = answer.low ? std::string(StatusTitle::kLowMark) : delegate.appMark();
            EXPECT_EQ(rig.statusItem.title(), mark + answer.amount);
            EXPECT_EQ(delegate.lastUpdatedAt()->unixSeconds(), rig.clock.now().unixSeconds());
            samples += delegate.lastResponse()->balanceInfos.size();
        }
        EXPECT_EQ(delegate.allHistory().size(), samples);
        const qsizetype sent = server.requestHeads().size() - requests;
        requests = server.requestHeads().size();
        EXPECT_TRUE(sent == 1 || (answer.mayResend && sent == 2)) << sent;
        for (const std::string& text :
             {rig.statusItem.title(), rig.statusItem.menuText(), MenuTextRenderer::render(delegate.menu()),
              delegate.balanceSummary(), delegate.lastError().value_or("")}) {
            EXPECT_FALSE(holdsKey(text)) << text;
        }
        rig.clock.advance(3600.0);
    }
    EXPECT_TRUE(server.requestHeads().constFirst().contains("Bearer sk-soak-SECRET"));
}

TEST(RefreshSoak, AnAnswerSlowerThanTheTimeOutEndsInTheFailurePath) {
    LoopbackHttpServer server;
    SoakRig rig;
    AppDelegate delegate(rig.platform(), server.url(""));
    // Later than the request's 20 seconds; the client gives up first.
    server.answerWith(ok(balanceBody({{"USD", "5.00"}})), std::chrono::seconds(26));

    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(delegate.isRefreshing());
    ASSERT_TRUE(waitUntil([&] { return !delegate.isRefreshing(); }, std::chrono::seconds(60)));

    EXPECT_EQ(delegate.lastError().value_or(""), "The request timed out.");
    EXPECT_EQ(rig.statusItem.title(), StatusTitle::of(StatusTitle::State::Failed, delegate.appMark()).full());
    EXPECT_TRUE(delegate.allHistory().empty());
    EXPECT_EQ(server.requestHeads().size(), 1);
}

} // namespace
} // namespace quorvane
