#include "BenchmarkDelegate.h"

#include <benchmark/benchmark.h>

#include <time.h>

namespace quorvane {
namespace {

// Each loop must have ended where it began: answered, with the history still
// full. Otherwise it measured an error path or a smaller history.
void checkStillRunning(benchmark::State& state, BenchmarkDelegate& rig) {
    if (!rig.delegate().lastResponse() || rig.delegate().isRefreshing() ||
        rig.delegate().allHistory().size() != BalanceHistory::kMaxSamples) {
        state.SkipWithError("the delegate left its running state");
    }
}

// The whole refresh: the request going out (title, menu) and the answer coming back.
void refreshCycle(benchmark::State& state) {
    BenchmarkDelegate rig;
    for (auto _ : state) {
        rig.startRefresh();
        rig.deliverAnswer();
    }
    checkStillRunning(state, rig);
}
BENCHMARK(refreshCycle)->Unit(benchmark::kMicrosecond);

// The thread's own CPU time: on a shared machine a wall clock would also count
// the time other processes held the core.
double threadCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Only the work after the answer arrives: decoding, baselines, the history,
// the title and the menu with its dashboard. The request's half is not timed.
void refreshAnswer(benchmark::State& state) {
    BenchmarkDelegate rig;
    for (auto _ : state) {
        rig.startRefresh();
        const double start = threadCpuSeconds();
        rig.deliverAnswer();
        state.SetIterationTime(threadCpuSeconds() - start);
    }
    checkStillRunning(state, rig);
}
BENCHMARK(refreshAnswer)->UseManualTime()->Unit(benchmark::kMicrosecond);

void rebuildMenu(benchmark::State& state) {
    BenchmarkDelegate rig;
    for (auto _ : state) {
        rig.delegate().refreshIntervalClicked(60); // a rebuild that changes nothing else
    }
    benchmark::DoNotOptimize(rig.delegate().menu().size());
    checkStillRunning(state, rig);
}
BENCHMARK(rebuildMenu)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quorvane
