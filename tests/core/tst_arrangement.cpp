#include "base/scriptedprompt.h"
#include "model/arrangement.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosconnector.h"
#include "pagescript.h"

#include <QRandomGenerator>
#include <QTest>

// Where new boxes go: free columns, sub classes right of their siblings with whole columns
// shifted, filters in rows from 4 down, and a page that grows when it must.
class TestArrangement : public QObject
{
    Q_OBJECT
private slots:
    void cells_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("size");
        QTest::addColumn<QStringList>("messages");

        const QStringList none;
        // clang-format off
        QTest::newRow("main classes take the leftmost free columns") << "C C C" << "C1@0,0 C2@1,0 C3@2,0" << "6x5" << none;
        QTest::newRow("seventh main class widens the page")
            << "C C C C C C C" << "C1@0,0 C2@1,0 C3@2,0 C4@3,0 C5@4,0 C6@5,0 C7@6,0" << "7x5" << none;
        QTest::newRow("first sub class stands below its parent") << "C C C S3" << "C1@0,0 C2@1,0 C3@2,0 C4@2,1" << "6x5" << none;
        QTest::newRow("second sub class shifts the columns right of it")
            << "C C C C S3 S3" << "C1@0,0 C2@1,0 C3@2,0 C4@4,0 C5@2,1 C6@3,1" << "6x5" << none;
        QTest::newRow("filters shift with their column")
            << "C C S1 F2 F3 S1" << "C1@0,0 C2@2,0 C3@0,1 F1@2,4 F2@0,4 C4@1,1" << "6x5" << none;
        QTest::newRow("second sub class of the rightmost class on a full page widens it")
            << "C C C C C C S6 S6" << "C1@0,0 C2@1,0 C3@2,0 C4@3,0 C5@4,0 C6@5,0 C7@5,1 C8@6,1" << "7x5" << none;
        QTest::newRow("first filter goes to row 4 and the page keeps 5 rows")
            << "C C C C C C F6" << "C1@0,0 C2@1,0 C3@2,0 C4@3,0 C5@4,0 C6@5,0 F1@5,4" << "6x5" << none;
        QTest::newRow("second filter grows the page") << "C F1 F1" << "C1@0,0 F1@0,4 F2@0,5" << "6x6" << none;
        QTest::newRow("a column with a sub class only is not free") << "C S1 S1 C" << "C1@0,0 C2@0,1 C3@1,1 C4@2,0" << "6x5" << none;
        QTest::newRow("a parent number that names no class makes a main class") << "C S9" << "C1@0,0 C2@1,0" << "6x5" << none;
        QTest::newRow("rows stop at 3") << "C S1 S2 S3 S4" << "C1@0,0 C2@0,1 C3@0,2 C4@0,3" << "6x5"
            << QStringList{"Hinzufügen nicht möglich. Keine weitere Ebene möglich."};
        QTest::newRow("no sub class under a class with filters") << "C F1 S1" << "C1@0,0 F1@0,4" << "6x5"
            << QStringList{"Hinzufügen nicht möglich. Diese Klasse hat untergeordnete Filter!"};
        QTest::newRow("no filter under a class with sub classes") << "C S1 F1" << "C1@0,0 C2@0,1" << "6x5"
            << QStringList{"Hinzufügen nicht möglich. Diese Klasse hat untergeordnete Klassen!"};
        QTest::newRow("a filter needs a class") << "C F0" << "C1@0,0" << "6x5"
            << QStringList{"Hinzufügen nicht möglich. Filter hat keine übergeordnete Klasse"};
        // clang-format on
    }
    void cells()
    {
        QFETCH(QString, script);
        QFETCH(QString, layout);
        QFETCH(QString, size);
        QFETCH(QStringList, messages);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        PageScript::run(doc.Down1(), script);
        QCOMPARE(PageScript::layout(doc.Down1()), layout);
        QCOMPARE(PageScript::size(doc.Down1()), size);
        QCOMPARE(prompt.messages(), messages);
        for (const QoSObject* o : doc.Down1()->ContainedObjects()) // the cell index follows every shift
            QCOMPARE(doc.Down1()->ObjectAt(o->MatrixX(), o->MatrixY()), o);
    }

    // A sibling filter dragged down into the row a new filter would take: the new one goes to
    // the first free row below, never on top of it.
    void newFilterNeverHidesAnother_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("moved"); // filter number dragged to row movedTo
        QTest::addColumn<int>("movedTo");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("size");
        // clang-format off
        QTest::newRow("row free") << "C F1" << 1 << 4 << "0,5" << "6x6";
        QTest::newRow("sibling moved into the row") << "C F1 F1" << 1 << 6 << "0,7" << "6x8";
        QTest::newRow("a free row above the taken one is not taken") << "C F1 F1" << 2 << 9 << "0,6" << "6x10";
        // clang-format on
    }
    void newFilterNeverHidesAnother()
    {
        QFETCH(QString, script);
        QFETCH(int, moved);
        QFETCH(int, movedTo);
        Document doc;
        ObjectPage* page = doc.Down1();
        PageScript::run(page, script);
        qint32 cols = 0, rows = movedTo + 1;
        page->SetGridDimensions(cols, rows);
        PageScript::flt(doc, moved)->SetMatrixY(qint16(movedTo));
        const int before = int(page->ContainedObjects().size());
        PageScript::run(page, QStringLiteral("F1"));
        const QoSObject* added = page->ContainedObjects().value(before);
        QVERIFY(added);
        QTEST(QStringLiteral("%1,%2").arg(added->MatrixX()).arg(added->MatrixY()), "cell");
        QCOMPARE(page->ObjectAt(added->MatrixX(), added->MatrixY()), added);
        QTEST(PageScript::size(page), "size");
    }

    // A new main class takes the leftmost column that holds no box within the rows: a box
    // moved below them leaves its column free.
    void freeColumnSearch()
    {
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C C C C"));
        PageScript::cls(doc, 1)->SetMatrixX(3);
        PageScript::cls(doc, 3)->SetMatrixY(9);
        PageScript::run(doc.Down1(), QStringLiteral("C C C"));
        QCOMPARE(PageScript::layout(doc.Down1()),
                 QStringLiteral("C1@3,0 C2@1,0 C3@2,9 C4@3,0 C5@0,0 C6@2,0 C7@4,0"));
    }

    // The box added first shows in a shared cell; when it leaves, the next one does.
    void twoBoxesInOneCell()
    {
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C C"));
        PageScript::cls(doc, 1)->SetMatrixX(1);
        QCOMPARE(doc.Down1()->ObjectAt(1, 0), PageScript::cls(doc, 1));
        PageScript::cls(doc, 1)->SetMatrixX(0);
        QCOMPARE(doc.Down1()->ObjectAt(1, 0), PageScript::cls(doc, 2));
    }

    void pictureOrder_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QStringList>("moves"); // "C1>2,0": the box goes to that cell
        QTest::addColumn<QString>("order");

        QTest::newRow("an empty page") << "" << QStringList() << "";
        QTest::newRow("main classes left to right") << "C C C" << QStringList() << "C1 C2 C3";
        QTest::newRow("a row before the columns of the next")
            << "C C S2 S1 F3 F4" << QStringList() << "C1 C2 C4 C3 F2 F1";
        QTest::newRow("the earlier box keeps its turn in a shared cell")
            << "C C C" << QStringList{"C1>2,0"} << "C2 C1 C3";
        QTest::newRow("a moved box takes its new place") << "C C F1" << QStringList{"C1>3,2"} << "C2 C1 F1";
    }
    void pictureOrder()
    {
        QFETCH(QString, script);
        QFETCH(QStringList, moves);
        QFETCH(QString, order);
        Document doc;
        ObjectPage* page = doc.Down1();
        PageScript::run(page, script);
        for (const QString& move : moves) {
            const QStringList cell = move.section(u'>', 1).split(u',');
            QoSObject* o = PageScript::byShortName(doc, move.section(u'>', 0, 0));
            o->SetMatrixX(qint16(cell[0].toInt()));
            o->SetMatrixY(qint16(cell[1].toInt()));
        }
        QStringList forward;
        for (QoSObject* o = page->NextInPictureOrder(nullptr, true); o; o = page->NextInPictureOrder(o, true))
            forward << PageScript::shortName(o);
        QCOMPARE(forward.join(u' '), order);
        QStringList written;
        for (const QoSObject* o : page->ObjectsInWriteOrder())
            written << PageScript::shortName(o);
        QCOMPARE(forward, written);
        QStringList backward;
        for (QoSObject* o = page->NextInPictureOrder(nullptr, false); o;
             o = page->NextInPictureOrder(o, false))
            backward.prepend(PageScript::shortName(o));
        QCOMPARE(backward, forward);
        // A box of another page has no place in this one.
        PageScript::run(doc.Up1(), QStringLiteral("C"));
        QCOMPARE(page->NextInPictureOrder(doc.Up1()->ContainedObjects().first(), true), nullptr);
    }

    // While a file is read, the page keeps its columns as a list and places every box once at
    // the end. For any sequence of additions that must give the cells and the page size that
    // the editor's single steps give.
    void readingArrangesAsTheSingleSteps_data()
    {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<int>("cols");
        QTest::addColumn<int>("rows");
        for (quint32 seed = 1; seed <= 30; ++seed)
            QTest::addRow("seed %u on %d x %d", seed, 3 + int(seed % 6), 3 + int(seed % 4))
                << seed << 3 + int(seed % 6) << 3 + int(seed % 4);
    }
    void readingArrangesAsTheSingleSteps()
    {
        QFETCH(quint32, seed);
        QFETCH(int, cols);
        QFETCH(int, rows);
        // A script of additions: main classes, sub classes and filters under earlier classes,
        // refusals included (too deep, a class with filters, a filter under sub classes).
        QRandomGenerator rng(seed);
        QStringList steps;
        int classes = 0;
        for (int i = 0; i < 60; ++i) {
            const int kind = int(rng.bounded(10));
            if (kind < 2 || classes == 0) {
                steps << QStringLiteral("C");
                ++classes;
            } else if (kind < 6) {
                steps << QStringLiteral("S%1").arg(1 + rng.bounded(classes));
                ++classes;
            } else {
                steps << QStringLiteral("F%1").arg(1 + rng.bounded(classes));
            }
        }
        const QString script = steps.join(u' ');

        ScriptedPrompt stepPrompt;
        Document stepwise(&stepPrompt);
        ScriptedPrompt readPrompt;
        Document read(&readPrompt);
        for (Document* doc : {&stepwise, &read}) {
            qint32 c = cols, r = rows;
            doc->Down1()->SetGridDimensions(c, r);
        }
        PageScript::run(stepwise.Down1(), script);
        {
            const Document::ImportScope scope(read);
            PageScript::run(read.Down1(), script);
            // The list must really be in use, or this test compares the single steps with themselves.
            QCOMPARE(read.Down1()->arrangement().HasListedColumns(), rows >= 4);
        }
        QCOMPARE(PageScript::layout(read.Down1()), PageScript::layout(stepwise.Down1()));
        QCOMPARE(PageScript::size(read.Down1()), PageScript::size(stepwise.Down1()));
        // The same refusals, shown one by one in the editor and not at all while reading.
        QVERIFY(!stepPrompt.messages().isEmpty());
        QCOMPARE(readPrompt.messages(), QStringList());
        for (QoSObject* o : read.Down1()->ContainedObjects()) {
            QVERIFY(read.Down1()->ObjectAt(o->MatrixX(), o->MatrixY()));
            QCOMPARE(o->Left(), stepwise.Object(o->Name())->Left());
            QCOMPARE(o->Top(), stepwise.Object(o->Name())->Top());
            if (o->LineTop())
                QCOMPARE(o->LineTop()->Top(), stepwise.Object(o->Name())->LineTop()->Top());
        }
    }
};

QTEST_GUILESS_MAIN(TestArrangement)
#include "tst_arrangement.moc"
