// Building trees through the page's own commands, with automatic arrangement.
//   flat:     N main classes on the down page, 4 filters each
//   per-host: one main class, N sub classes below it (one per host), 4 filters each
#include "model/document.h"
#include "model/objectpage.h"

#include <benchmark/benchmark.h>

namespace {

void addFilters(ObjectPage* page, int classIdx)
{
    for (int k = 0; k < 4; ++k) {
        int f = 0;
        page->AddFilter(QString::number(classIdx), QStringLiteral("192.168.1.%1").arg(k),
                        QStringLiteral("80"), QString(), QString(), f, QString());
    }
}

void BM_BuildFlat(benchmark::State& state)
{
    const int n = int(state.range(0));
    for (auto _ : state) {
        Document doc;
        ObjectPage* page = doc.Down1();
        for (int i = 0; i < n; ++i) {
            int idx = 0;
            page->AddClass(QStringLiteral("0"), QStringLiteral("10kbit"), QStringLiteral("100kbit"),
                           QStringLiteral("down"), QStringLiteral("1"), idx, false, QString());
            addFilters(page, idx);
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
        int root = 0;
        page->AddClass(QStringLiteral("0"), QString(), QString(), QStringLiteral("down"), QStringLiteral("0"),
                       root, false, QString());
        for (int i = 0; i < n; ++i) {
            int idx = 0;
            page->AddClass(QString::number(root), QString(), QString(), QStringLiteral("down"),
                           QStringLiteral("1"), idx, false, QString());
            addFilters(page, idx);
        }
        benchmark::DoNotOptimize(page->ObjectCount());
    }
    state.SetComplexityN(n);
}

} // namespace

BENCHMARK(BM_BuildFlat)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(BM_BuildPerHost)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Complexity();

BENCHMARK_MAIN();
