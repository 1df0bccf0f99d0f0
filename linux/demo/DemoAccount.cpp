#include "demo/DemoAccount.h"

#include "json/JsonWriter.h"

#include <algorithm>

namespace quorvane {

DemoAccount::DemoAccount(std::uint32_t seed)
    : m_random(seed)
    // A developer's account: a small grant left in dollars, a larger top-up in yuan.
    , m_balances{{"USD", 500, 2250}, {"CNY", 0, 16800}}
    // Spend of a few cents to a quarter per reading, yuan at about seven to the
    // dollar; top-ups big enough to be seen on the chart.
    , m_habits{{1, 40, 1000}, {5, 280, 5000}} {}

std::int64_t DemoAccount::draw(std::int64_t low, std::int64_t high) {
    const auto span = static_cast<std::uint32_t>(high - low + 1);
    return low + static_cast<std::int64_t>(m_random() % span);
}

void DemoAccount::advance() {
    ++m_readings;
    for (std::size_t i = 0; i < m_balances.size(); ++i) {
        Balance& balance = m_balances[i];
        const Habits& habits = m_habits[i];
        std::int64_t spend = std::min(draw(habits.minSpend, habits.maxSpend), balance.totalCents());
        const std::int64_t fromGrant = std::min(spend, balance.grantedCents);
        balance.grantedCents -= fromGrant;
        balance.toppedUpCents -= spend - fromGrant;
        if (m_random() % kTopUpOdds == 0) {
            balance.toppedUpCents += habits.topUp;
        }
    }
}

std::string DemoAccount::amountText(std::int64_t cents) {
    const std::int64_t magnitude = cents < 0 ? -cents : cents;
    std::string fraction = std::to_string(magnitude % 100);
    if (fraction.size() < 2) {
        fraction.insert(0, "0");
    }
    return (cents < 0 ? "-" : "") + std::to_string(magnitude / 100) + "." + fraction;
}

std::string DemoAccount::body() const {
    const bool anyLeft = std::any_of(m_balances.begin(), m_balances.end(),
                                     [](const Balance& balance) { return balance.totalCents() > 0; });
    std::vector<JsonValue> infos;
    for (const Balance& balance : m_balances) {
        infos.push_back(JsonValue::fromMembers({
            {"currency", JsonValue::fromString(balance.currency)},
            {"total_balance", JsonValue::fromString(amountText(balance.totalCents()))},
            {"granted_balance", JsonValue::fromString(amountText(balance.grantedCents))},
            {"topped_up_balance", JsonValue::fromString(amountText(balance.toppedUpCents))},
        }));
    }
    return JsonWriter::write(JsonValue::fromMembers({
        {"is_available", JsonValue::fromBool(anyLeft)},
        {"balance_infos", JsonValue::fromElements(std::move(infos))},
    }));
}

} // namespace quorvane
