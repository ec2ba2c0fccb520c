#include "base/scriptedprompt.h"
#include "file/qosreader.h"
#include "file/qoswriter.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

// Save, open the saved file, save again: the same bytes, the same boxes, cells, links and
// values. The documents are made as a user makes them, with the editor's own commands, and
// then disarranged as a user would: boxes dragged above their parents, boxes put into one
// cell, pages grown by filters far below the rows of the other page.
namespace {

const QStringList bandwidths{QStringLiteral("768kbit"), QStringLiteral("1.5Mbit"), QStringLiteral("-0.4kbit"),
                             QStringLiteral("2.5kbit"), QStringLiteral("10Mbit"),  QStringLiteral("100")};
const QStringList portLists{QStringLiteral("80"),           QStringLiteral("21,22"),
                            QStringLiteral("6000-6003"),    QStringLiteral("1.5-3"),
                            QStringLiteral("10-5"),         QString(),
                            QStringLiteral("443,8080-8081")};

class Generator
{
public:
    Generator(Document& doc, quint32 seed) : m_doc(doc), m_rng(seed) {}

    void run()
    {
        QoSCommon& common = *m_doc.Common1();
        common.SetQoSInternetBandDown(QStringLiteral("100Mbit"));
        common.SetQoSInternetBandUp(QStringLiteral("1.5Mbit"));
        // Description lines that look like settings must stay text.
        common.SetQoSDescription(QStringLiteral("Büro\r\nQOS_FILTER_1_PORTEXT='ignore'\r\nQOS_CLASS_N='0'"));
        for (ObjectPage* page : {m_doc.Down1(), m_doc.Up1()})
            fill(page);
        for (ObjectPage* page : {m_doc.Down1(), m_doc.Up1()})
            disarrange(page);
    }

private:
    int pick(int n) { return int(m_rng.bounded(n)); }

    QString number(const QoSClass* c) { return QString::number(c->ClassIdx()); }

    void fill(ObjectPage* page)
    {
        QList<QoSClass*> classes;
        const int mains = 1 + pick(3);
        for (int i = 0; i < mains; ++i)
            classes << addClass(page, QStringLiteral("0"));
        for (int i = pick(9); i > 0; --i) {
            QoSClass* parent = classes[pick(int(classes.size()))];
            if (!parent->HasFilters() && parent->MatrixY() < 3)
                classes << addClass(page, number(parent));
        }
        for (QoSClass* c : classes) {
            if (c->HasChildClasses())
                continue;
            // Some classes get many filters, so that the page reaches far below row 5.
            for (int k = pick(c == classes.last() ? 6 : 3); k > 0; --k) {
                const QString ports = portLists[pick(int(portLists.size()))];
                // Every fourth filter has no caption: such a filter is written as it always was.
                const QString caption =
                    pick(4) == 0 ? QString() : QStringLiteral("Filter %1").arg(++m_filters);
                page->AddFilter(number(c),
                                {.ip = QStringLiteral("10.%1.%2.0/24").arg(pick(250)).arg(pick(250)),
                                 .port = ports,
                                 .type = ports.isEmpty() ? QString() : QStringLiteral("client"),
                                 .caption = caption});
            }
        }
        classes[pick(int(classes.size()))]->SetDefaultClass(true);
    }

    QoSClass* addClass(ObjectPage* page, const QString& parent)
    {
        return page->AddClass(parent, {.minBandwidth = bandwidths[pick(int(bandwidths.size()))],
                                       .maxBandwidth = bandwidths[pick(int(bandwidths.size()))],
                                       .direction = page->Direction(),
                                       .prio = QString::number(pick(8)),
                                       .caption = QStringLiteral("Klasse %1").arg(++m_classes)});
    }

    // A free cell of the rows first..last, or none.
    std::optional<std::pair<int, int>> freeCell(ObjectPage* page, int first, int last)
    {
        for (int attempt = 0; attempt < 20; ++attempt) {
            const int x = pick(page->prop().Cols);
            const int y = first + pick(last - first + 1);
            if (!page->ObjectAt(x, y))
                return std::make_pair(x, y);
        }
        return std::nullopt;
    }

    void disarrange(ObjectPage* page)
    {
        const QList<QoSObject*> boxes = page->ContainedObjects();
        for (QoSObject* o : boxes) {
            switch (pick(6)) {
            case 0: // dragged up: a sub class into the row of main classes, a filter into a class row
                if (o->ParentQoSObject())
                    if (const auto cell = freeCell(page, 0, o->IsClass() ? 0 : 2)) {
                        o->SetMatrixX(qint16(cell->first));
                        o->SetMatrixY(qint16(cell->second));
                    }
                break;
            case 1: // put into the cell of another box of its kind
                if (o->IsFilter()) {
                    for (QoSObject* other : boxes)
                        if (other != o && other->IsFilter()) {
                            o->SetMatrixX(other->MatrixX());
                            o->SetMatrixY(other->MatrixY());
                            break;
                        }
                }
                break;
            default:
                break;
            }
        }
    }

    Document& m_doc;
    QRandomGenerator m_rng;
    int m_classes = 0;
    int m_filters = 0;
};

// Every box of a page as a line, in the order of the file, with the caption of its parent.
QStringList picture(ObjectPage* page)
{
    QStringList out;
    for (QoSObject* o : page->ObjectsInWriteOrder()) {
        const QoSClass* parent = o->ParentQoSObject();
        QString line = QStringLiteral("%1 %2,%3 \"%4\" under \"%5\"")
                           .arg(o->TypeName())
                           .arg(o->MatrixX())
                           .arg(o->MatrixY())
                           .arg(o->Caption(), parent ? parent->Caption() : QStringLiteral("-"));
        if (auto* c = qobject_cast<QoSClass*>(o))
            line += QStringLiteral(" %1 %2 %3 %4%5")
                        .arg(c->QoSMinBandWidth(), c->QoSMaxBandWidth(), c->QoSDirection(), c->QoSPrio(),
                             c->DefaultClass() ? QStringLiteral(" default") : QString());
        else if (auto* f = qobject_cast<QoSFilter*>(o))
            line +=
                QStringLiteral(" %1 [%2] %3 %4").arg(f->QoSIP(), f->QoSPort(), f->QoSType(), f->QoSOption());
        out << line;
    }
    return out;
}

int boxes(const Document& doc)
{
    return doc.Down1()->ObjectCount() + doc.Up1()->ObjectCount();
}

} // namespace

class TestRoundTrip : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { qputenv("SOURCE_DATE_EPOCH", "1700000000"); }

    void savedDocumentsReadBackWhole_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 40; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }
    void savedDocumentsReadBackWhole()
    {
        QFETCH(quint32, seed);
        ScriptedPrompt prompt;
        Document original(&prompt);
        Generator(original, seed).run();
        const QByteArray saved = ExportQoSBytes(original);

        ScriptedPrompt again;
        Document reopened(&again);
        const ImportReport report = ImportQoSBytes(reopened, saved);
        QVERIFY2(report.complete, qPrintable(report.Message()));
        QCOMPARE(again.messages(), QStringList());
        QCOMPARE(boxes(reopened), boxes(original));
        QCOMPARE(picture(reopened.Down1()), picture(original.Down1()));
        QCOMPARE(picture(reopened.Up1()), picture(original.Up1()));
        QCOMPARE(reopened.Common1()->QoSDescription(), original.Common1()->QoSDescription());
        QCOMPARE(reopened.Common1()->QoSInternetBandUp(), QStringLiteral("1.5Mbit"));
        QCOMPARE(ExportQoSBytes(reopened), saved);

        // Directions written by hand in another case name the same pages, and the default
        // classes stay what they were.
        QByteArray edited = saved;
        edited.replace("DIRECTION='up'", "DIRECTION='Up'").replace("DIRECTION='down'", "DIRECTION='DOWN'");
        QVERIFY(edited != saved);
        Document handEdited;
        QVERIFY(ImportQoSBytes(handEdited, edited).complete);
        QCOMPARE(picture(handEdited.Down1()), picture(original.Down1()));
        QCOMPARE(picture(handEdited.Up1()), picture(original.Up1()));
        QCOMPARE(ExportQoSBytes(handEdited), saved);
    }

    // More entries than a 16-bit number holds: one filter of 40000 ports and more after it.
    void entriesBeyondSixteenBitsReadBackWhole()
    {
        Document original;
        Generator(original, 7).run();
        ObjectPage* up = original.Up1();
        QoSClass* c = up->AddClass(QStringLiteral("0"), {.direction = QStringLiteral("up"),
                                                         .prio = QStringLiteral("1"),
                                                         .caption = QStringLiteral("Viele")});
        for (const QString& ports :
             {QStringLiteral("1-40000"), QStringLiteral("22"), QStringLiteral("5060-5062")})
            up->AddFilter(c, {.port = ports,
                              .type = QStringLiteral("client"),
                              .caption = QStringLiteral("nach %1").arg(ports)});
        const QByteArray saved = ExportQoSBytes(original);
        // The entries run on past 16 bits; the filter's own 16-bit number keeps only what fits.
        const auto match = QRegularExpression(QStringLiteral("#QOS_FILTER_(\\d+)_CAPTION='nach 22'\r\n"))
                               .match(QString::fromLatin1(saved));
        QVERIFY(match.hasMatch() && match.captured(1).toInt() > 40000);
        QCOMPARE(qobject_cast<QoSFilter*>(up->ContainedObjects().last())->FilterIdx(), qint16(0));

        Document reopened;
        const ImportReport report = ImportQoSBytes(reopened, saved);
        QVERIFY2(report.complete, qPrintable(report.Message()));
        QVERIFY(report.entriesRead > 40000);
        QCOMPARE(picture(reopened.Down1()), picture(original.Down1()));
        QCOMPARE(picture(reopened.Up1()), picture(original.Up1()));
        QCOMPARE(ExportQoSBytes(reopened), saved);
    }
};

QTEST_GUILESS_MAIN(TestRoundTrip)
#include "tst_roundtrip.moc"
