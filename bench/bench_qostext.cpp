#include "base/scriptedprompt.h"
#include "base/windows1252.h"
#include "file/qosreader.h"
#include "file/qoswriter.h"
#include "importloop.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

// n classes, each with four filters, half of them on each page, placed by the pages'
// own arrangement as if the user had added them one by one.
struct GeneratedDocument
{
    ScriptedPrompt prompt;
    Document doc{&prompt};

    explicit GeneratedDocument(int classes)
    {
        for (int i = 0; i < classes; ++i) {
            ObjectPage* page = i % 2 == 0 ? doc.Down1() : doc.Up1();
            QoSClass* c =
                page->AddClass(QStringLiteral("0"), {.minBandwidth = QStringLiteral("100kbit"),
                                                     .maxBandwidth = QStringLiteral("500kbit"),
                                                     .direction = page->Direction(),
                                                     .prio = QStringLiteral("2"),
                                                     .caption = QStringLiteral("Klasse %1").arg(i)});
            const QString number = QString::number(c->ClassIdx());
            const QString ports[] = {QStringLiteral("80"), QStringLiteral("443"), QStringLiteral("5060-5062"),
                                     QString()};
            for (int k = 0; k < 4; ++k) {
                page->AddFilter(number, {.ip = QStringLiteral("192.168.%1.%2").arg(i % 250).arg(k + 1),
                                         .port = ports[k],
                                         .type = ports[k].isEmpty() ? QString() : QStringLiteral("client"),
                                         .caption = QStringLiteral("Filter %1").arg(k)});
            }
        }
        // The walk covers the down page's grid on both pages.
        qint32 cols = qMax(doc.Down1()->prop().Cols, doc.Up1()->prop().Cols);
        qint32 rows = qMax(doc.Down1()->prop().Rows, doc.Up1()->prop().Rows);
        doc.Down1()->SetGridDimensions(cols, rows);
    }
};

void BM_Export(benchmark::State& state)
{
    GeneratedDocument g(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(ExportQoSBytes(g.doc));
}

// The largest files the writer makes: filters that each stand for all 65536 ports, so that
// the text of one export runs to some ten megabytes per filter.
void BM_ExportManyEntries(benchmark::State& state)
{
    ScriptedPrompt prompt;
    Document doc(&prompt);
    QoSClass* c = doc.Down1()->AddClass(QStringLiteral("0"), {.direction = QStringLiteral("down"),
                                                              .prio = QStringLiteral("1"),
                                                              .caption = QStringLiteral("Alle Ports")});
    for (int i = 0; i < state.range(0); ++i)
        doc.Down1()->AddFilter(c, {.ip = QStringLiteral("10.0.%1.0/24").arg(i),
                                   .port = QStringLiteral("0-65535"),
                                   .type = QStringLiteral("client"),
                                   .caption = QStringLiteral("Filter %1").arg(i)});
    qint64 bytes = 0;
    for (auto _ : state) {
        const QByteArray text = ExportQoSBytes(doc);
        bytes = text.size();
        benchmark::DoNotOptimize(text.constData());
    }
    state.SetBytesProcessed(state.iterations() * bytes);
}

QByteArray exportedBytes(int classes)
{
    GeneratedDocument g(classes);
    return ExportQoSBytes(g.doc);
}

void BM_Import(benchmark::State& state)
{
    const QByteArray bytes = exportedBytes(int(state.range(0)));
    ImportLoop(state, bytes, false);
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

// The model's own share of an import: the same classes and filters made directly.
void BM_BuildModel(benchmark::State& state)
{
    for (auto _ : state) {
        auto g = std::make_unique<GeneratedDocument>(int(state.range(0)));
        benchmark::DoNotOptimize(g.get());
        state.PauseTiming();
        g.reset();
        state.ResumeTiming();
    }
}

// The floor for any reader: decode the bytes and cut them into lines, nothing else.
void BM_SplitLines(benchmark::State& state)
{
    const QByteArray bytes = exportedBytes(int(state.range(0)));
    for (auto _ : state) {
        const QStringList lines = Windows1252::Decode(bytes).split(QStringLiteral("\r\n"));
        benchmark::DoNotOptimize(lines.size());
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

} // namespace

BENCHMARK(BM_Export)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ExportManyEntries)->Arg(1)->Arg(8)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Import)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildModel)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SplitLines)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
