#include "importloop.h"
#include "nesteddocument.h"

#include "base/scriptedprompt.h"
#include "base/windows1252.h"
#include "file/qosfiletable.h"
#include "file/qosreader.h"
#include "file/qoswriter.h"
#include "model/document.h"

#include <benchmark/benchmark.h>

#include <QFile>

#include <cstring>
#include <memory>

namespace {

// Read, arrange and write back a hand-written file without layout data: the column shift of
// the arrangement runs for every further host of a group.
void BM_NestedRoundTrip(benchmark::State& state)
{
    ImportLoop(state, NestedQoSFile(int(state.range(0))), true);
    state.SetComplexityN(state.range(0));
}

void BM_NestedImport(benchmark::State& state)
{
    ImportLoop(state, NestedQoSFile(int(state.range(0))), false);
    state.SetComplexityN(state.range(0));
}

// The floor for any reader of the same bytes: decode them and cut them into lines.
void BM_NestedSplitLines(benchmark::State& state)
{
    const QByteArray bytes = NestedQoSFile(int(state.range(0)));
    for (auto _ : state) {
        const QStringList lines = Windows1252::Decode(bytes).split(u'\n');
        benchmark::DoNotOptimize(lines.size());
    }
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(BM_NestedRoundTrip)->Arg(250)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(BM_NestedImport)->Arg(250)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(BM_NestedSplitLines)->Arg(250)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond)->Complexity();

// "bench_nested --write N FILE" writes the generated file, for timing tarnwick-cli on it.
int main(int argc, char** argv)
{
    if (argc == 4 && std::strcmp(argv[1], "--write") == 0) {
        QFile file(QString::fromLocal8Bit(argv[3]));
        if (!file.open(QIODevice::WriteOnly))
            return 1;
        file.write(NestedQoSFile(std::atoi(argv[2])));
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
