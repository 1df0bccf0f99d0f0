// The demo's account, its server and the stores it starts with: predictable from the seed, served over real
// HTTP.
#include "EventLoopWait.h"
#include "app/AppDelegate.h"
#include "demo/DemoAccount.h"
#include "demo/DemoEnvironment.h"
#include "demo/DemoServer.h"
#include "fakes/FakePlatform.h"
#include "keychain/KeychainStore.h"
#include "platform/Defaults.h"
#include "platform/QtHttpClient.h"
#include "tracking/BalanceHistory.h"
#include "tracking/HistoryCodec.h"

#include <QTcpSocket>
#include <gtest/gtest.h>

#include <ostream>

namespace quorvane {
namespace {

TEST(DemoAccountTest, TheFirstReadingIsTheStartingAccount) {
    const DemoAccount account(1);

    EXPECT_EQ(
        account.body(),
        R"({"is_available":true,"balance_infos":[)"
        R"({"currency":"USD","total_balance":"27.50","granted_balance":"5.00","topped_up_balance":"22.50"},)"
        R"({"currency":"CNY","total_balance":"168.00","granted_balance":"0.00","topped_up_balance":"168.00"}]})");
}

TEST(DemoAccountTest, TheSameSeedGivesTheSameReadingsAndAnotherSeedOthers) {
    DemoAccount first(7);
    DemoAccount second(7);
    DemoAccount other(8);
    bool differs = false;
    for (int i = 0; i < 100; ++i) {
        first.advance();
        second.advance();
        other.advance();
        ASSERT_EQ(first.body(), second.body()) << "reading " << i;
        differs = differs || first.body() != other.body();
    }
    EXPECT_TRUE(differs);
    EXPECT_EQ(first.readings(), 100);
}

// Each reading spends a little, the grant first; now and then a balance is
// topped up; a balance never falls below zero.
TEST(DemoAccountTest, BalancesFallALittleAndNowAndThenRise) {
    DemoAccount account(DemoEnvironment::kDefaultSeed);
    const std::int64_t topUps[] = {1000, 5000};
    const std::int64_t maxSpends[] = {40, 280};
    int rises[] = {0, 0};
    const int readings = 4000;
    for (int i = 0; i < readings; ++i) {
        const std::vector<DemoAccount::Balance> before = account.balances();
        account.advance();
        for (std::size_t c = 0; c < 2; ++c) {
            const DemoAccount::Balance& now = account.balances()[c];
            const std::int64_t change = now.totalCents() - before[c].totalCents();
            const bool toppedUp = change > 0;
            const std::int64_t spent = toppedUp ? topUps[c] - change : -change;
            EXPECT_GE(now.grantedCents, 0);
            EXPECT_GE(now.toppedUpCents, 0);
            EXPECT_GE(spent, before[c].totalCents() > 0 ? 1 : 0);
            EXPECT_LE(spent, maxSpends[c]);
            EXPECT_LE(now.grantedCents, before[c].grantedCents) << "a grant only shrinks";
            rises[c] += toppedUp ? 1 : 0;
        }
    }
    for (int count : rises) {
        EXPECT_GT(count, readings / 80);
        EXPECT_LT(count, readings / 20);
    }
}

struct AmountCase {
    std::int64_t cents;
    const char* text;
};

void PrintTo(const AmountCase& c, std::ostream* os) {
    *os << c.cents;
}

class DemoAmountTest : public ::testing::TestWithParam<AmountCase> {};

TEST_P(DemoAmountTest, AmountsHaveTwoDecimals) {
    EXPECT_EQ(DemoAccount::amountText(GetParam().cents), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Amounts, DemoAmountTest,
                         ::testing::Values(AmountCase{0, "0.00"}, AmountCase{7, "0.07"},
                                           AmountCase{1205, "12.05"}, AmountCase{-7, "-0.07"},
                                           AmountCase{100000, "1000.00"}));

class DemoServerTest : public ::testing::Test {
protected:
    DemoAccount account{42};
    DemoServer server{account, "sk-demo"};
    QtHttpClient client;

    void SetUp() override { ASSERT_TRUE(server.listen()); }

    HttpResponse get(const std::string& path, const std::string& key) {
        HttpRequest request;
        request.url = server.baseUrl() + path;
        request.headers = {{"Accept", "application/json"}, {"Authorization", "Bearer " + key}};
        std::optional<HttpResult> result;
        client.get(request, [&](HttpResult answer) { result = std::move(answer); });
        EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
        if (!result || !std::holds_alternative<HttpResponse>(*result)) {
            ADD_FAILURE() << "no HTTP answer";
            return {};
        }
        return std::get<HttpResponse>(*result);
    }

    // A request written by hand, for what the program's client never sends.
    QByteArray raw(const QByteArray& request) {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", static_cast<quint16>(std::stoi(server.baseUrl().substr(17))));
        socket.write(request);
        QByteArray answer;
        QObject::connect(&socket, &QTcpSocket::readyRead, [&] { answer += socket.readAll(); });
        EXPECT_TRUE(waitUntil([&] { return socket.state() == QAbstractSocket::UnconnectedState; }));
        return answer + socket.readAll();
    }
};

TEST_F(DemoServerTest, EachRequestTakesTheAccountsNextReading) {
    DemoAccount expected(42);

    const HttpResponse first = get("/user/balance", "sk-demo");
    expected.advance();
    EXPECT_EQ(first.status, 200);
    EXPECT_EQ(first.body, expected.body());

    const HttpResponse second = get("/user/balance?ignored=1", "sk-demo");
    expected.advance();
    EXPECT_EQ(second.body, expected.body());
    EXPECT_NE(second.body, first.body);
    EXPECT_EQ(account.readings(), 2);
}

TEST_F(DemoServerTest, AnotherKeyIsRefusedWithoutAReading) {
    const HttpResponse refused = get("/user/balance", "sk-real-key-of-someone");

    EXPECT_EQ(refused.status, 401);
    EXPECT_EQ(refused.body,
              R"({"error":{"message":"Authentication Fails, the demo account takes its own key only",)"
              R"("type":"authentication_error"}})");
    EXPECT_EQ(account.readings(), 0);
}

TEST_F(DemoServerTest, OtherPathsAndMethodsAreNotServed) {
    EXPECT_EQ(get("/user/balances", "sk-demo").status, 404);
    EXPECT_EQ(get("/", "sk-demo").status, 404);
    EXPECT_TRUE(raw("POST /user/balance HTTP/1.1\r\nAuthorization: Bearer sk-demo\r\n\r\n")
                    .startsWith("HTTP/1.1 405 Method Not Allowed\r\n"));
    EXPECT_TRUE(raw("nonsense\r\n\r\n").startsWith("HTTP/1.1 400 Bad Request\r\n"));
    EXPECT_TRUE(raw("GET /user/balance HTTP/1.1\r\nX: " + QByteArray(DemoServer::kMaxHeadBytes, 'x'))
                    .startsWith("HTTP/1.1 431 Request Header Fields Too Large\r\n"));
    EXPECT_EQ(account.readings(), 0);
}

TEST_F(DemoServerTest, TheAnswerHasTheHeadersAClientNeeds) {
    const QByteArray answer = raw("GET /user/balance HTTP/1.1\r\nauthorization:  Bearer sk-demo \r\n\r\n");

    const QByteArray body = QByteArray::fromStdString(account.body());
    EXPECT_EQ(answer, "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
                          QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
}

class DemoEnvironmentTest : public ::testing::Test {
protected:
    // 2026-11-22T09:00:00Z: the stored day runs from 09:00 yesterday to 08:30 today.
    FakeClock clock{FakePlatform::kStart, "UTC"};
    IcuFormatter formatter{"en_US"};
    DemoEnvironment demo{clock, formatter, 5};

    void SetUp() override { ASSERT_TRUE(demo.start()); }
};

TEST_F(DemoEnvironmentTest, TheStoresStartWithTheKeyAndADayOfReadings) {
    EXPECT_EQ(KeychainStore(demo.secrets()).read(), std::optional<std::string>("sk-demo"));
    const std::optional<std::string> stored =
        Defaults(demo.settings()).dataValue(std::string(BalanceHistory::kHistoryKey));
    ASSERT_TRUE(stored);
    const std::optional<std::vector<BalancePoint>> history = HistoryCodec::decode(*stored);
    ASSERT_TRUE(history);
    ASSERT_EQ(history->size(), 96u);

    DemoAccount replay(5);
    for (int i = 0; i < 48; ++i) {
        if (i > 0) {
            replay.advance();
        }
        const Timestamp time = FakePlatform::kStart.plusSeconds(-86400.0 + i * 1800.0);
        for (std::size_t c = 0; c < 2; ++c) {
            const BalancePoint& point = (*history)[static_cast<std::size_t>(i) * 2 + c];
            EXPECT_EQ(point.timestamp, time) << i;
            EXPECT_EQ(point.currency, replay.balances()[c].currency);
            EXPECT_EQ(point.balance.toString(),
                      Decimal::parse(DemoAccount::amountText(replay.balances()[c].totalCents()))->toString());
        }
    }
    EXPECT_EQ(demo.apiBaseUrl().rfind("http://127.0.0.1:", 0), 0u);
}

TEST_F(DemoEnvironmentTest, BaselinesStartAtTheFirstReadingAndTodaysFirstReading) {
    FakePlatform fake;
    fake.clock.set(FakePlatform::kStart);
    Platform platform = fake.platform();
    const Platform demoPlatform{
        platform.statusItem, demo.settings(),        demo.secrets(),  platform.http,  clock,
        formatter,           platform.textSegmenter, platform.timers, platform.alert, platform.pasteboard,
        platform.workspace,  platform.application};
    AppDelegate delegate(demoPlatform);

    demo.seedBaselines(delegate);

    DemoAccount replay(5);
    const std::string first = DemoAccount::amountText(replay.balances()[0].totalCents());
    // Readings start at 09:00 yesterday, one every half hour: the 31st is today's first, at midnight.
    for (int i = 0; i < 30; ++i) {
        replay.advance();
    }
    Defaults defaults(demo.settings());
    EXPECT_EQ(defaults.stringValue("dayKey"), std::optional<std::string>("2026-11-22"));
    EXPECT_EQ(defaults.stringValue("firstStart.USD"), std::optional<std::string>(first));
    EXPECT_EQ(defaults.stringValue("dayStart.USD"),
              std::optional<std::string>(DemoAccount::amountText(replay.balances()[0].totalCents())));
    EXPECT_EQ(defaults.stringValue("dayStart.CNY"),
              std::optional<std::string>(DemoAccount::amountText(replay.balances()[1].totalCents())));
}

} // namespace
} // namespace quorvane
