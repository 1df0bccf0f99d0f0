// Thousands of refreshes of the real delegate over the real Qt client, against
// a server that answers at random, with the delegate's invariants checked after each.
#include "../EventLoopWait.h"
#include "../LoopbackHttpServer.h"
#include "SoakAnswerGenerator.h"
#include "SoakRig.h"
#include "app/AppDelegate.h"
#include "fakes/BalanceBody.h"
#include "menu/MenuTextRenderer.h"
#include "menu/StatusTitle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <map>
#include <string>

namespace quorvane {
namespace {

constexpr std::uint32_t kSeed = 20240611;
constexpr int kRefreshes = 3000;
// A guard against a hang, far above any answer's delay; never a measurement.
constexpr std::chrono::seconds kAnswerLimit{30};

bool holdsKey(const std::string& text) {
    return text.find(SoakRig::kKey) != std::string::npos;
}

void startAnswer(LoopbackHttpServer& server, const SoakAnswer& answer) {
    if (answer.drop) {
        server.drop();
    } else {
        server.answerWith(answer.raw, answer.delay);
    }
}

// The state once a refresh's answer is in, against what the answer must have made of it.
void expectSettled(const AppDelegate& delegate, const SoakRig& rig, const SoakAnswer& answer) {
    EXPECT_FALSE(delegate.isRefreshing());
    EXPECT_FALSE(delegate.lastResponse() && delegate.lastError());
    if (answer.expectSuccess) {
        ASSERT_TRUE(delegate.lastResponse().has_value()) << *delegate.lastError();
        const BalanceResponse& response = *delegate.lastResponse();
        EXPECT_EQ(response.isAvailable, answer.isAvailable);
        ASSERT_EQ(response.balanceInfos.size(), answer.totals.size());
        for (std::size_t i = 0; i < answer.totals.size(); ++i) {
            EXPECT_EQ(response.balanceInfos[i].currency, answer.totals[i].first);
            EXPECT_EQ(response.balanceInfos[i].totalBalance, answer.totals[i].second);
        }
        // The first USD entry, else the first, to whole cents, after either mark.
        const auto usd = std::find_if(answer.totals.begin(), answer.totals.end(),
                                      [](const auto& total) { return total.first == "USD"; });
        const auto& [code, total] = usd != answer.totals.end() ? *usd : answer.totals.front();
        const std::string amount = rig.formatter.currency(Decimal::parse(total).value(), code, 2).value();
        const std::string& title = rig.statusItem.title();
        EXPECT_TRUE(title == delegate.appMark() + " " + amount ||
                    title == std::string(StatusTitle::kLowMark) + " " + amount)
            << title;
        ASSERT_TRUE(delegate.lastUpdatedAt().has_value());
        EXPECT_EQ(delegate.lastUpdatedAt()->unixSeconds(), rig.clock.now().unixSeconds());
    } else {
        ASSERT_TRUE(delegate.lastError().has_value());
        const std::string& error = *delegate.lastError();
        if (answer.exactError) {
            EXPECT_EQ(error, answer.error);
        } else {
            EXPECT_EQ(error.rfind(answer.error, 0), 0U) << error;
            EXPECT_FALSE(error.empty());
        }
        EXPECT_EQ(error.find_first_of("\r\n"), std::string::npos) << error;
        EXPECT_FALSE(holdsKey(error));
        EXPECT_EQ(rig.statusItem.title(),
                  StatusTitle::of(StatusTitle::State::Failed, delegate.appMark()).full());
    }

    const std::vector<BalancePoint> history = delegate.allHistory();
    EXPECT_LE(history.size(), BalanceHistory::kMaxSamples);
    for (std::size_t i = 1; i < history.size(); ++i) {
        EXPECT_LE(history[i - 1].timestamp.unixSeconds(), history[i].timestamp.unixSeconds()) << i;
    }

    EXPECT_FALSE(holdsKey(rig.statusItem.title()));
    EXPECT_FALSE(holdsKey(MenuTextRenderer::render(delegate.menu())));
    EXPECT_FALSE(holdsKey(rig.statusItem.menuText()));
    EXPECT_FALSE(holdsKey(delegate.balanceSummary()));
}

TEST(RefreshSoak, ThousandsOfRandomAnswersKeepTheStateConsistent) {
    LoopbackHttpServer server;
    SoakRig rig;
    AppDelegate delegate(rig.platform(), server.url(""));
    SoakAnswerGenerator generator(kSeed);
    std::map<SoakAnswer::Kind, int> seen;
    qsizetype requests = 0;

    for (int i = 0; i < kRefreshes; ++i) {
        const SoakAnswer answer = generator.next();
        SCOPED_TRACE("refresh " + std::to_string(i) + " (seed " + std::to_string(kSeed) +
                     "): " + soakKindName(answer.kind));
        ++seen[answer.kind];
        startAnswer(server, answer);
        const std::size_t titlesBefore = rig.statusItem.titles().size();

        // Every road into a refresh: the launch, the timer, the menu command, the direct call.
        if (i == 0) {
            delegate.applicationDidFinishLaunching();
            ASSERT_TRUE(delegate.autoRefreshEnabled());
            ASSERT_EQ(rig.timers.activeCount(), 1U);
        } else if (i % 3 == 0) {
            rig.timers.fireActive();
        } else if (i % 3 == 1) {
            delegate.perform(MenuCommand::Refresh);
        } else {
            delegate.refreshClicked();
        }
        const std::string inFlight =
            StatusTitle::of(StatusTitle::State::Refreshing, delegate.appMark()).full();
        ASSERT_TRUE(delegate.isRefreshing());
        EXPECT_EQ(rig.statusItem.title(), inFlight);
        // A second request while one is in flight is dropped: no title, no request.
        delegate.refreshClicked();
        const std::size_t titlesInFlight = rig.statusItem.titles().size();
        EXPECT_EQ(rig.statusItem.title(), inFlight);

        ASSERT_TRUE(waitUntil([&] { return !delegate.isRefreshing(); }, kAnswerLimit));
        expectSettled(delegate, rig, answer);
        // One title for the start, one for the end.
        EXPECT_EQ(rig.statusItem.titles().size(), titlesInFlight + 1);
        EXPECT_EQ(titlesInFlight, titlesBefore + (i == 0 ? 2U : 1U));
        // Qt may send an idempotent GET once more when the connection closes
        // before the whole answer is in: with no answer at all, or with a head
        // and only part of its body (seen once in 3000 under the sanitizers).
        // That retry is Qt's; the refresh is still one, as the titles show.
        const qsizetype sent = server.requestHeads().size() - requests;
        requests = server.requestHeads().size();
        if (answer.drop || answer.kind == SoakAnswer::Kind::TruncatedTransfer) {
            EXPECT_GE(sent, 1);
            EXPECT_LE(sent, 2);
        } else {
            EXPECT_EQ(sent, 1);
        }
        if (::testing::Test::HasFailure()) {
            break;
        }
        // Readings spread over days, so the day baselines and the history's bounds take part.
        rig.clock.advance(47.0 + (i % 11));
    }

    EXPECT_TRUE(server.requestHeads().constFirst().contains("Bearer sk-soak-SECRET"));
    EXPECT_EQ(delegate.allHistory().size(), BalanceHistory::kMaxSamples);
    // The seed must reach every kind of answer, or the soak proves less than it says.
    EXPECT_EQ(seen.size(), 12U);
    for (const auto& [kind, count] : seen) {
        EXPECT_GT(count, 0) << soakKindName(kind);
    }
    for (const std::string& toolTip : rig.statusItem.toolTips()) {
        EXPECT_FALSE(holdsKey(toolTip));
    }
}

TEST(RefreshSoak, AnAnswerSlowerThanTheTimeOutEndsInTheFailurePath) {
    LoopbackHttpServer server;
    SoakRig rig;
    AppDelegate delegate(rig.platform(), server.url(""));
    // Later than the request's 20 seconds; the client gives up first.
    server.answerWith(
        LoopbackHttpServer::httpAnswer(200, "OK", QByteArray::fromStdString(balanceBody({{"USD", "5.00"}}))),
        std::chrono::seconds(26));

    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(delegate.isRefreshing());
    ASSERT_TRUE(waitUntil([&] { return !delegate.isRefreshing(); }, std::chrono::seconds(60)));

    EXPECT_FALSE(delegate.lastResponse().has_value());
    ASSERT_TRUE(delegate.lastError().has_value());
    EXPECT_EQ(*delegate.lastError(), "The request timed out.");
    EXPECT_EQ(rig.statusItem.title(), StatusTitle::of(StatusTitle::State::Failed, delegate.appMark()).full());
    EXPECT_TRUE(delegate.allHistory().empty());
    EXPECT_EQ(server.requestHeads().size(), 1);
}

} // namespace
} // namespace quorvane
