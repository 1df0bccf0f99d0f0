// A delegate on the fake platform in the state of an app that has been running for days.
#pragma once

#include "app/AppDelegate.h"
#include "fakes/FakePlatform.h"

#include <cstddef>
#include <string>

namespace quorvane {

// A key stored, the history at its sample bound over two currencies, the
// baselines taken and the dashboard in the menu: what every later refresh meets.
class BenchmarkDelegate {
public:
    static constexpr double kRefreshPeriodSeconds = 60.0;

    BenchmarkDelegate();
    BenchmarkDelegate(const BenchmarkDelegate&) = delete;
    BenchmarkDelegate& operator=(const BenchmarkDelegate&) = delete;

    AppDelegate& delegate() { return m_delegate; }
    FakePlatform& fake() { return m_fake; }
    // The answer every refresh gets, decoded.
    const BalanceResponse& response() const { return *m_delegate.lastResponse(); }

    // One refresh period after the last: the request goes out and waits.
    void startRefresh();
    // The endpoint's two-currency 200 answer to the request that waits.
    void deliverAnswer();

private:
    FakePlatform m_fake;
    AppDelegate m_delegate;
    const std::string m_body;
};

} // namespace quorvane
