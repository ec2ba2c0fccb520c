#include "nesteddocument.h"

#include "base/scriptedprompt.h"
#include "check/problemlist.h"
#include "check/problemwatcher.h"
#include "check/validationwatcher.h"
#include "file/qosreader.h"
#include "model/document.h"
#include "model/qosclass.h"
#include "model/qosfilter.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

namespace {

// The document as the window holds it: both pages' validation and the problem list follow it.
struct Followed
{
    ScriptedPrompt prompt;
    Document doc{&prompt};
    ValidationWatcher down{doc.Down1()};
    ValidationWatcher up{doc.Up1()};
    ProblemWatcher problems{&doc};

    explicit Followed(int classes)
    {
        problems.SetImportReport(ImportQoSBytes(doc, NestedQoSFile(classes)));
        settle();
    }
    // Runs what the change queued, as the event loop would: the checks, then the list.
    void settle()
    {
        while (problems.Pending() || down.Pending() || up.Pending())
            QCoreApplication::processEvents();
    }
    template <typename T> T* last() const
    {
        for (qsizetype i = doc.Objects().size() - 1; i >= 0; --i)
            if (auto* o = qobject_cast<T*>(doc.Objects().at(i)))
                return o;
        return nullptr;
    }
};

// A host's minimum goes beyond its group's maximum and back: its sibling group is checked
// again, and the list is made again with one problem more or less.
void BM_MinimumChangedThenListed(benchmark::State& state)
{
    Followed f(int(state.range(0)));
    QoSClass* host = f.last<QoSClass>();
    bool over = false;
    for (auto _ : state) {
        over = !over;
        host->SetQoSMinBandWidth(over ? QStringLiteral("60000kbit") : QStringLiteral("10kbit"));
        f.settle();
        benchmark::DoNotOptimize(f.problems.Problems().size());
    }
    state.SetComplexityN(state.range(0));
}

// A port list typed into a filter: no flag changes, the list alone is made again.
void BM_PortChangedThenListed(benchmark::State& state)
{
    Followed f(int(state.range(0)));
    QoSFilter* filter = f.last<QoSFilter>();
    bool many = false;
    for (auto _ : state) {
        many = !many;
        filter->SetQoSPort(many ? QStringLiteral("1-30") : QStringLiteral("443"));
        f.settle();
        benchmark::DoNotOptimize(f.problems.Problems().size());
    }
    state.SetComplexityN(state.range(0));
}

// The floor: the list made once, without any change or event.
void BM_ListProblems(benchmark::State& state)
{
    Followed f(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(ListProblems(f.doc, ImportReport()).size());
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(BM_MinimumChangedThenListed)->Arg(250)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PortChangedThenListed)->Arg(250)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ListProblems)->Arg(250)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
