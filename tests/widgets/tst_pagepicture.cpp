#include "../../bench/nesteddocument.h"
#include "app/sheetlayout.h"
#include "base/scriptedprompt.h"
#include "file/qosreader.h"
#include "mainwindowfixture.h"
#include "model/qosobjectbox.h"
#include "page/objectpageview.h"
#include "page/pageboxes.h"
#include "page/pageprinter.h"
#include "page/pagerenderer.h"
#include "pagescript.h"

#include <QApplication>
#include <QFile>
#include <QPaintEngine>
#include <QPainter>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

namespace {

// The texts of an SVG document, in order, up to where it cannot be read.
QStringList svgTexts(const QByteArray& svg)
{
    QStringList texts;
    QXmlStreamReader xml(svg);
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"text")
            texts << xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
    return texts;
}

// A printer that keeps what is printed on it: the texts of each sheet, the parts of the page
// drawn (page pixels) and where they landed on the paper, and how many box widgets lived at
// most while it was drawn on.
class SheetRecorder final : public QPaintDevice, public QPaintEngine
{
public:
    SheetRecorder() : QPaintEngine(AllFeatures) {}
    QList<QStringList> sheets{{}};
    QList<QRectF> parts;
    QRectF onPaper;
    int mostBoxes = 0;

    void nextSheet() { sheets.append(QStringList()); }
    int devType() const override { return QInternal::Printer; }
    QPaintEngine* paintEngine() const override { return const_cast<SheetRecorder*>(this); }
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& state) override
    {
        if (state.state() & DirtyTransform)
            m_transform = state.transform();
    }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawImage(const QRectF& r, const QImage&, const QRectF&, Qt::ImageConversionFlags) override
    {
        parts << r;
        onPaper |= m_transform.mapRect(r);
        int boxes = 0;
        for (QWidget* w : QApplication::allWidgets())
            boxes += qobject_cast<QoSObjectBox*>(w) != nullptr;
        mostBoxes = std::max(mostBoxes, boxes);
    }
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF&, const QTextItem& item) override { sheets.last() << item.text(); }
    Type type() const override { return User; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        // A4 across at 300 dpi, less the margins.
        if (metric == PdmWidth || metric == PdmHeight)
            return metric == PdmWidth ? 3300 : 2300;
        if (metric == PdmWidthMM || metric == PdmHeightMM)
            return metric == PdmWidthMM ? 279 : 195;
        return metric == PdmDevicePixelRatio || metric == PdmDevicePixelRatioScaled
                   ? QPaintDevice::metric(metric)
                   : 300;
    }

private:
    QTransform m_transform;
};

} // namespace

// The page as a picture and on paper: SVG and PNG export, printing sheet by sheet, and the
// window's commands for both.
class TestPagePicture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void svgHoldsEveryCaptionAsText_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("caption"); // "" keeps the captions a box is born with
        QTest::newRow("classes and filters, down") << "C C S1 S2 F3 F4 F4"
                                                   << "";
        QTest::newRow("captions a document must escape") << "C S1 F2"
                                                         << "<Gäste> & \"Büro\" %1";
        QTest::newRow("an empty page") << ""
                                       << "";
    }
    void svgHoldsEveryCaptionAsText()
    {
        QFETCH(QString, script);
        QFETCH(QString, caption);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        ObjectPage* page = doc.Down1();
        PageScript::run(page, script);
        int n = 0;
        QStringList captions;
        for (QoSObject* o : page->ContainedObjects()) {
            if (!caption.isEmpty())
                o->SetCaption(caption.arg(++n));
            if (!o->Caption().isEmpty())
                captions << o->Caption();
        }
        PageRenderer renderer(page);
        const QByteArray svg = renderer.svg();
        const QStringList texts = svgTexts(svg);
        for (const QString& c : std::as_const(captions))
            QVERIFY2(texts.contains(c), qPrintable(c + QStringLiteral(" missing from ") + texts.join(u'|')));
        // The same size in pixels as the PNG picture, as a viewer reads it.
        QCOMPARE(QImage::fromData(svg, "SVG").size(), renderer.image().size());
    }

    // A part of the page, as a sheet shows it, draws nothing beyond its edges: a box or a line
    // that it cuts is cut there.
    void aPartStaysWithinItsEdges_data()
    {
        QTest::addColumn<QPoint>("corner"); // from the middle of the first box
        QTest::addColumn<QSize>("size");
        QTest::newRow("cuts the box's right and bottom half off") << QPoint(-100, -45) << QSize(100, 45);
        QTest::newRow("cuts the box's top and left half off") << QPoint(0, 0) << QSize(300, 400);
    }
    void aPartStaysWithinItsEdges()
    {
        QFETCH(QPoint, corner);
        QFETCH(QSize, size);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        PageScript::run(doc.Down1(), QStringLiteral("C S1 S1 F2"));
        PageRenderer renderer(doc.Down1());
        const QRect area(PageBoxes::rectOf(doc.Down1()->ContainedObjects().first()).center() + corner, size);
        const QColor outside(Qt::magenta);
        QImage image(size + QSize(80, 80), QImage::Format_ARGB32);
        image.fill(outside);
        {
            QPainter painter(&image);
            painter.translate(40, 40);
            renderer.paint(painter, area);
        }
        const QRect drawn(QPoint(40, 40), size);
        int inside = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const bool marked = image.pixelColor(x, y) == outside;
                if (!drawn.contains(x, y))
                    QVERIFY2(marked, qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
                inside += !marked;
            }
        QCOMPARE(inside, size.width() * size.height());
    }

    // A page many sheets wide prints every box, each sheet under its own header, and never
    // holds the widgets of all its boxes at once.
    void aLargePagePrintsSheetBySheet()
    {
        ScriptedPrompt prompt;
        Document doc(&prompt);
        QVERIFY(ImportQoSBytes(doc, NestedQoSFile(200)).complete);
        ObjectPage* page = doc.Down1();
        SheetRecorder printer;
        PagePrinter sheets(page, QStringLiteral("/data/nested.qos.txt"));
        int count = 0;
        {
            QPainter painter(&printer);
            count = sheets.paintSheets(painter, QSizeF(printer.width(), printer.height()), 300,
                                       [&printer] { printer.nextSheet(); });
        }
        QVERIFY2(count > 1, qPrintable(QString::number(count)));
        QCOMPARE(printer.sheets.size(), count);
        for (int i = 0; i < count; ++i)
            QCOMPARE(
                printer.sheets[i],
                QStringList{QStringLiteral("nested.qos.txt – Down – Blatt %1 von %2").arg(i + 1).arg(count)});
        // Every pixel of the page once, on the paper and below the header.
        QRectF all;
        double area = 0;
        for (const QRectF& part : std::as_const(printer.parts)) {
            all |= part;
            area += part.width() * part.height();
        }
        const QSize size = PageRenderer(page).pageSize();
        QCOMPARE(all, QRectF(QPoint(), size));
        QCOMPARE(area, double(size.width()) * size.height());
        QVERIFY(printer.onPaper.top() > 20);
        QVERIFY(QRectF(0, 0, printer.width() + 0.5, printer.height() + 0.5).contains(printer.onPaper));
        QVERIFY2(printer.mostBoxes < int(page->ContainedObjects().size()) / 2,
                 qPrintable(QString::number(printer.mostBoxes)));
    }

    void theWindowExportsThePageShown_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("Allgemein: nothing to export") << 0 << "page.svg" << false;
        QTest::newRow("Down as PNG") << 1 << "page.png" << true;
        QTest::newRow("Up as SVG") << 2 << "page.svg" << true;
    }
    void theWindowExportsThePageShown()
    {
        QFETCH(int, tab);
        QFETCH(QString, name);
        QFETCH(bool, enabled);
        QTemporaryDir dir;
        MainWindowFixture window(dir.filePath(QStringLiteral("config.ini")));
        // A font of its own: the page is drawn with the boxes as the window sizes them.
        QFont small = window.w->font();
        small.setPointSizeF(small.pointSizeF() * 0.7);
        window.w->setFont(small);
        PageScript::run(window.doc().Up1(), QStringLiteral("C S1 F2"));
        window.doc().Up1()->ContainedObjects().first()->SetCaption(QStringLiteral("Gäste"));
        window.w->tabStrip()->setCurrentIndex(tab);
        QAction* exportPage = window.action("itmFileExportPage");
        QAction* print = window.action("itmFilePrint");
        QCOMPARE(exportPage->isEnabled(), enabled);
        QCOMPARE(print->isEnabled(), enabled);
        QVERIFY(print->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_P)));
        if (!enabled)
            return;
        const QString path = dir.filePath(name);
        window.prompt.fileNames << path;
        const auto view = qobject_cast<ObjectPageView*>(window.w->tabStrip()->currentWidget());
        const QSize shown = view->pageSize();
        const auto boxes = [&window] {
            QList<QRectF> out;
            for (const QoSObject* o : window.doc().Objects())
                out << QRectF(o->Left(), o->Top(), o->Width(), o->Height());
            return out;
        };
        const QList<QRectF> before = boxes();
        window.doc().SetModified(false);
        exportPage->trigger();
        QCOMPARE(window.prompt.messages(), QStringList());
        // The page shown, at its size on screen; drawing it changes nothing of the page.
        QCOMPARE(QImage(path).size(), shown);
        QCOMPARE(view->pageSize(), shown);
        QCOMPARE(boxes(), before);
        QVERIFY(!window.doc().IsModified());
        // The page shown, not the other one: only the up page has boxes.
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(svgTexts(file.readAll()).contains(QStringLiteral("Gäste")), name.endsWith(u".svg"));
    }
};

QTEST_MAIN(TestPagePicture)
#include "tst_pagepicture.moc"
