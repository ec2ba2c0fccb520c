#include "app/firststart.h"
#include "base/scriptedprompt.h"
#include "check/problemlist.h"
#include "check/problemwatcher.h"
#include "check/validationwatcher.h"
#include "file/qosreader.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using Change = std::function<void(Document&)>;
Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(Problem::Kind)

namespace {

// One main class with a sub class, and one filter under the sub class: every value sound,
// but for the settings given (a setting counts where it is first written).
QByteArray soundFile(const QByteArray& changed = {})
{
    return changed + "QOS_INTERNET_BAND_DOWN='1000kbit'\nQOS_CLASS_N='2'\nQOS_CLASS_1_PARENT='0'\n"
                     "QOS_CLASS_1_MINBANDWIDTH='500kbit'\nQOS_CLASS_1_MAXBANDWIDTH='1000kbit'\n"
                     "QOS_CLASS_2_PARENT='1'\nQOS_CLASS_2_MINBANDWIDTH='100kbit'\n"
                     "QOS_CLASS_2_MAXBANDWIDTH='800kbit'\n#QOS_CLASS_2_CAPTION='web'\nQOS_FILTER_N='1'\n"
                     "QOS_FILTER_1_CLASS='2'\nQOS_FILTER_1_PORT='80'\nQOS_FILTER_1_IP='10.0.0.1'\n"
                     "QOS_FILTER_1_TYPE='client'\n";
}

QoSObject* byCaption(const Document& doc, const QString& caption)
{
    for (QoSObject* o : doc.Objects())
        if (o->Caption() == caption)
            return o;
    return nullptr;
}

// The document as the window holds it: the list follows, then the pages' validation, so that
// the list would hear a change before the flags it depends on are set.
struct Followed
{
    ScriptedPrompt prompt;
    Document doc{&prompt};
    ProblemWatcher problems{&doc};
    std::unique_ptr<ValidationWatcher> down;
    std::unique_ptr<ValidationWatcher> up;

    Followed(const QByteArray& text, bool validation)
    {
        if (validation) {
            down = std::make_unique<ValidationWatcher>(doc.Down1());
            up = std::make_unique<ValidationWatcher>(doc.Up1());
        }
        FirstStart::Apply(doc);
        problems.SetImportReport(ImportQoSBytes(doc, text));
        settle();
    }
    void settle()
    {
        for (int i = 0; i < 10 && (problems.Pending() || (down && (down->Pending() || up->Pending()))); ++i)
            QCoreApplication::processEvents();
    }
    QStringList lines() const
    {
        QStringList out;
        for (const Problem& p : problems.Problems())
            out << p.text;
        return out;
    }
};

// tarnwick-cli check names the problems the window's list shows, in the same order, and then
// one balance line per class with sub classes and per page.
void checkPrintsTheSameList(const QByteArray& text, const QStringList& shown)
{
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("qos.txt")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
    file.close();
    QProcess cli;
    cli.start(QStringLiteral(TARNWICK_CLI), {QStringLiteral("check"), file.fileName()});
    QVERIFY(cli.waitForFinished(60000));
    QCOMPARE(cli.exitCode(), shown.isEmpty() ? 0 : 1);
    const QStringList printed = QString::fromUtf8(cli.readAllStandardOutput()).split(u'\n');
    QCOMPARE(printed.mid(0, shown.size()), shown);
    QVERIFY(printed.size() > shown.size() && printed.at(shown.size()).contains(u"garantiert von"));
}

} // namespace

class TestProblemList : public QObject
{
    Q_OBJECT
private slots:
    // The samples and the test files as the window lists them, and as check prints them.
    void filesAsCheckPrintsThem_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const QString& folder : {QStringLiteral(TARNWICK_SAMPLES), QStringLiteral(TARNWICK_TEST_DATA)}) {
            const QDir dir(folder);
            for (const QString& name : dir.entryList({QStringLiteral("*.qos.txt")}, QDir::Files)) {
                QFile file(dir.filePath(name));
                QVERIFY(file.open(QIODevice::ReadOnly));
                QTest::newRow(qPrintable(name)) << file.readAll();
            }
        }
    }
    void filesAsCheckPrintsThem()
    {
        QFETCH(QByteArray, text);
        checkPrintsTheSameList(text, Followed(text, true).lines());
    }

    // Every kind of problem, each alone in a document otherwise sound, named with its box, and
    // printed by check as the window lists it.
    void kinds_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<Problem::Kind>("kind");
        QTest::addColumn<QString>("box"); // the caption of its box; none for the import and "Allgemein"
        using K = Problem::Kind;
        // clang-format off
        QTest::newRow("minimums above the line") << soundFile("QOS_CLASS_1_MINBANDWIDTH='1200kbit'\n") << K::Bandwidth << "Class 1";
        QTest::newRow("maximum above the parent's") << soundFile("QOS_CLASS_2_MAXBANDWIDTH='2000kbit'\n") << K::Bandwidth << "web";
        QTest::newRow("too many ports") << soundFile("QOS_FILTER_1_PORT='1-21'\n") << K::Ports << "";
        QTest::newRow("range written backwards") << soundFile("QOS_FILTER_1_PORT='90-80'\n") << K::Ports << "";
        QTest::newRow("first port out of range") << soundFile("QOS_FILTER_1_PORT='70000'\n") << K::Ports << "";
        QTest::newRow("invalid address") << soundFile("QOS_FILTER_1_IP='10.0.0.256'\n") << K::Address << "";
        QTest::newRow("mask bits beyond any number") << soundFile("QOS_FILTER_1_IP='10.0.0.0/" + QByteArray(400, '9') + "'\n") << K::Address << "";
        QTest::newRow("minimum kept as text") << soundFile("QOS_CLASS_2_MINBANDWIDTH='1.5Mbit'\n") << K::Kept << "web";
        QTest::newRow("priority outside 0 to 3") << soundFile("QOS_CLASS_2_PRIO='7'\n") << K::Kept << "web";
        QTest::newRow("type not offered") << soundFile("QOS_FILTER_1_TYPE='Client'\n") << K::Kept << "";
        QTest::newRow("option not offered") << soundFile("QOS_FILTER_1_OPTION='SYN'\n") << K::Kept << "";
        QTest::newRow("line speed kept as text") << soundFile("QOS_LOCALNET_BAND='1.5Mbit'\n") << K::Kept << "Allgemein";
        QTest::newRow("class below the fourth level")
            << QByteArray("#QOS_FILEVERSION='Tarnwick 1.1'\nQOS_CLASS_N='5'\n#QOS_CLASS_1_CELLPOS='0,0'\nQOS_CLASS_1_PARENT='0'\n"
                          "#QOS_CLASS_2_CELLPOS='0,1'\nQOS_CLASS_2_PARENT='1'\n#QOS_CLASS_3_CELLPOS='0,2'\nQOS_CLASS_3_PARENT='2'\n"
                          "#QOS_CLASS_4_CELLPOS='0,3'\nQOS_CLASS_4_PARENT='3'\n#QOS_CLASS_5_CELLPOS='1,3'\nQOS_CLASS_5_PARENT='4'\n")
            << K::Depth << "Class 5";
        QTest::newRow("import stopped early") << soundFile("QOS_CLASS_2_DIRECTION='sideways'\n") << K::Import << "-";
        // clang-format on
    }
    void kinds()
    {
        QFETCH(QByteArray, file);
        QFETCH(Problem::Kind, kind);
        QFETCH(QString, box);
        const Followed f(file, true);
        checkPrintsTheSameList(file, f.lines());
        const QList<Problem>& problems = f.problems.Problems();
        // A value kept as text is also an odd bandwidth: only the problems of the row's kind count.
        QList<Problem> ofKind;
        QStringList texts;
        for (const Problem& p : problems) {
            texts << p.text;
            if (p.kind == kind)
                ofKind << p;
        }
        QVERIFY2(ofKind.size() == 1, qPrintable(texts.join(u'\n')));
        const Problem& p = ofKind[0];
        QCOMPARE(p.common, box == u"Allgemein");
        if (box == u"-" || box == u"Allgemein") {
            QVERIFY(!p.object);
            QVERIFY(box == u"-" || p.text.startsWith(box + QStringLiteral(": ")));
        } else {
            QCOMPARE(p.object.data(), byCaption(f.doc, box));
            QVERIFY(p.text.startsWith(DescribePlace(*p.object) + QStringLiteral(": ")));
        }
    }

    // A change is heard, and the list made once the event loop comes round: after the flags the
    // change alters were set, with one signal for however many changes came in one turn.
    void followsChanges_data()
    {
        QTest::addColumn<bool>("validation"); // the pages' validation runs, as in the window
        QTest::addColumn<Change>("change");
        QTest::addColumn<QStringList>("boxes"); // the boxes named afterwards, in order
        const auto cls = [](Document& doc, const char* caption) {
            return qobject_cast<QoSClass*>(byCaption(doc, QString::fromLatin1(caption)));
        };
        const auto filter = [](Document& doc) { return qobject_cast<QoSFilter*>(byCaption(doc, QString())); };
        // clang-format off
        QTest::newRow("a minimum beyond the parent's maximum") << true
            << Change([=](Document& d) { cls(d, "web")->SetQoSMinBandWidth(QStringLiteral("1200kbit")); })
            << QStringList{"web"};
        QTest::newRow("the line speed lowered") << true
            << Change([](Document& d) { d.Common1()->BandDownField()->SetBandwidth(QStringLiteral("400kbit")); })
            << QStringList{"Class 1", "Class 1"};
        QTest::newRow("two changes in one turn") << true
            << Change([=](Document& d) {
                   filter(d)->SetQoSPort(QStringLiteral("1-30"));
                   cls(d, "web")->SetCaption(QStringLiteral("mail"));
               })
            << QStringList{""};
        QTest::newRow("a box with a problem deleted") << true
            << Change([=](Document& d) {
                   filter(d)->SetQoSIP(QStringLiteral("1.2.3.999"));
                   cls(d, "web")->SetQoSMaxBandWidth(QStringLiteral("5000kbit"));
                   filter(d)->EditDelete();
               })
            << QStringList{"web"};
        QTest::newRow("a flag set by the check button alone") << false
            << Change([=](Document& d) {
                   cls(d, "web")->MinField()->SetBandwidth(QStringLiteral("2000kbit"));
                   QCoreApplication::processEvents(); // the list is made, with the flags as they were
                   QCoreApplication::processEvents();
                   cls(d, "Class 1")->CheckCommand();
               })
            << QStringList{"web"};
        // clang-format on
    }
    void followsChanges()
    {
        QFETCH(bool, validation);
        QFETCH(Change, change);
        QFETCH(QStringList, boxes);
        Followed f(soundFile(), validation);
        QCOMPARE(f.problems.Problems().size(), 0);
        QSignalSpy spy(&f.problems, &ProblemWatcher::problemsChanged);
        change(f.doc);
        QCOMPARE(spy.count(), 0); // nothing is made while the change is under way
        QVERIFY(f.problems.Pending());
        f.settle();
        QCOMPARE(spy.count(), 1);
        QStringList named;
        for (const Problem& p : f.problems.Problems())
            named << (p.object ? p.object->Caption() : QStringLiteral("-"));
        QCOMPARE(named, boxes);
    }
};

QTEST_GUILESS_MAIN(TestProblemList)
#include "tst_problemlist.moc"
