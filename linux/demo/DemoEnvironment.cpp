#include "demo/DemoEnvironment.h"

#include "keychain/KeychainStore.h"
#include "platform/Defaults.h"
#include "tracking/BalanceHistory.h"
#include "tracking/HistoryCodec.h"
#include "tracking/SpendBaselines.h"

namespace quorvane {

DemoEnvironment::DemoEnvironment(const Clock& clock, const Formatter& formatter, std::uint32_t seed)
    : m_clock(clock)
    , m_formatter(formatter)
    , m_account(seed)
    , m_server(m_account, std::string(kDemoKey)) {}

bool DemoEnvironment::start() {
    KeychainStore(m_secrets).save(std::string(kDemoKey));
    seedHistory();
    return m_server.listen();
}

void DemoEnvironment::seedHistory() {
    const Timestamp now = m_clock.now();
    std::vector<BalancePoint> points;
    for (int i = 0; i < kSeededReadings; ++i) {
        if (i > 0) {
            m_account.advance();
        }
        const Timestamp time = now.plusSeconds(-(kSeededReadings - i) * kSeededSpacingSeconds);
        m_seeded.push_back({time, m_account.balances()});
        for (const DemoAccount::Balance& balance : m_account.balances()) {
            const std::optional<Decimal> amount =
                Decimal::parse(DemoAccount::amountText(balance.totalCents()));
            points.push_back({time, balance.currency, amount.value_or(Decimal())});
        }
    }
    Defaults(m_settings).setData(std::string(BalanceHistory::kHistoryKey), HistoryCodec::encode(points));
}

void DemoEnvironment::seedBaselines() {
    if (m_seeded.empty()) {
        return;
    }
    Defaults defaults(m_settings);
    for (const DemoAccount::Balance& balance : m_seeded.front().balances) {
        defaults.setString(std::string(SpendBaselines::kFirstStartPrefix) + balance.currency,
                           DemoAccount::amountText(balance.totalCents()));
    }
    const std::string today = SpendBaselines(defaults, m_clock, m_formatter).currentDayKey();
    for (const Reading& reading : m_seeded) {
        if (m_formatter.dayKey(reading.time, m_clock.timeZoneId()) != today) {
            continue;
        }
        defaults.setString(std::string(SpendBaselines::kDayKeyKey), today);
        for (const DemoAccount::Balance& balance : reading.balances) {
            defaults.setString(std::string(SpendBaselines::kDayStartPrefix) + balance.currency,
                               DemoAccount::amountText(balance.totalCents()));
        }
        return;
    }
}

} // namespace quorvane
