// The demo's simulated account: USD and CNY balances that fall a little at each reading, now and then rise.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace quorvane {

// Amounts are whole cents (fen for CNY), so every text the account writes is
// exact. The same seed gives the same readings on every machine: the Mersenne
// Twister's output is fixed by the standard, and nothing here goes through a
// distribution whose algorithm each library chooses for itself.
class DemoAccount {
public:
    struct Balance {
        std::string currency;
        // Spent first, as a grant is.
        std::int64_t grantedCents = 0;
        std::int64_t toppedUpCents = 0;

        std::int64_t totalCents() const { return grantedCents + toppedUpCents; }
    };

    explicit DemoAccount(std::uint32_t seed);

    // The next reading: each balance spends a little (never below zero), and
    // about once in kTopUpOdds readings one is topped up.
    void advance();

    const std::vector<Balance>& balances() const { return m_balances; }
    // How many times advance() has run.
    std::int64_t readings() const { return m_readings; }

    // The balance endpoint's body for the current state, in the provider's
    // shape: amounts as strings with two decimals, available while any
    // balance is left.
    std::string body() const;

    // "12.05" for 1205, "-0.07" for -7.
    static std::string amountText(std::int64_t cents);

    static constexpr std::uint32_t kTopUpOdds = 40;

private:
    struct Habits {
        std::int64_t minSpend;
        std::int64_t maxSpend;
        std::int64_t topUp;
    };

    std::int64_t draw(std::int64_t low, std::int64_t high);

    std::mt19937 m_random;
    std::vector<Balance> m_balances;
    std::vector<Habits> m_habits;
    std::int64_t m_readings = 0;
};

} // namespace quorvane
