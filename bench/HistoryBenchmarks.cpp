#include "BenchmarkDelegate.h"
#include "SampleSeries.h"
#include "tracking/HistoryCodec.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace quorvane {
namespace {

// The history is at its 400-sample bound throughout: each recording adds two
// samples and prunes two.
void recordHistory(benchmark::State& state) {
    BenchmarkDelegate rig;
    const BalanceResponse response = rig.response();
    Defaults defaults(rig.fake().settings);
    BalanceHistory history(defaults, rig.fake().clock);
    for (auto _ : state) {
        rig.fake().clock.advance(BenchmarkDelegate::kRefreshPeriodSeconds);
        history.recordHistory(response);
    }
    if (rig.delegate().allHistory().size() != BalanceHistory::kMaxSamples) {
        state.SkipWithError("the history left its bound");
    }
}
BENCHMARK(recordHistory)->Unit(benchmark::kMicrosecond);

void allHistory(benchmark::State& state) {
    BenchmarkDelegate rig;
    for (auto _ : state) {
        std::vector<BalancePoint> points = rig.delegate().allHistory();
        benchmark::DoNotOptimize(points.data());
    }
}
BENCHMARK(allHistory)->Unit(benchmark::kMicrosecond);

// The chart's series: one currency's newest 48 of the 400 stored samples.
void historyForCurrency(benchmark::State& state) {
    BenchmarkDelegate rig;
    const std::string currency = "USD";
    for (auto _ : state) {
        std::vector<BalancePoint> series = rig.delegate().history(currency);
        benchmark::DoNotOptimize(series.data());
    }
}
BENCHMARK(historyForCurrency)->Unit(benchmark::kMicrosecond);

// The two halves of the stored form on their own, to tell the JSON's share
// of the history operations from the rest.
void encodeHistory(benchmark::State& state) {
    const std::vector<BalancePoint> points = SampleSeries::twoCurrencies(
        BalanceHistory::kMaxSamples, Timestamp::fromUnixSeconds(1795338000.0), 60.0);
    for (auto _ : state) {
        std::string bytes = HistoryCodec::encode(points);
        benchmark::DoNotOptimize(bytes.data());
    }
}
BENCHMARK(encodeHistory)->Unit(benchmark::kMicrosecond);

void decodeHistory(benchmark::State& state) {
    const std::string bytes = HistoryCodec::encode(SampleSeries::twoCurrencies(
        BalanceHistory::kMaxSamples, Timestamp::fromUnixSeconds(1795338000.0), 60.0));
    for (auto _ : state) {
        auto points = HistoryCodec::decode(bytes);
        benchmark::DoNotOptimize(points->data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(decodeHistory)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quorvane
