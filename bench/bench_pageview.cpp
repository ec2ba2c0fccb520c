// The object pages on screen, offscreen.
//   BM_OpenWithViews:  reading a router file of 1000 classes and 2000 filters while the views
//                      of both pages are open, up to the first picture of each page
//   BM_OpenRepaintingEachStep: the same with a status window that lets the interface repaint
//                      at every step of the import, as the editor's does
//   BM_ViewsOverOpened: the two views made over the opened document, up to their first picture
//   BM_AllBoxWidgets:  what building every box of the down page as widgets would cost (what
//                      the views avoid by building only the visible part)
//   BM_ScrollAcross:   scrolling the down page from left to right by one screen at a time
//   BM_DragStep:       one mouse move while a class with two filters is dragged
//   BM_RenderPage:     the picture of the hand-written sample's down page
//   BM_ShowPage/...:   a view over an opened document, shown and painted once (making the
//                      view is not timed; make_ms says what it took), for two shapes that draw
//                      many long lines: one class with n filters (every line runs down the
//                      class's column, all of them through the first screen), and 16 000
//                      classes as 40 main classes with 399 sub classes each (the lines of a
//                      main class fan out over hundreds of columns)
//   BM_OpenShown/...:  reading those files while the page is on screen, up to its picture
//   BM_ScrollStep/...: one page-width step right, or one page-height step down, from the
//                      top-left corner of those pages, painted
#include "base/scriptedprompt.h"
#include "file/qosreader.h"
#include "file/qoswriter.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosobjectbox.h"
#include "page/moveobject.h"
#include "page/objectpageview.h"
#include "page/objectpane.h"
#include "page/pagerenderer.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

// A main class of 1000 kbit to 100000 kbit, as every benchmark page starts.
QoSClass* mainClass(ObjectPage* page, const QString& caption)
{
    return page->AddClass(QStringLiteral("0"), {.minBandwidth = QStringLiteral("1000kbit"),
                                                .maxBandwidth = QStringLiteral("100000kbit"),
                                                .direction = page->Direction(),
                                                .prio = QStringLiteral("0"),
                                                .caption = caption});
}

// Per page 10 main classes with 49 sub classes each (500 classes), two filters under every
// sub class and a third under the first twenty (1000 filters): 1000 classes and 2000 filters.
QByteArray largeRouterFile()
{
    static const QByteArray bytes = [] {
        ScriptedPrompt prompt;
        Document doc(&prompt);
        for (ObjectPage* page : {doc.Down1(), doc.Up1()}) {
            int leaves = 0;
            for (int m = 0; m < 10; ++m) {
                QoSClass* house = mainClass(page, QStringLiteral("Haus %1").arg(m));
                for (int s = 0; s < 49; ++s) {
                    QoSClass* host = page->AddClass(house, {.minBandwidth = QStringLiteral("20kbit"),
                                                            .maxBandwidth = QStringLiteral("2000kbit"),
                                                            .direction = page->Direction(),
                                                            .prio = QStringLiteral("2"),
                                                            .caption = QStringLiteral("Rechner %1").arg(s)});
                    for (int f = 0; f < (leaves < 20 ? 3 : 2); ++f) {
                        page->AddFilter(host, {.ip = QStringLiteral("10.%1.%2.%3").arg(m).arg(s).arg(f),
                                               .port = QStringLiteral("80"),
                                               .type = QStringLiteral("client")});
                    }
                    ++leaves;
                }
            }
        }
        return ExportQoSBytes(doc);
    }();
    return bytes;
}

// One main class with n filters below it, on a page 30 columns wide.
QByteArray fanFile(int filters)
{
    ScriptedPrompt prompt;
    Document doc(&prompt);
    ObjectPage* page = doc.Down1();
    QoSClass* all = mainClass(page, QStringLiteral("Alle"));
    for (int f = 0; f < filters; ++f) {
        page->AddFilter(all, {.ip = QStringLiteral("10.%1.%2.1").arg(f / 250 % 250).arg(f % 250),
                              .port = QStringLiteral("80"),
                              .type = QStringLiteral("client")});
    }
    // Wide enough to scroll right, away from the fan.
    qint32 cols = 30, rows = 0;
    page->SetGridDimensions(cols, rows);
    return ExportQoSBytes(doc);
}

// 40 main classes with 399 sub classes each: 16 000 classes, on a page 20 rows high.
QByteArray wideMainClassesFile()
{
    static const QByteArray bytes = [] {
        ScriptedPrompt prompt;
        Document doc(&prompt);
        ObjectPage* page = doc.Down1();
        for (int m = 0; m < 40; ++m) {
            QoSClass* house = mainClass(page, QStringLiteral("Haus %1").arg(m));
            for (int s = 0; s < 399; ++s) {
                page->AddClass(house, {.minBandwidth = QStringLiteral("20kbit"),
                                       .maxBandwidth = QStringLiteral("2000kbit"),
                                       .direction = page->Direction(),
                                       .prio = QStringLiteral("2"),
                                       .caption = QStringLiteral("Rechner %1").arg(s)});
            }
        }
        // Tall enough to scroll down, away from the lines.
        qint32 cols = 0, rows = 20;
        page->SetGridDimensions(cols, rows);
        return ExportQoSBytes(doc);
    }();
    return bytes;
}

// A shape by the benchmark's first argument: 0 the wide main classes, otherwise a fan of
// that many filters.
QByteArray shapeFile(int shape)
{
    return shape == 0 ? wideMainClassesFile() : fanFile(shape);
}

// The resident memory of the process in MB, as the kernel counts it (0 where it does not).
double residentMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QRegularExpression rss(QStringLiteral("VmRSS:\\s+(\\d+) kB"));
    const auto match = rss.match(QString::fromLatin1(status.readAll()));
    return match.hasMatch() ? match.captured(1).toDouble() / 1024 : 0;
}

struct Screen
{
    std::unique_ptr<ObjectPageView> down;
    std::unique_ptr<ObjectPageView> up;

    explicit Screen(Document& doc) : down(new ObjectPageView(doc.Down1())), up(new ObjectPageView(doc.Up1()))
    {
        for (ObjectPageView* view : {down.get(), up.get()}) {
            view->setAttribute(Qt::WA_DontShowOnScreen);
            view->resize(1280, 800);
            view->show();
        }
    }
    // Everything the views wait for (their widgets, the bandwidth checks) happens now.
    void settle() { QCoreApplication::sendPostedEvents(); }
};

void BM_OpenWithViews(benchmark::State& state)
{
    const QByteArray bytes = largeRouterFile();
    for (auto _ : state) {
        state.PauseTiming();
        auto prompt = std::make_unique<ScriptedPrompt>();
        auto doc = std::make_unique<Document>(prompt.get());
        Screen screen(*doc);
        screen.settle();
        state.ResumeTiming();
        ImportQoSBytes(*doc, bytes);
        screen.settle();
        benchmark::DoNotOptimize(screen.down->boxWidgetCount());
        state.PauseTiming();
        state.counters["boxes"] = doc->Objects().size();
        state.counters["widgets"] = screen.down->boxWidgetCount() + screen.up->boxWidgetCount();
        state.counters["rss_MB"] = residentMegabytes();
        screen.down.reset(); // the views go before the document
        screen.up.reset();
        doc.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}

// A status window that lets every waiting event through at each step of a long loop.
class RepaintingStatus : public StatusWindow
{
public:
    void Show(const QString&, const QString&) override { QCoreApplication::processEvents(); }
    void SetCaption(const QString&) override {}
    void SetMessage(const QString&) override { QCoreApplication::processEvents(); }
    void SetProgress(int, int) override {}
    void Close() override {}
};

void BM_OpenRepaintingEachStep(benchmark::State& state)
{
    const QByteArray bytes = largeRouterFile();
    for (auto _ : state) {
        state.PauseTiming();
        RepaintingStatus status;
        auto prompt = std::make_unique<ScriptedPrompt>();
        auto doc = std::make_unique<Document>(prompt.get());
        doc->setStatusWindow(&status);
        auto screen = std::make_unique<Screen>(*doc);
        screen->settle();
        state.ResumeTiming();
        ImportQoSBytes(*doc, bytes);
        screen->settle();
        state.PauseTiming();
        screen.reset();
        doc.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}

void BM_ViewsOverOpened(benchmark::State& state)
{
    ScriptedPrompt prompt;
    Document doc(&prompt);
    ImportQoSBytes(doc, largeRouterFile());
    for (auto _ : state) {
        {
            Screen screen(doc);
            screen.settle();
            benchmark::DoNotOptimize(screen.down->boxWidgetCount());
            state.PauseTiming();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}

void BM_AllBoxWidgets(benchmark::State& state)
{
    ScriptedPrompt prompt;
    Document doc(&prompt);
    ImportQoSBytes(doc, largeRouterFile());
    for (auto _ : state) {
        {
            ObjectPageView view(doc.Down1());
            view.realizeAll();
            state.counters["widgets"] = view.boxWidgetCount();
            state.PauseTiming();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}

void BM_ScrollAcross(benchmark::State& state)
{
    ScriptedPrompt prompt;
    Document doc(&prompt);
    ImportQoSBytes(doc, largeRouterFile());
    Screen screen(doc);
    screen.settle();
    ObjectPageView* view = screen.down.get();
    int steps = 0;
    for (auto _ : state) {
        view->setScrollPosition(QPoint(0, 0));
        while (view->scrollBy(QPoint(view->width(), 0))) {
            screen.settle();
            ++steps;
        }
    }
    state.counters["screens"] = benchmark::Counter(steps, benchmark::Counter::kAvgIterations);
}

void BM_DragStep(benchmark::State& state)
{
    ScriptedPrompt prompt;
    Document doc(&prompt);
    ImportQoSBytes(doc, largeRouterFile());
    Screen screen(doc);
    screen.settle();
    ObjectPageView* view = screen.down.get();
    // The third sub class of the first main class: a line above, two filters below.
    QoSObject* dragged = doc.Down1()->ObjectAt(2, 1);
    QoSObjectBox* box = view->box(dragged->Name());
    const QPoint start = box->mapToGlobal(QPoint(10, 5));
    view->mover()->Press(box, start);
    int step = 0;
    for (auto _ : state) {
        // To and fro over two cells, so that the page never scrolls.
        const int dx = (step++ % 200) < 100 ? step % 100 : 100 - step % 100;
        view->mover()->Move(start + QPoint(4 * dx, dx));
        screen.settle();
    }
    view->mover()->Release(start);
}

void BM_RenderPage(benchmark::State& state)
{
    QFile file(QStringLiteral(TARNWICK_SAMPLES "/home-router.qos.txt"));
    file.open(QIODevice::ReadOnly);
    ScriptedPrompt prompt;
    Document doc(&prompt);
    ImportQoSBytes(doc, file.readAll());
    for (auto _ : state) {
        const QImage image = RenderObjectPage(doc.Down1());
        benchmark::DoNotOptimize(image.constBits());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// The view of the down page of an opened document, the size of a screen, painted once.
struct ShownPage
{
    ScriptedPrompt prompt;
    Document doc{&prompt};
    std::unique_ptr<ObjectPageView> view;

    explicit ShownPage(const QByteArray& bytes) { ImportQoSBytes(doc, bytes); }
    ~ShownPage()
    {
        view.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // The view exists, hidden, as the page of a tab not yet chosen.
    void make()
    {
        view.reset(new ObjectPageView(doc.Down1()));
        view->resize(1280, 800);
        QCoreApplication::sendPostedEvents();
    }
    void show()
    {
        view->show();
        paint();
    }
    // Everything the view waits for, up to the picture on the (offscreen) screen.
    void paint()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
};

void BM_ShowPage(benchmark::State& state)
{
    const QByteArray bytes = shapeFile(int(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        auto page = std::make_unique<ShownPage>(bytes);
        QElapsedTimer clock;
        clock.start();
        page->make();
        state.counters["make_ms"] = double(clock.nsecsElapsed()) / 1e6;
        state.ResumeTiming();
        page->show();
        state.PauseTiming();
        state.counters["boxes"] = page->doc.Down1()->ObjectCount();
        state.counters["widgets"] = page->view->boxWidgetCount() + page->view->connectorWidgetCount();
        page.reset();
        state.ResumeTiming();
    }
}

// Reading the file while the page is on screen, up to its first picture.
void BM_OpenShown(benchmark::State& state)
{
    const QByteArray bytes = shapeFile(int(state.range(0)));
    {
        // What reading takes without any view, for comparison.
        ScriptedPrompt prompt;
        Document doc(&prompt);
        QElapsedTimer clock;
        clock.start();
        ImportQoSBytes(doc, bytes);
        state.counters["read_alone_ms"] = double(clock.nsecsElapsed()) / 1e6;
    }
    for (auto _ : state) {
        state.PauseTiming();
        auto page = std::make_unique<ShownPage>(QByteArray());
        page->make();
        page->show();
        state.ResumeTiming();
        ImportQoSBytes(page->doc, bytes);
        page->paint();
        state.PauseTiming();
        page.reset();
        state.ResumeTiming();
    }
}

void BM_ScrollStep(benchmark::State& state)
{
    ShownPage page(shapeFile(int(state.range(0))));
    page.make();
    page.show();
    ObjectPageView* view = page.view.get();
    const bool down = state.range(1) != 0;
    for (auto _ : state) {
        state.PauseTiming();
        view->setScrollPosition(QPoint(0, 0));
        page.paint();
        state.ResumeTiming();
        const bool moved =
            view->scrollBy(down ? QPoint(0, view->pane()->height()) : QPoint(view->pane()->width(), 0));
        page.paint();
        if (!moved) {
            state.SkipWithError("the page did not move");
            break;
        }
    }
}

} // namespace

BENCHMARK(BM_OpenWithViews)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_OpenRepaintingEachStep)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_ViewsOverOpened)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AllBoxWidgets)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_ScrollAcross)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DragStep)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RenderPage)->Unit(benchmark::kMillisecond);
// 0: 16 000 classes as wide main classes; otherwise one class with that many filters.
BENCHMARK(BM_ShowPage)
    ->Unit(benchmark::kMillisecond)
    ->Arg(0)
    ->Arg(5000)
    ->Arg(10000)
    ->Arg(20000)
    ->Iterations(2);
BENCHMARK(BM_OpenShown)->Unit(benchmark::kMillisecond)->Arg(0)->Arg(20000)->Iterations(1);
BENCHMARK(BM_ScrollStep)
    ->Unit(benchmark::kMillisecond)
    ->ArgNames({"shape", "down"})
    ->Args({0, 0})
    ->Args({0, 1})
    ->Args({5000, 0})
    ->Args({5000, 1})
    ->Args({10000, 0})
    ->Args({10000, 1})
    ->Args({20000, 0})
    ->Args({20000, 1})
    ->Iterations(2);

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
