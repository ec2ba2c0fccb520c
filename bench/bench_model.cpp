// Building trees through the page's own commands, with automatic arrangement.
//   flat:     N main classes on the down page, 4 filters each
//   per-host: one main class, N sub classes below it (one per host), 4 filters each
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"

#include <benchmark/benchmark.h>

namespace {

void addFilters(ObjectPage* page, const QoSClass* c)
{
    // By number, as a file names the class of a filter.
    for (int k = 0; k < 4; ++k)
        page->AddFilter(QString::number(c->ClassIdx()),
                        {.ip = QStringLiteral("192.168.1.%1").arg(k), .port = QStringLiteral("80")});
}

void BM_BuildFlat(benchmark::State& state)
{
    const int n = int(state.range(0));
    for (auto _ : state) {
        Document doc;
        ObjectPage* page = doc.Down1();
        for (int i = 0; i < n; ++i) {
            addFilters(page, page->AddClass(QStringLiteral("0"), {.minBandwidth = QStringLiteral("10kbit"),
                                                                  .maxBandwidth = QStringLiteral("100kbit"),
                                                                  .direction = QStringLiteral("down"),
                                                                  .prio = QStringLiteral("1")}));
        }
        benchmark::DoNotOptimize(page->ObjectCount());
    }
    state.SetComplexityN(n);
}

void BM_BuildPerHost(benchmark::State& state)
{
    const int n = int(state.range(0));
    for (auto _ : state) {
        Document doc;
        ObjectPage* page = doc.Down1();
        const QString root =
            QString::number(page->AddClass(QStringLiteral("0"),
                                           {.direction = QStringLiteral("down"), .prio = QStringLiteral("0")})
                                ->ClassIdx());
        for (int i = 0; i < n; ++i) {
            addFilters(page, page->AddClass(
                                 root, {.direction = QStringLiteral("down"), .prio = QStringLiteral("1")}));
        }
        benchmark::DoNotOptimize(page->ObjectCount());
    }
    state.SetComplexityN(n);
}

} // namespace

BENCHMARK(BM_BuildFlat)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(BM_BuildPerHost)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Complexity();

BENCHMARK_MAIN();
