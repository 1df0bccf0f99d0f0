#include "BenchmarkDelegate.h"

#include "SampleSeries.h"
#include "fakes/BalanceBody.h"
#include "platform/Defaults.h"
#include "tracking/HistoryCodec.h"

#include <stdexcept>

namespace quorvane {

BenchmarkDelegate::BenchmarkDelegate()
    : m_delegate(m_fake.platform())
    , m_body(balanceBody({{"CNY", "349.87"}, {"USD", "47.92"}})) {
    m_fake.storeKey("sk-benchmark");
    Defaults(m_fake.settings)
        .setData(std::string(BalanceHistory::kHistoryKey),
                 HistoryCodec::encode(SampleSeries::twoCurrencies(
                     BalanceHistory::kMaxSamples, m_fake.clock.now().plusSeconds(-kRefreshPeriodSeconds),
                     kRefreshPeriodSeconds)));
    m_delegate.applicationDidFinishLaunching();
    deliverAnswer();
    // A benchmark that met an empty menu or a short history would measure the wrong thing.
    if (!m_delegate.lastResponse() || m_delegate.allHistory().size() != BalanceHistory::kMaxSamples) {
        throw std::logic_error("the benchmark delegate did not reach its running state");
    }
}

void BenchmarkDelegate::startRefresh() {
    m_fake.clock.advance(kRefreshPeriodSeconds);
    m_delegate.refreshClicked();
}

void BenchmarkDelegate::deliverAnswer() {
    m_fake.http.respond(200, m_body);
}

} // namespace quorvane
