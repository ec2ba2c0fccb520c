#include "model/classcalculator.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "pagescript.h"

#include <QTest>

// The class calculator: its figures for main and sub classes, the two copying labels,
// Apply, auto apply and the moves through the tree.
class TestClassCalculator : public QObject
{
    Q_OBJECT

    static QoSClass* add(ObjectPage* page, int parent, const QString& min, const QString& max)
    {
        return page->AddClass(QString::number(parent), {.minBandwidth = min,
                                                        .maxBandwidth = max,
                                                        .direction = page->Direction(),
                                                        .prio = QStringLiteral("0")});
    }

    // "U", "D", "L", "R" for each move the calculator offers, "-" for one it does not.
    static QString moves(const ClassCalculator& calc)
    {
        return QString(calc.CanMoveUp() ? u'U' : u'-') + (calc.CanMoveDown() ? u'D' : u'-') +
               (calc.CanMoveLeft() ? u'L' : u'-') + (calc.CanMoveRight() ? u'R' : u'-');
    }

private slots:
    // A minimum the user locked keeps its value; the calculator says why it does not write it.
    void aLockedMinimumIsNotWritten()
    {
        Document doc;
        QoSClass* c = add(doc.Down1(), 0, QStringLiteral("300kbit"), QStringLiteral("700kbit"));
        ClassCalculator calc;
        calc.SetQoSClass(c);
        c->MinField()->SetLocked(true);
        QVERIFY(!calc.CanApply());
        calc.NewMin()->SetBandwidth(QStringLiteral("500kbit"));
        QVERIFY(!calc.Apply());
        QCOMPARE(c->QoSMinBandWidth(), QStringLiteral("300kbit"));
        QVERIFY(!calc.ErrorText().isEmpty());
        c->MinField()->SetLocked(false);
        QVERIFY(calc.CanApply());
        QVERIFY(calc.Apply());
        QCOMPARE(c->QoSMinBandWidthKBit(), 500);
    }

    void figures_data()
    {
        QTest::addColumn<QString>("lineDown");
        QTest::addColumn<QString>("lineUp");
        QTest::addColumn<bool>("upPage");
        // Classes on the page: a parent of 1000kbit with three children of 300, 200, 100 kbit.
        QTest::addColumn<int>("shown"); // 1 the parent, 2..4 the children
        QTest::addColumn<int>("used");
        QTest::addColumn<int>("available");
        QTest::addColumn<int>("free");
        QTest::addColumn<int>("after");
        QTest::addColumn<QString>("moves");
        QTest::addColumn<QString>("parentMax"); // as the panel shows it
        // clang-format off
        QTest::newRow("first child") << "768kbit" << "128kbit" << false << 2 << 600 << 1000 << 700 << 400 << "U--R" << "1000 kbit";
        QTest::newRow("middle child") << "768kbit" << "128kbit" << false << 3 << 600 << 1000 << 600 << 400 << "U-LR" << "1000 kbit";
        QTest::newRow("last child") << "768kbit" << "128kbit" << false << 4 << 600 << 1000 << 500 << 400 << "U-L-" << "1000 kbit";
        QTest::newRow("main class, down line") << "4000kbit" << "128kbit" << false << 1 << 1000 << 4000 << 4000
                                               << 3000 << "-D--" << "4000 kbit";
        QTest::newRow("main class, up line") << "4000kbit" << "1500kbit" << true << 1 << 1000 << 1500 << 1500 << 500
                                             << "-D--" << "1500 kbit";
        // clang-format on
        // The calculator converts the line speed; the validation limit would take the bare 2.
        // clang-format off
        QTest::newRow("line speed in Mbit") << "2Mbit" << "128kbit" << false << 1 << 1000 << 2048 << 2048 << 1048
                                            << "-D--" << "2048 kbit (2Mbit)";
        QTest::newRow("overbooked line") << "500kbit" << "128kbit" << false << 1 << 1000 << 500 << 500 << -500
                                         << "-D--" << "500 kbit";
        // clang-format on
    }
    void figures()
    {
        QFETCH(QString, lineDown);
        QFETCH(QString, lineUp);
        QFETCH(bool, upPage);
        QFETCH(int, shown);
        Document doc;
        doc.Common1()->SetQoSInternetBandDown(lineDown);
        doc.Common1()->SetQoSInternetBandUp(lineUp);
        ObjectPage* page = upPage ? doc.Up1() : doc.Down1();
        QoSClass* parent = add(page, 0, QStringLiteral("1000kbit"), QStringLiteral("1000kbit"));
        add(page, parent->ClassIdx(), QStringLiteral("300kbit"), QString());
        add(page, parent->ClassIdx(), QStringLiteral("200kbit"), QString());
        add(page, parent->ClassIdx(), QStringLiteral("100kbit"), QString());

        ClassCalculator calc;
        calc.SetQoSClass(PageScript::cls(doc, shown));
        QTEST(calc.UsesMin(), "used");
        QTEST(calc.AvailableMin(), "available");
        QTEST(calc.FreeMin(), "free");
        QTEST(calc.ParentMaxText(), "parentMax");
        QCOMPARE(calc.NewMin()->kbit(), PageScript::cls(doc, shown)->QoSMinBandWidthKBit());
        QTEST(*calc.NewMinAfter(), "after");
        QTEST(moves(calc), "moves");
        QVERIFY(calc.ErrorText().isEmpty());
    }

    void copyLabels_data()
    {
        QTest::addColumn<QString>("siblingMin");
        QTest::addColumn<bool>("freeLabel");
        QTest::addColumn<int>("newMin");
        // clang-format off
        QTest::newRow("free figure copied") << "200kbit" << true << 800;
        QTest::newRow("available figure copied") << "200kbit" << false << 1000;
        QTest::newRow("free zero is not copied") << "1000kbit" << true << 300;
        QTest::newRow("free below zero is not copied") << "1200kbit" << true << 300;
        // clang-format on
    }
    void copyLabels()
    {
        QFETCH(QString, siblingMin);
        QFETCH(bool, freeLabel);
        Document doc;
        QoSClass* parent = add(doc.Down1(), 0, QStringLiteral("1000kbit"), QStringLiteral("1000kbit"));
        QoSClass* c = add(doc.Down1(), parent->ClassIdx(), QStringLiteral("300kbit"), QString());
        add(doc.Down1(), parent->ClassIdx(), siblingMin, QString());
        ClassCalculator calc;
        calc.SetQoSClass(c);
        freeLabel ? calc.CopyFreeMin() : calc.CopyAvailableMin();
        QTEST(calc.NewMin()->kbit(), "newMin");
        QCOMPARE(*calc.NewMinAfter(), calc.FreeMin() - calc.NewMin()->kbit());
    }

    void applyStoresAndValidates()
    {
        Document doc;
        QoSClass* parent = add(doc.Down1(), 0, QStringLiteral("1000kbit"), QStringLiteral("1000kbit"));
        QoSClass* a = add(doc.Down1(), parent->ClassIdx(), QStringLiteral("300kbit"), QString());
        QoSClass* b = add(doc.Down1(), parent->ClassIdx(), QStringLiteral("200kbit"), QString());
        ClassCalculator calc;
        calc.SetQoSClass(a);
        calc.NewMin()->SetValue(QStringLiteral("900")); // typed: 900 + 200 exceed the parent's 1000
        QCOMPARE(*calc.NewMinAfter(), -100);
        QCOMPARE(a->QoSMinBandWidthKBit(), 300); // nothing stored before Apply
        doc.SetModified(false);
        QVERIFY(calc.Apply());
        QCOMPARE(a->QoSMinBandWidth(), QStringLiteral("900kbit"));
        QVERIFY(doc.IsModified());
        // The parent was validated: both siblings' minimums are now marked.
        QVERIFY(!a->MinField()->IsValid());
        QVERIFY(!b->MinField()->IsValid());
        QCOMPARE(calc.UsesMin(), 1100);
        QCOMPARE(calc.FreeMin(), 800);
    }

    void moves_data()
    {
        QTest::addColumn<QString>("move");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        // clang-format off
        QTest::newRow("up to the parent") << "up" << 3 << 1;
        QTest::newRow("down to the first sub class") << "down" << 1 << 2;
        QTest::newRow("down from a class with filters only") << "down" << 4 << 4;
        QTest::newRow("left to the sibling before") << "left" << 3 << 2;
        QTest::newRow("right to the sibling after") << "right" << 2 << 3;
        QTest::newRow("right from the last sibling") << "right" << 4 << 4;
        QTest::newRow("up from a main class") << "up" << 1 << 1;
        // clang-format on
    }
    void moves()
    {
        QFETCH(QString, move);
        QFETCH(int, from);
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C S1 S1 S1 F4"));
        ClassCalculator calc;
        calc.SetPage(doc.Down1());
        PageScript::cls(doc, from)->SetSelected(true);
        QCOMPARE(calc.CurrentClass(), PageScript::cls(doc, from));
        if (move == u"up")
            calc.MoveUp();
        else if (move == u"down")
            calc.MoveDown();
        else if (move == u"left")
            calc.MoveLeft();
        else
            calc.MoveRight();
        QFETCH(int, to);
        QCOMPARE(doc.Down1()->SelectedClass(), PageScript::cls(doc, to));
        QCOMPARE(calc.CurrentClass(), PageScript::cls(doc, to)); // it follows the selection
    }

    // The pending new minimum goes to the class shown so far, whether the calculator's arrow
    // moves on or the page selects another box (a click on it).
    void autoApply_data()
    {
        QTest::addColumn<bool>("byPage");
        QTest::addColumn<bool>("autoApply");
        QTest::addColumn<bool>("typed");
        QTest::addColumn<int>("stored");
        QTest::addColumn<bool>("modified");
        for (const bool byPage : {false, true}) {
            const char* way = byPage ? "page" : "arrow";
            // clang-format off
            QTest::addRow("%s: auto apply stores the typed minimum", way) << byPage << true << true << 450 << true;
            QTest::addRow("%s: auto apply leaves an untouched minimum", way) << byPage << true << false << 1 << false;
            QTest::addRow("%s: without auto apply nothing is stored", way) << byPage << false << true << 1 << false;
            // clang-format on
        }
    }
    void autoApply()
    {
        QFETCH(bool, byPage);
        QFETCH(bool, autoApply);
        QFETCH(bool, typed);
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C S1 S1"));
        ClassCalculator calc;
        calc.SetPage(doc.Down1());
        calc.SetAutoApply(autoApply);
        PageScript::cls(doc, 2)->SetSelected(true);
        doc.SetModified(false);
        if (typed)
            calc.NewMin()->SetValue(QStringLiteral("450"));
        if (byPage)
            PageScript::cls(doc, 3)->SetSelected(true);
        else
            calc.MoveRight();
        QCOMPARE(calc.CurrentClass(), PageScript::cls(doc, 3));
        QTEST(PageScript::cls(doc, 2)->QoSMinBandWidthKBit(), "stored");
        QCOMPARE(PageScript::cls(doc, 3)->QoSMinBandWidthKBit(), 1); // not the class shown now
        QTEST(doc.IsModified(), "modified");
    }

    // What the panel shows, decided here: each figure's text, what is left after the new minimum
    // and whether that is a warning. The class shown has 300kbit of a parent's 1000kbit.
    void shownTexts_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QString>("siblingMin");
        QTest::addColumn<QString>("typed");   // the new minimum, in kbit
        QTest::addColumn<QString>("figures"); // used, available, free
        QTest::addColumn<QString>("after");
        QTest::addColumn<bool>("overbooked");
        QTest::addColumn<QString>("heading");
        const QString ok = QStringLiteral("Klasse: Class 2");
        // clang-format off
        QTest::newRow("no class") << false << "200kbit" << "" << "||" << "" << false << "Keine Klasse ausgewählt";
        QTest::newRow("something left") << true << "200kbit" << "500" << "500 kbit|1000 kbit|800 kbit" << "300 kbit" << false << ok;
        QTest::newRow("exactly used up") << true << "200kbit" << "800" << "500 kbit|1000 kbit|800 kbit" << "0 kbit" << false << ok;
        QTest::newRow("promised more than there is") << true << "200kbit" << "900" << "500 kbit|1000 kbit|800 kbit" << "-100 kbit" << true << ok;
        QTest::newRow("the subtraction overflows") << true << "1302kbit" << "2147483647" << "1602 kbit|1000 kbit|-302 kbit" << "Überlauf" << true << ok;
        QTest::newRow("the sum overflows") << true << "2147483647kbit" << "" << "0 kbit|0 kbit|0 kbit" << "Überlauf" << true
            << "Klasse: Class 2\n";
        // clang-format on
    }
    void shownTexts()
    {
        QFETCH(bool, shown);
        QFETCH(QString, siblingMin);
        QFETCH(QString, typed);
        QFETCH(QString, heading);
        Document doc;
        QoSClass* parent = add(doc.Down1(), 0, QStringLiteral("1000kbit"), QStringLiteral("1000kbit"));
        QoSClass* c = add(doc.Down1(), parent->ClassIdx(), QStringLiteral("300kbit"), QString());
        add(doc.Down1(), parent->ClassIdx(), siblingMin, QString());
        ClassCalculator calc;
        calc.SetQoSClass(shown ? c : nullptr);
        if (!typed.isEmpty())
            calc.NewMin()->SetValue(typed);
        QTEST(QStringList({calc.UsesMinText(), calc.AvailableMinText(), calc.FreeMinText()}).join(u'|'),
              "figures");
        QTEST(calc.NewMinAfterText(), "after");
        QTEST(calc.NewMinAfterOverbooked(), "overbooked");
        // A heading that ends in a line break goes on with the reason.
        QVERIFY2(heading.endsWith(u'\n')
                     ? calc.HeadingText().startsWith(heading) && calc.HeadingText() != heading
                     : calc.HeadingText() == heading,
                 qPrintable(calc.HeadingText()));
    }

    void emptyWithoutClass()
    {
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C F1"));
        ClassCalculator calc;
        calc.SetPage(doc.Down1());
        PageScript::cls(doc, 1)->SetSelected(true);
        QVERIFY(calc.CanApply());
        PageScript::flt(doc, 1)->SetSelected(true); // a filter is no class to calculate
        QCOMPARE(calc.CurrentClass(), nullptr);
        QVERIFY(!calc.CanApply());
        QCOMPARE(moves(calc), QStringLiteral("----"));
        QCOMPARE(calc.AvailableMin(), 0);
        QVERIFY(!calc.Apply());

        PageScript::cls(doc, 1)->SetSelected(true);
        calc.SetPage(nullptr); // the common page is shown
        QCOMPARE(calc.CurrentClass(), nullptr);
        calc.SetPage(doc.Down1());
        QCOMPARE(calc.CurrentClass(), PageScript::cls(doc, 1));
        PageScript::cls(doc, 1)->EditDelete();
        QCOMPARE(calc.CurrentClass(), nullptr);
        QCOMPARE(calc.UsesMin(), 0);
    }

    void followsEditsElsewhere()
    {
        Document doc;
        QoSClass* main = add(doc.Down1(), 0, QStringLiteral("500kbit"), QStringLiteral("768kbit"));
        ClassCalculator calc;
        calc.SetQoSClass(main);
        QCOMPARE(calc.AvailableMin(), 768);
        doc.Common1()->SetQoSInternetBandDown(QStringLiteral("1Mbit"));
        QCOMPARE(calc.AvailableMin(), 1024);
        main->SetQoSMinBandWidth(QStringLiteral("600kbit")); // typed into the box
        QCOMPARE(calc.UsesMin(), 600);
        QCOMPARE(calc.NewMin()->kbit(), 600);
    }
};

QTEST_GUILESS_MAIN(TestClassCalculator)
#include "tst_classcalculator.moc"
