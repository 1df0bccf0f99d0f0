#include "NullCanvas.h"
#include "SampleSeries.h"
#include "chart/UsageChartView.h"
#include "icu/IcuFormatter.h"
#include "menu/CardFactory.h"
#include "tracking/BalanceHistory.h"

#include <benchmark/benchmark.h>

namespace quorvane {
namespace {

// The dashboard's chart with a full series of one currency, samples a minute apart.
UsageChartView fullChart(const Formatter& formatter) {
    return UsageChartView(CardFactory::kChartFrame,
                          ChartModel(SampleSeries::usd(BalanceHistory::kSeriesLength,
                                                       Timestamp::fromUnixSeconds(1795338000.0), 60.0),
                                     NamedColor{ColorName::SystemTeal, 1.0}, formatter, "UTC"));
}

void drawChart(benchmark::State& state) {
    const IcuFormatter formatter("en_US");
    const UsageChartView view = fullChart(formatter);
    NullCanvas canvas;
    for (auto _ : state) {
        view.draw(canvas);
    }
}
BENCHMARK(drawChart)->Unit(benchmark::kMicrosecond);

// With the pointer over a sample: the guide, the dot and the value bubble,
// whose time and amount are formatted on every paint.
void drawChartHovered(benchmark::State& state) {
    const IcuFormatter formatter("en_US");
    UsageChartView view = fullChart(formatter);
    view.mouseMoved(*view.pointerLocation(20));
    NullCanvas canvas;
    for (auto _ : state) {
        view.draw(canvas);
    }
    if (view.hoveredIndex() != 20) {
        state.SkipWithError("the pointer did not pick the sample");
    }
}
BENCHMARK(drawChartHovered)->Unit(benchmark::kMicrosecond);

// One pointer move inside the plot, sweeping across it so that the pick
// changes as it does under a real pointer.
void hoverChart(benchmark::State& state) {
    const IcuFormatter formatter("en_US");
    UsageChartView view = fullChart(formatter);
    const Rect plot = view.bounds().insetBy(12.0, 12.0);
    double x = plot.minX();
    for (auto _ : state) {
        view.mouseMoved(Point{x, plot.minY() + plot.height / 2});
        x = x + 7.0 < plot.maxX() ? x + 7.0 : plot.minX();
    }
    if (!view.toolTip()) {
        state.SkipWithError("the pointer left the plot");
    }
}
BENCHMARK(hoverChart)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quorvane
