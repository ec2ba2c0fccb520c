#include "base/qoserror.h"
#include "base/scriptedprompt.h"
#include "file/qosreader.h"
#include "file/qoswriter.h"
#include "inputs/bandwidthfield.h"
#include "model/document.h"
#include "model/dropplan.h"
#include "model/history.h"
#include "model/objectpage.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"
#include "pagescript.h"

#include <QSet>
#include <QTest>

#include <optional>

using PageScript::cls;
using PageScript::flt;

// Tree rules of classes and filters: linking, validation, default classes, deleting and
// the drop of a dragged box.
class TestTree : public QObject
{
    Q_OBJECT

    static QString describe(const DropPlan& plan)
    {
        switch (plan.outcome) {
        case DropPlan::Outcome::Stay:
            return QStringLiteral("stay");
        case DropPlan::Outcome::Move:
            return QStringLiteral("move %1,%2").arg(plan.x).arg(plan.y);
        case DropPlan::Outcome::Link:
            return (plan.swap ? QStringLiteral("swap ") : QStringLiteral("link ")) +
                   PageScript::shortName(plan.parent);
        case DropPlan::Outcome::Refused:
            break;
        }
        return QStringLiteral("refused");
    }

    // Every child lists a parent that points back, and every parent link is in a list.
    static void verifyLinks(Document& doc)
    {
        for (QoSObject* o : doc.Objects()) {
            if (auto* c = qobject_cast<QoSClass*>(o))
                for (QoSObject* child : c->ChildQoSObjects())
                    QCOMPARE(child->ParentName(), c->Name());
            if (QoSClass* parent = o->ParentQoSObject()) {
                QVERIFY(parent->ChildNames().contains(o->Name()));
                QVERIFY(o->LineTop());
            } else {
                QVERIFY(!o->LineTop());
            }
        }
    }

    // A class of the down page.
    static QoSClass* addClass(ObjectPage* page, QStringView parent, QStringView min, QStringView max)
    {
        return page->AddClass(parent.toString(), {.minBandwidth = min.toString(),
                                                  .maxBandwidth = max.toString(),
                                                  .direction = QStringLiteral("down"),
                                                  .prio = QStringLiteral("0")});
    }

private slots:
    void validation_data()
    {
        QTest::addColumn<QString>("line");      // downstream line bandwidth
        QTest::addColumn<QStringList>("mins");  // main classes, or sub classes of one parent
        QTest::addColumn<QString>("max");       // the maximum of every class
        QTest::addColumn<QString>("parentMax"); // "" for main classes
        QTest::addColumn<bool>("minValid");
        QTest::addColumn<bool>("maxValid");
        // clang-format off
        QTest::newRow("zero minimum is invalid although the line has room") << "768kbit" << QStringList{"0kbit"} << "768kbit" << "" << false << true;
        QTest::newRow("three of 400 overbook 1000") << "1000kbit" << QStringList{"400kbit", "400kbit", "400kbit"} << "1000kbit" << "" << false << true;
        QTest::newRow("400, 300 and 300 fill 1000 exactly") << "1000kbit" << QStringList{"400kbit", "300kbit", "300kbit"} << "1000kbit" << "" << true << true;
        QTest::newRow("limit of a main class takes the bare line number") << "2Mbit" << QStringList{"100kbit"} << "2kbit" << "" << false << true;
        QTest::newRow("maximum is compared by its entered number") << "1000kbit" << QStringList{"100kbit"} << "2Mbit" << "" << true << true;
        QTest::newRow("maximum above the limit") << "1000kbit" << QStringList{"100kbit"} << "1001kbit" << "" << true << false;
        QTest::newRow("maximum of 0") << "1000kbit" << QStringList{"100kbit"} << "0kbit" << "" << true << false;
        QTest::newRow("parent maximum 0 makes every maximum invalid") << "1000kbit" << QStringList{"1kbit"} << "1kbit" << "0kbit" << false << false;
        QTest::newRow("sub classes against the parent maximum in kbit") << "1000kbit" << QStringList{"512kbit", "512kbit"} << "1Mbit" << "1Mbit" << true << true;
        QTest::newRow("sub classes overbooking the parent") << "1000kbit" << QStringList{"600kbit", "500kbit"} << "1kbit" << "1Mbit" << false << true;
        // clang-format on
    }
    void validation()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, mins);
        QFETCH(QString, max);
        QFETCH(QString, parentMax);
        Document doc;
        doc.Common1()->SetQoSInternetBandDown(line);
        QString parent = QStringLiteral("0");
        if (!parentMax.isEmpty())
            parent = QString::number(addClass(doc.Down1(), u"0", u"1kbit", parentMax)->ClassIdx());
        QList<QoSClass*> classes;
        for (const QString& min : mins)
            classes << addClass(doc.Down1(), parent, min, max);
        classes.first()->TopClass()->Validate(true);
        if (parentMax.isEmpty())
            for (QoSClass* c : classes)
                c->Validate(false);
        for (QoSClass* c : classes) {
            QTEST(c->MinField()->IsValid(), "minValid");
            QTEST(c->MaxField()->IsValid(), "maxValid");
        }
    }

    void subClassDefaults()
    {
        Document doc;
        doc.Common1()->SetQoSInternetBandUp(QStringLiteral("512kbit"));
        PageScript::run(doc.Up1(), QStringLiteral("C C S1"));
        QCOMPARE(cls(doc, 1)->QoSMinBandWidth(), QStringLiteral("512kbit")); // first class of the page
        QCOMPARE(cls(doc, 2)->QoSMinBandWidth(), QStringLiteral("0kbit"));   // not the first
        QCOMPARE(cls(doc, 2)->QoSMaxBandWidth(), QStringLiteral("512kbit"));
        QCOMPARE(cls(doc, 3)->QoSMinBandWidth(), QStringLiteral("1kbit"));
        QCOMPARE(cls(doc, 3)->QoSMaxBandWidth(), QStringLiteral("512kbit"));
        QCOMPARE(cls(doc, 3)->QoSDirection(), QStringLiteral("up"));
        QCOMPARE(cls(doc, 3)->QoSParent(), QStringLiteral("1"));
    }

    // Setting a class's parent by number; every refused link leaves it a main class.
    void parentLinks_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("parent");
        // clang-format off
        QTest::newRow("zero") << "0" << "0";
        QTest::newRow("no number") << "abc" << "0";
        QTest::newRow("no such class") << "77" << "0";
        QTest::newRow("huge") << "99999999999999" << "0";
        QTest::newRow("itself") << "4" << "0";
        QTest::newRow("its own descendant") << "6" << "0";
        QTest::newRow("a class with filters") << "2" << "0";
        QTest::newRow("a plain main class") << "3" << "3";
        QTest::newRow("fraction truncates") << "3.9" << "3";
        // clang-format on
    }
    void parentLinks()
    {
        QFETCH(QString, number);
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C C F2 C C S4 S5"));
        QoSClass* c = cls(doc, 4);
        c->SetQoSParent(number);
        QTEST(c->QoSParent(), "parent");
        verifyLinks(doc);
    }

    // Levels and depths follow the parent links, not the rows: a link may make a chain deeper
    // than the four rows of classes.
    void levelsAndDepths_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("linked"); // class linked below `under` after the script, or 0
        QTest::addColumn<int>("under");
        QTest::addColumn<QString>("levels"); // level/depth of every class in creation order
        QTest::newRow("filters are no level") << "C F1 F1" << 0 << 0 << "0/0";
        QTest::newRow("a chain of four") << "C S1 S2 S3" << 0 << 0 << "0/3 1/2 2/1 3/0";
        QTest::newRow("siblings and a deeper branch") << "C S1 S1 S3 C" << 0 << 0 << "0/2 1/0 1/1 2/0 0/0";
        QTest::newRow("linked below a chain of four") << "C C S2 S3 S4" << 1 << 5 << "4/0 0/4 1/3 2/2 3/1";
        QTest::newRow("a branch linked below a chain")
            << "C S1 C S3 S4 S5" << 1 << 6 << "4/1 5/0 0/5 1/4 2/3 3/2";
    }
    void levelsAndDepths()
    {
        QFETCH(QString, script);
        QFETCH(int, linked);
        QFETCH(int, under);
        QFETCH(QString, levels);
        Document doc;
        PageScript::run(doc.Down1(), script);
        if (linked)
            cls(doc, linked)->SetQoSParent(QString::number(under));
        QStringList out;
        for (QoSObject* o : doc.Down1()->ContainedObjects())
            if (auto* c = qobject_cast<QoSClass*>(o))
                out << QStringLiteral("%1/%2").arg(c->Level()).arg(c->SubtreeDepth());
        QCOMPARE(out.join(u' '), levels);
    }

    // A box is born in the cell meant for it and never outside its page.
    void newBoxesStandOnTheirPage_data()
    {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<QString>("cell"); // of the newest box
        QTest::addColumn<QString>("size"); // of its page
        // clang-format off
        QTest::newRow("fourth level on a page of three rows") << "rows3" << "0,3" << "6x4";
        QTest::newRow("parent on the other page") << "foreign" << "0,0" << "6x5";
        QTest::newRow("filter of a class dragged beyond the page") << "dragged" << "9,4" << "10x5";
        // clang-format on
    }
    void newBoxesStandOnTheirPage()
    {
        QFETCH(QString, situation);
        QFETCH(QString, cell);
        QFETCH(QString, size);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        ObjectPage* down = doc.Down1();
        if (situation == u"rows3") {
            qint32 cols = 6, rows = 3;
            down->SetGridDimensions(cols, rows);
            PageScript::run(down, QStringLiteral("C S1 S2 S3"));
        } else if (situation == u"foreign") {
            // The parent stands in column 7 of the up page; the down page has six columns.
            PageScript::run(doc.Up1(), QStringLiteral("C C C C C C C C"));
            QVERIFY_THROWS_EXCEPTION(
                QoSError, down->AddClass(QStringLiteral("8"), {.direction = QStringLiteral("down"),
                                                               .prio = QStringLiteral("0"),
                                                               .caption = QStringLiteral("fremd")}));
            // Whole, as a main class of its own page with the main-class defaults.
            QCOMPARE(down->ObjectCount(), 1);
            auto* c = qobject_cast<QoSClass*>(down->ContainedObjects().last());
            QCOMPARE(c->ParentQoSObject(), nullptr);
            QCOMPARE(c->QoSDirection(), QStringLiteral("down"));
            QCOMPARE(c->QoSMaxBandWidth(), doc.Common1()->QoSInternetBandDown());
            QCOMPARE(c->Caption(), QStringLiteral("fremd"));
        } else {
            PageScript::run(down, QStringLiteral("C"));
            cls(doc, 1)->SetMatrixX(9);
            PageScript::run(down, QStringLiteral("F1"));
        }
        const QoSObject* newest = down->ContainedObjects().last();
        QCOMPARE(QStringLiteral("%1,%2").arg(newest->MatrixX()).arg(newest->MatrixY()), cell);
        QCOMPARE(PageScript::size(down), size);
        QCOMPARE(prompt.messages(), QStringList());
    }

    // After a file whose classes were partly refused, the numbers of the file and of the
    // counter must not meet: a new sub class goes under the class it was meant for.
    void classNumbersStayUnique()
    {
        ScriptedPrompt prompt;
        Document doc(&prompt);
        QByteArray file = "QOS_CLASS_N='8'\n";
        for (int n = 1; n <= 8; ++n) // 5 would be a fifth level; 6 names it and becomes a main class
            file += QStringLiteral("QOS_CLASS_%1_PARENT='%2'\n").arg(n).arg(n <= 6 ? n - 1 : 0).toLatin1();
        QVERIFY(!ImportQoSBytes(doc, file).complete);
        QCOMPARE(doc.Down1()->ClassCount(), 7);
        // A title of its own, so that only the counter keeps the numbers apart.
        QoSClass* fresh = doc.Down1()->AddClass(
            QString(), {.direction = QStringLiteral("down"), .caption = QStringLiteral("neu")});
        PageScript::run(doc.Down1(), QStringLiteral("S%1").arg(fresh->ClassIdx()));
        QCOMPARE(qobject_cast<QoSClass*>(doc.Objects().last())->ParentQoSObject(), fresh);
        QSet<int> numbers;
        for (QoSObject* o : doc.Objects())
            if (auto* c = qobject_cast<QoSClass*>(o))
                numbers.insert(c->ClassIdx());
        QCOMPARE(numbers.size(), 9);
    }

    // Titles from an older numbering: after deleting the first of two new classes and saving,
    // the file's class 1 is captioned "Class 2". The next new class takes neither that number
    // nor that title.
    void newClassesTakeNoTitleThatIsTaken()
    {
        ScriptedPrompt prompt;
        Document doc(&prompt);
        doc.Down1()->NewClassCommand();
        doc.Down1()->NewClassCommand();
        cls(doc, 1)->EditDelete();
        Document reopened(&prompt);
        QVERIFY(ImportQoSBytes(reopened, ExportQoSBytes(doc)).complete);
        QCOMPARE(reopened.Objects().first()->Caption(), QStringLiteral("Class 2"));
        QStringList titles;
        for (int i = 0; i < 3; ++i)
            titles << reopened.Down1()->NewClassCommand()->Caption();
        titles << reopened.Objects().first()->Caption();
        titles.removeDuplicates();
        QCOMPARE(titles.size(), 4);
    }

    // One default class per page, and the common settings name it.
    void defaultClass()
    {
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C C"));
        PageScript::run(doc.Up1(), QStringLiteral("C"));
        for (int n : {3, 1, 2})
            cls(doc, n)->SetDefaultClass(true);
        QCOMPARE(QList<bool>(
                     {cls(doc, 1)->DefaultClass(), cls(doc, 2)->DefaultClass(), cls(doc, 3)->DefaultClass()}),
                 QList<bool>({false, true, true}));
        QCOMPARE(doc.Common1()->QoSInternetDefaultDown(), QStringLiteral("2"));
        QCOMPARE(doc.Common1()->QoSInternetDefaultUp(), QStringLiteral("3"));
        cls(doc, 2)->SetDefaultClass(false);
        QCOMPARE(doc.Common1()->QoSInternetDefaultDown(), QStringLiteral("2"));
    }

    // Deleting a class leaves its children on the page as main classes; cutting a line unlinks
    // the box below it and deletes nothing.
    void deleteClassAndCutLine()
    {
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C S1 S1 S2 C F5"));
        cls(doc, 2)->EditCut();
        QCOMPARE(doc.Object(QStringLiteral("QoSClass2")), nullptr);
        QVERIFY(!cls(doc, 4)->LineTop());
        QCOMPARE(cls(doc, 4)->QoSParent(), QStringLiteral("0"));
        QCOMPARE(cls(doc, 1)->ChildNames(), QStringList{QStringLiteral("QoSClass3")});
        QCOMPARE(doc.Down1()->ObjectAt(0, 1), nullptr);
        flt(doc, 1)->LineTop()->EditCut();
        QVERIFY(!flt(doc, 1)->LineTop());
        QCOMPARE(flt(doc, 1)->QoSClass(), QStringLiteral("0"));
        QVERIFY(!cls(doc, 5)->HasFilters());
        QCOMPARE(doc.Objects().size(), 5);
        verifyLinks(doc);
    }

    // A line runs on whole pixels from the parent's bottom middle to the child's top middle,
    // with room around it for the mouse, and follows its boxes.
    void connectorGeometry()
    {
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C F1"));
        QoSConnector* line = flt(doc, 1)->LineTop();
        line->Move(100, 200, 100, 2000);
        QCOMPARE(QList<int>({line->x1(), line->y1(), line->x2(), line->y2(), line->Width(), line->Height()}),
                 QList<int>({90, 195, 90, 1995, 135, 1920}));
        cls(doc, 1)->SetMatrixX(2);
        const QoSClass* c = cls(doc, 1);
        QCOMPARE(line->x1(), int(c->Left() + c->Width() / 2.0) / 15 * 15);
        QCOMPARE(line->y1(), int(c->Top() + c->Height()) / 15 * 15);
        QCOMPARE(line->y2(), int(flt(doc, 1)->Top()) / 15 * 15);
    }

    void drop_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<int>("cellX"); // -1: let go far beyond any cell
        QTest::addColumn<int>("cellY");
        QTest::addColumn<QString>("plan"); // what the plan says before the drop
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("parents"); // QoSParent / QoSClass of every object
        QTest::addColumn<bool>("modified");

        // clang-format off
        QTest::newRow("free cell moves the box")
            << "C C" << "C2" << 4 << 2 << "move 4,2" << "" << "C1@0,0 C2@4,2" << "0 0" << true;
        QTest::newRow("onto itself nothing happens")
            << "C" << "C1" << 0 << 0 << "stay" << "" << "C1@0,0" << "0" << false;
        // Hanging a box under the class it already hangs under changes nothing.
        QTest::newRow("sub class onto its own parent")
            << "C S1 S1" << "C2" << 0 << 0 << "link C1" << "" << "C1@0,0 C2@0,1 C3@1,1" << "0 1 1" << false;
        QTest::newRow("filter onto its own class")
            << "C F1 F1" << "F1" << 0 << 0 << "link C1" << "" << "C1@0,0 F1@0,4 F2@0,5" << "0 1 1" << false;
        QTest::newRow("filter on filter")
            << "C F1 F1" << "F1" << 0 << 5 << "refused" << "Anhängen nicht möglich! TODO" << "C1@0,0 F1@0,4 F2@0,5" << "0 1 1" << false;
        QTest::newRow("class on filter does nothing")
            << "C C F1" << "C2" << 0 << 4 << "refused" << "" << "C1@0,0 C2@1,0 F1@0,4" << "0 0 1" << false;
        QTest::newRow("filter on class with sub classes")
            << "C S1 C F3" << "F1" << 0 << 0 << "refused" << "Anhängen nicht möglich! Klasse hat Unterklassen."
            << "C1@0,0 C2@0,1 C3@1,0 F1@1,4" << "0 1 0 3" << false;
        QTest::newRow("class on class with filters")
            << "C F1 C" << "C2" << 0 << 0 << "refused" << "Anhängen nicht möglich. Klasse hat untergeordnete Filter."
            << "C1@0,0 F1@0,4 C2@1,0" << "0 1 0" << false;
        QTest::newRow("filter moves to another class")
            << "C F1 C" << "F1" << 1 << 0 << "link C2" << "" << "C1@0,0 F1@0,4 C2@1,0" << "0 2 0" << true;
        QTest::newRow("class hangs under another class")
            << "C C S2" << "C1" << 1 << 1 << "link C3" << "" << "C1@0,0 C2@1,0 C3@1,1" << "3 0 2" << true;
        QTest::newRow("sub class on its own child swaps them")
            << "C S1 S2" << "C2" << 0 << 2 << "swap C3" << "" << "C1@0,0 C2@0,1 C3@0,2" << "0 3 0" << true;
        // No drop makes the tree deeper than four class levels; a swap counts without the
        // branch it lifts out.
        QTest::newRow("main class with a sub class on a class of the third level")
            << "C S1 S2 C S4" << "C4" << 0 << 2 << "refused" << "Anhängen nicht möglich. Keine weitere Ebene möglich."
            << "C1@0,0 C2@0,1 C3@0,2 C4@1,0 C5@1,1" << "0 1 2 0 4" << false;
        QTest::newRow("main class on its great-grandchild swaps them within four levels")
            << "C S1 S2 S3" << "C1" << 0 << 3 << "swap C4" << "" << "C1@0,0 C2@0,1 C3@0,2 C4@0,3" << "4 1 2 0" << true;
        // A class in a filter row could not be read back from the file.
        QTest::newRow("class into a filter row")
            << "C C" << "C2" << 3 << 4 << "refused" << "Verschieben nicht möglich. Keine weitere Ebene möglich."
            << "C1@0,0 C2@1,0" << "0 0" << false;
        QTest::newRow("filter into a class row")
            << "C F1" << "F1" << 2 << 1 << "move 2,1" << "" << "C1@0,0 F1@2,1" << "0 1" << true;
        QTest::newRow("beyond any cell the box goes back")
            << "C C" << "C2" << -1 << 0 << "refused" << "" << "C1@0,0 C2@1,0" << "0 0" << false;
        // clang-format on
    }
    void drop()
    {
        QFETCH(QString, script);
        QFETCH(QString, dragged);
        QFETCH(int, cellX);
        QFETCH(int, cellY);
        QFETCH(QString, message);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        PageScript::run(doc.Down1(), script);
        QoSObject* box = PageScript::byShortName(doc, dragged);
        QVERIFY(box);
        const ObjectPageProperties& p = doc.Down1()->prop();
        // The top-left corner decides: let go just inside the target cell's top-left corner,
        // with most of the box over the next cell.
        const double left = cellX < 0 ? 1e12 : cellX * p.ColWidth + p.ColWidth - 100;
        const double top = cellY * p.RowHeight + 10;
        // The plan foretells the drop and changes nothing by itself.
        doc.SetModified(false);
        const QString before = PageScript::layout(doc.Down1());
        const DropPlan planned = DropPlan::For(*box, left, top);
        QTEST(describe(planned), "plan");
        QCOMPARE(planned.message, message);
        QCOMPARE(planned.hasCell, cellX >= 0);
        if (planned.hasCell)
            QCOMPARE(QPoint(planned.x, planned.y), QPoint(cellX, cellY));
        QCOMPARE(PageScript::layout(doc.Down1()), before);
        QVERIFY(!doc.IsModified());
        QVERIFY(prompt.messages().isEmpty());

        const int steps = doc.history()->count();
        box->MoveObject(left, top);
        QCOMPARE(prompt.messages(), message.isEmpty() ? QStringList() : QStringList{message});
        QTEST(PageScript::layout(doc.Down1()), "layout");
        QStringList parents;
        for (QoSObject* o : doc.Objects())
            parents << (o->IsClass() ? qobject_cast<QoSClass*>(o)->QoSParent()
                                     : qobject_cast<QoSFilter*>(o)->QoSClass());
        QTEST(parents.join(u' '), "parents");
        verifyLinks(doc);
        QTEST(doc.IsModified(), "modified");
        QCOMPARE(doc.history()->count(), steps);
        // Wherever it was let go, the box ends centred in its cell.
        QCOMPARE(box->Left(), box->MatrixX() * p.ColWidth + (p.ColWidth - box->Width()) / 2.0);
    }

    // A link by a class's plug keeps the tree within four class levels, counted from the main
    // class of the moved branch; the other refusals stay silent as the members make them.
    void plugLinks_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("plugOf"); // the class whose plug is dropped
        QTest::addColumn<QString>("onto");   // the box it is dropped on
        QTest::addColumn<bool>("linked");
        QTest::addColumn<bool>("told");
        const QString chain = QStringLiteral("C S1 S2 S3 C S5"); // C1..C4 four levels; C5 with C6
        // clang-format off
        QTest::newRow("a main class with a sub class under the third") << chain << "C3" << "C5" << false << true;
        QTest::newRow("a main class alone under the third") << "C S1 S2 C" << "C3" << "C4" << true << false;
        QTest::newRow("a filter moves under the fourth level") << "C S1 S2 S3 C F5" << "C4" << "F1" << true << false;
        QTest::newRow("a class under its own descendant is refused silently") << chain << "C3" << "C1" << false << false;
        QTest::newRow("a class under a class with filters is refused silently") << "C F1 C" << "C1" << "C2" << false << false;
        QTest::newRow("a filter under a class with sub classes is refused silently") << "C S1 C F3" << "C1" << "F1" << false << false;
        // clang-format on
    }
    void plugLinks()
    {
        QFETCH(QString, script);
        QFETCH(QString, plugOf);
        QFETCH(QString, onto);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        PageScript::run(doc.Down1(), script);
        QoSObject* parent = PageScript::byShortName(doc, plugOf);
        QoSObject* child = PageScript::byShortName(doc, onto);
        QVERIFY(parent && child);
        const QString before = PageScript::layout(doc.Down1());
        QTEST(child->LinkByPlug(parent->Name()), "linked");
        QFETCH(bool, told);
        QCOMPARE(prompt.messages(),
                 told ? QStringList{QStringLiteral("Anhängen nicht möglich. Keine weitere Ebene möglich.")}
                      : QStringList());
        if (told)
            QCOMPARE(prompt.log.last().icon, UserPrompt::Icon::Warning);
        QCOMPARE(PageScript::layout(doc.Down1()), before);
        verifyLinks(doc);
    }

    // Only the box's own plug is refused before the link rules are asked.
    void aPlugIsAccepted_data()
    {
        QTest::addColumn<QString>("plugOf");
        QTest::addColumn<QString>("onto");
        QTest::addColumn<bool>("accepted");
        // clang-format off
        QTest::newRow("a class's own plug") << "C1" << "C1" << false;
        QTest::newRow("a plug without a name") << "" << "F1" << false;
        QTest::newRow("another class's plug on a class") << "C2" << "C1" << true;
        QTest::newRow("a class's plug on a filter") << "C2" << "F1" << true;
        // clang-format on
    }
    void aPlugIsAccepted()
    {
        QFETCH(QString, plugOf);
        QFETCH(QString, onto);
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C F1 C"));
        const QoSObject* target = PageScript::byShortName(doc, onto);
        const QoSObject* plug = PageScript::byShortName(doc, plugOf);
        QTEST(target->AcceptsPlug(plug ? plug->Name() : QString()), "accepted");
    }

    // The fields a box shows are the object's own: an edit in a field is an edit of the object,
    // which hears of it before any view, marks the document and records filter edits.
    void fieldEditsAreEditsOfTheObject_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("set"); // a value set on the object, or "step" to step the field
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("modified");
        QTest::addColumn<QStringList>("recorded");
        QTest::addColumn<QString>("heard"); // who heard of it, in order
        const QStringList none;
        // clang-format off
        QTest::newRow("prio stepped in its field") << "prio" << "step" << "1" << true << none << "object view";
        QTest::newRow("prio set") << "prio" << "2" << "2" << true << none << "object view";
        QTest::newRow("prio set as it was still marks") << "prio" << "0" << "0" << true << none << "object";
        QTest::newRow("type stepped in its field") << "type" << "step" << "client" << true << QStringList{"QoSType=client"} << "object view";
        QTest::newRow("type set") << "type" << "server" << "server" << true << QStringList{"QoSType=server"} << "object view";
        QTest::newRow("type set as it was") << "type" << "" << "" << false << none << "";
        QTest::newRow("option stepped in its field") << "option" << "step" << "TOSMC" << true << QStringList{"QoSOption=TOSMC"} << "object view";
        QTest::newRow("option set") << "option" << "ICMP" << "ICMP" << true << QStringList{"QoSOption=ICMP"} << "object view";
        QTest::newRow("a first port makes the type client") << "port" << "80" << "80" << true << QStringList{"QoSPort=80", "QoSType=client"} << "object object view";
        QTest::newRow("address and mask are recorded one by one") << "ip" << "10.0.0.1/24" << "10.0.0.1/24" << true << QStringList{"QoSIP=10.0.0.1", "QoSIP=10.0.0.1/24"} << "object object";
        // clang-format on
    }
    void fieldEditsAreEditsOfTheObject()
    {
        QFETCH(QString, field);
        QFETCH(QString, set);
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C F1"));
        QoSClass* c = cls(doc, 1);
        QoSFilter* f = flt(doc, 1);
        doc.SetModified(false);
        doc.history()->Clear();
        // The order in which the object and a view over the field hear of the change.
        QStringList heard;
        QObject context;
        auto view = [&](auto* input) {
            connect(input, &std::remove_pointer_t<decltype(input)>::Change, &context,
                    [&heard] { heard << QStringLiteral("view"); });
        };
        view(c->PrioInput());
        view(f->TypeInput());
        view(f->OptionInput());
        for (QoSObject* object : {static_cast<QoSObject*>(c), static_cast<QoSObject*>(f)})
            connect(object, &QoSObject::propertyChanged, &context,
                    [&heard] { heard << QStringLiteral("object"); });
        if (set != u"step") {
            if (field == u"prio")
                c->SetQoSPrio(set);
            else if (field == u"type")
                f->SetQoSType(set);
            else if (field == u"option")
                f->SetQoSOption(set);
            else if (field == u"port")
                f->SetQoSPort(set);
            else
                f->SetQoSIP(set);
        } else if (field == u"prio") {
            c->PrioInput()->Increment();
        } else if (field == u"type") {
            f->TypeInput()->Step();
        } else {
            f->OptionInput()->Step(+1);
        }
        context.disconnect();
        const QString value = field == u"prio"     ? c->QoSPrio()
                              : field == u"type"   ? f->QoSType()
                              : field == u"option" ? f->QoSOption()
                              : field == u"port"   ? f->QoSPort()
                                                   : f->QoSIP();
        QTEST(value, "value");
        QTEST(doc.IsModified(), "modified");
        QTEST(heard.join(u' '), "heard");
        QStringList recorded;
        for (const HistoryItem& item : doc.history()->Items()) {
            QCOMPARE(item.ObjectName, f->Name());
            recorded << item.PropertyName + u'=' + item.Value.toString();
        }
        QTEST(recorded, "recorded");
    }

    // The type field's step counter is the filter's: a type set from outside (the reader, a
    // port list, leaving the field) does not move it.
    void theTypeStepsFromItsOwnCounter_data()
    {
        QTest::addColumn<QString>("actions");
        QTest::addColumn<QString>("type");
        // clang-format off
        QTest::newRow("steps go round") << "step step step step" << "client";
        QTest::newRow("a set type does not move the counter") << "type=server step" << "client";
        QTest::newRow("the first port's client does not move it") << "port=80 step step" << "server";
        QTest::newRow("emptied ports clear the type, not the counter") << "step step port=80 port= step" << "";
        QTest::newRow("leaving an empty type with ports") << "port=80 step step step left" << "client";
        QTest::newRow("read as a file is read") << "import:type=server step" << "client";
        // Leaving the field empty with ports gives "client", unless the focus only went to the
        // type's menu or to another window.
        QTest::newRow("left by a click") << "port=80 type= left:mouse" << "client";
        QTest::newRow("left for the type menu") << "port=80 type= left:popup" << "";
        QTest::newRow("left for another window") << "port=80 type= left:window" << "";
        QTest::newRow("left without ports") << "type= left" << "";
        // clang-format on
    }
    void theTypeStepsFromItsOwnCounter()
    {
        QFETCH(QString, actions);
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C F1"));
        QoSFilter* f = flt(doc, 1);
        for (const QString& action : actions.split(u' ')) {
            const bool importing = action.startsWith(u"import:");
            const QString a = importing ? action.mid(7) : action;
            std::optional<Document::ImportScope> scope;
            if (importing)
                scope.emplace(doc);
            if (a == u"step")
                f->TypeInput()->Step();
            else if (a.startsWith(u"left"))
                f->TypeFieldLeft(a.endsWith(u"popup")    ? Qt::PopupFocusReason
                                 : a.endsWith(u"window") ? Qt::ActiveWindowFocusReason
                                 : a.endsWith(u"mouse")  ? Qt::MouseFocusReason
                                                         : Qt::TabFocusReason);
            else if (a.startsWith(u"port="))
                f->SetQoSPort(a.mid(5));
            else
                f->SetQoSType(a.mid(5));
        }
        QTEST(f->QoSType(), "type");
        QTEST(f->TypeInput()->Text(), "type");
    }
};

QTEST_GUILESS_MAIN(TestTree)
#include "tst_tree.moc"
