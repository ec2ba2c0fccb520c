#include "model/classcalculator.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "pagescript.h"

#include <QTest>

#include <tuple>

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

    // A main class of 1000kbit on the page and a sub class under it for each minimum given;
    // the main class first.
    static QList<QoSClass*> family(ObjectPage* page, const QStringList& minimums)
    {
        QList<QoSClass*> out{add(page, 0, QStringLiteral("1000kbit"), QStringLiteral("1000kbit"))};
        for (const QString& min : minimums)
            out << add(page, out.first()->ClassIdx(), min, QString());
        return out;
    }

    // Each move the calculator offers, with the number of the class it selects, "-" for one it
    // does not offer ("U1 D4 L3 -"); every move starts from the class shown.
    static QString moves(ClassCalculator& calc)
    {
        QoSClass* shown = calc.CurrentClass();
        const std::tuple<char, bool, void (ClassCalculator::*)()> all[] = {
            {'U', calc.CanMoveUp(), &ClassCalculator::MoveUp},
            {'D', calc.CanMoveDown(), &ClassCalculator::MoveDown},
            {'L', calc.CanMoveLeft(), &ClassCalculator::MoveLeft},
            {'R', calc.CanMoveRight(), &ClassCalculator::MoveRight}};
        QStringList out;
        for (const auto& [letter, can, move] : all) {
            if (!can) {
                out << QStringLiteral("-");
                continue;
            }
            (calc.*move)();
            const QoSClass* now = calc.CurrentClass(); // none: a filter was selected
            out << QChar::fromLatin1(letter) + (now ? QString::number(now->ClassIdx()) : QStringLiteral("?"));
            if (shown)
                shown->SetSelected(true);
        }
        return out.join(u' ');
    }

private slots:
    // The figures of each class in a main class of 1000kbit with sub classes of 300, 200 and
    // 100 kbit, the last with a filter: used, available, free, what is left after the class's
    // own minimum, and the moves through the tree the calculator's arrows offer.
    void figures_data()
    {
        QTest::addColumn<bool>("upPage");
        QTest::addColumn<QString>("line");    // the line speed of the page's direction
        QTest::addColumn<int>("shown");       // 1 the main class, 2..4 the sub classes
        QTest::addColumn<QString>("figures"); // used, available, free, after
        QTest::addColumn<QString>("parentMax");
        QTest::addColumn<QString>("moves");
        // clang-format off
        QTest::newRow("first sub class") << false << "768kbit" << 2 << "600|1000|700|400" << "1000 kbit" << "U1 - - R3";
        QTest::newRow("middle sub class") << false << "768kbit" << 3 << "600|1000|600|400" << "1000 kbit" << "U1 - L2 R4";
        // Down leads nowhere from a class with filters only.
        QTest::newRow("last sub class") << false << "768kbit" << 4 << "600|1000|500|400" << "1000 kbit" << "U1 D4 L3 -";
        QTest::newRow("main class, down line") << false << "4000kbit" << 1 << "1000|4000|4000|3000" << "4000 kbit" << "- D2 - -";
        QTest::newRow("main class, up line") << true << "1500kbit" << 1 << "1000|1500|1500|500" << "1500 kbit" << "- D2 - -";
        // The calculator converts the line speed; the validation limit would take the bare 2.
        QTest::newRow("line speed in Mbit") << false << "2Mbit" << 1 << "1000|2048|2048|1048" << "2048 kbit (2Mbit)" << "- D2 - -";
        // clang-format on
    }
    void figures()
    {
        QFETCH(bool, upPage);
        QFETCH(QString, line);
        QFETCH(int, shown);
        Document doc;
        if (upPage)
            doc.Common1()->SetQoSInternetBandUp(line);
        else
            doc.Common1()->SetQoSInternetBandDown(line);
        ObjectPage* page = upPage ? doc.Up1() : doc.Down1();
        const QList<QoSClass*> classes =
            family(page, {QStringLiteral("300kbit"), QStringLiteral("200kbit"), QStringLiteral("100kbit")});
        page->AddFilter(classes.last(), {});
        ClassCalculator calc;
        calc.SetPage(page);
        classes.at(shown - 1)->SetSelected(true);
        QTEST(QStringLiteral("%1|%2|%3|%4")
                  .arg(calc.UsesMin())
                  .arg(calc.AvailableMin())
                  .arg(calc.FreeMin())
                  .arg(calc.NewMinAfter().value_or(-1)),
              "figures");
        QTEST(calc.ParentMaxText(), "parentMax");
        QTEST(moves(calc), "moves");
        QCOMPARE(page->SelectedClass(), classes.at(shown - 1));
        QVERIFY(calc.ErrorText().isEmpty());
    }

    // Apply stores the new minimum and validates the class with its siblings; a minimum the
    // user locked keeps its value, and the calculator says why.
    void apply()
    {
        Document doc;
        const QList<QoSClass*> classes =
            family(doc.Down1(), {QStringLiteral("300kbit"), QStringLiteral("200kbit")});
        QoSClass* a = classes.at(1);
        ClassCalculator calc;
        calc.SetQoSClass(a);
        calc.NewMin()->SetValue(QStringLiteral("900")); // typed: 900 + 200 exceed the parent's 1000
        a->MinField()->SetLocked(true);
        QVERIFY(!calc.CanApply());
        QVERIFY(!calc.Apply());
        QCOMPARE(a->QoSMinBandWidthKBit(), 300);
        QVERIFY(calc.HeadingText().contains(QStringLiteral("festgehalten")));

        a->MinField()->SetLocked(false);
        doc.SetModified(false);
        QVERIFY(calc.CanApply());
        QVERIFY(calc.Apply());
        QCOMPARE(a->QoSMinBandWidth(), QStringLiteral("900kbit"));
        QVERIFY(doc.IsModified());
        // The parent was validated: both siblings' minimums are now marked.
        QVERIFY(!a->MinField()->IsValid());
        QVERIFY(!classes.at(2)->MinField()->IsValid());
        QCOMPARE(calc.UsesMin(), 1100);
        QCOMPARE(calc.FreeMin(), 800);
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
    // and whether that is a warning. The class shown has 300kbit of a parent's 1000kbit. A label
    // copies its figure into the new minimum when that is at least 1.
    void shownTexts_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QString>("siblingMin");
        QTest::addColumn<QString>("typed");   // the new minimum in kbit, or the label clicked
        QTest::addColumn<QString>("figures"); // used, available, free
        QTest::addColumn<QString>("after");
        QTest::addColumn<bool>("overbooked");
        QTest::addColumn<QString>("heading");
        const QString ok = QStringLiteral("Klasse: Class 2");
        const QString shares = QStringLiteral("500 kbit|1000 kbit|800 kbit");
        // clang-format off
        QTest::newRow("no class") << false << "200kbit" << "" << "||" << "" << false << "Keine Klasse ausgewählt";
        QTest::newRow("something left") << true << "200kbit" << "500" << shares << "300 kbit" << false << ok;
        QTest::newRow("exactly used up") << true << "200kbit" << "800" << shares << "0 kbit" << false << ok;
        QTest::newRow("promised more than there is") << true << "200kbit" << "900" << shares << "-100 kbit" << true << ok;
        QTest::newRow("the free figure copied") << true << "200kbit" << "free" << shares << "0 kbit" << false << ok;
        QTest::newRow("the available figure copied") << true << "200kbit" << "available" << shares << "-200 kbit" << true << ok;
        QTest::newRow("a free figure of 0 is not copied") << true << "1000kbit" << "free" << "1300 kbit|1000 kbit|0 kbit" << "-300 kbit" << true << ok;
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
        QoSClass* c = family(doc.Down1(), {QStringLiteral("300kbit"), siblingMin}).at(1);
        ClassCalculator calc;
        calc.SetQoSClass(shown ? c : nullptr);
        if (typed == u"free")
            calc.CopyFreeMin();
        else if (typed == u"available")
            calc.CopyAvailableMin();
        else if (!typed.isEmpty())
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

    // The figures follow edits made elsewhere: a line speed, a minimum typed into the box. A
    // filter or the common page is no class to calculate, and a deleted class leaves the panel.
    void followsEditsAndThePage()
    {
        Document doc;
        QoSClass* main = add(doc.Down1(), 0, QStringLiteral("500kbit"), QStringLiteral("768kbit"));
        doc.Down1()->AddFilter(main, {});
        ClassCalculator calc;
        calc.SetQoSClass(main);
        QCOMPARE(calc.AvailableMin(), 768);
        doc.Common1()->SetQoSInternetBandDown(QStringLiteral("1Mbit"));
        QCOMPARE(calc.AvailableMin(), 1024);
        main->SetQoSMinBandWidth(QStringLiteral("600kbit"));
        QCOMPARE(calc.UsesMin(), 600);
        QCOMPARE(calc.NewMin()->kbit(), 600);

        calc.SetPage(doc.Down1());
        PageScript::flt(doc, 1)->SetSelected(true);
        QCOMPARE(calc.CurrentClass(), nullptr);
        QVERIFY(!calc.CanApply());
        QCOMPARE(moves(calc), QStringLiteral("- - - -"));
        QVERIFY(!calc.Apply());
        main->SetSelected(true);
        calc.SetPage(nullptr); // the common page is shown
        QCOMPARE(calc.CurrentClass(), nullptr);
        calc.SetPage(doc.Down1());
        QCOMPARE(calc.CurrentClass(), main);
        main->EditDelete();
        QCOMPARE(calc.CurrentClass(), nullptr);
        QCOMPARE(calc.UsesMin(), 0);
    }
};

QTEST_GUILESS_MAIN(TestClassCalculator)
#include "tst_classcalculator.moc"
