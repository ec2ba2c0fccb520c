#include "app/firststart.h"
#include "base/scriptedprompt.h"
#include "check/documentcheck.h"
#include "file/qosreader.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/siblingsum.h"

#include <QFile>
#include <QTest>

namespace {

// A document as tarnwick-cli reads it: a first start, then the file.
struct Checked
{
    ScriptedPrompt prompt;
    Document doc{&prompt};
    CheckReport report;

    explicit Checked(const QByteArray& text)
    {
        FirstStart::Apply(doc);
        report = CheckDocument(doc, ImportQoSBytes(doc, text));
    }
};

QByteArray sample(const QString& name)
{
    QFile file(QStringLiteral(TARNWICK_SAMPLES "/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Main classes with a minimum and a maximum of 1000kbit, "down"/"up" for the page.
QByteArray mainClasses(const QStringList& classes)
{
    QByteArray text = "QOS_INTERNET_BAND_DOWN='1000kbit'\nQOS_INTERNET_BAND_UP='1000kbit'\n";
    text += "QOS_CLASS_N='" + QByteArray::number(classes.size()) + "'\n";
    for (int n = 1; n <= classes.size(); ++n) {
        const QStringList words = classes[n - 1].split(u' ');
        const QByteArray prefix = "QOS_CLASS_" + QByteArray::number(n);
        text += prefix + "_PARENT='0'\n" + prefix + "_DIRECTION='" + words[0].toLatin1() + "'\n" + prefix +
                "_MINBANDWIDTH='" + words[1].toLatin1() + "'\n" + prefix + "_MAXBANDWIDTH='1000kbit'\n";
    }
    return text;
}

} // namespace

class TestDocumentCheck : public QObject
{
    Q_OBJECT
private slots:
    // What the check said of the hand-written samples before it moved into the core.
    void samples_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QStringList>("summaries");
        QTest::newRow("home router")
            << "home-router.qos.txt"
            << QStringList{
                   "Down: Klasse \"Class 1\" in Zelle 0,0: 15000 kbit garantiert von 16000 kbit verfügbar, "
                   "1000 kbit frei",
                   "Down: Hauptklassen: 15000 kbit garantiert von 16000 kbit der Leitung, 1000 kbit frei",
                   "Up: Klasse \"Class 5\" in Zelle 0,0: 2200 kbit garantiert von 2400 kbit verfügbar, 200 "
                   "kbit frei",
                   "Up: Hauptklassen: 2200 kbit garantiert von 2400 kbit der Leitung, 200 kbit frei"};
        QTest::newRow("upstream only")
            << "upstream-only.qos.txt"
            << QStringList{
                   "Down: Hauptklassen: 0 kbit garantiert von 50000 kbit der Leitung, 50000 kbit frei",
                   "Up: Klasse \"Class 1\" in Zelle 0,0: 9500 kbit garantiert von 10000 kbit verfügbar, 500 "
                   "kbit frei",
                   "Up: Hauptklassen: 9500 kbit garantiert von 10000 kbit der Leitung, 500 kbit frei"};
    }
    void samples()
    {
        QFETCH(QString, file);
        QFETCH(QStringList, summaries);
        const QByteArray text = sample(file);
        QVERIFY(!text.isEmpty());
        const Checked checked(text);
        QCOMPARE(checked.report.problems, QStringList());
        QCOMPARE(checked.report.summaries, summaries);
    }

    // A main class's sibling sum adds the main classes of its own direction only: the down
    // line is not shared with the classes of the up page.
    void mainClassSumsKeepToTheirDirection_data()
    {
        QTest::addColumn<QStringList>("classes");
        QTest::addColumn<QStringList>("problems");
        // The places only: the explanation's words are its own business.
        const QString overbooked = QStringLiteral("Down: Klasse \"Class %1\" in Zelle %2,0");
        QTest::newRow("one main class on each page")
            << QStringList{"down 600kbit", "up 600kbit"} << QStringList();
        QTest::newRow("up classes between the down classes")
            << QStringList{"down 300kbit", "up 900kbit", "down 300kbit", "up 100kbit"} << QStringList();
        QTest::newRow("the down page overbooked, the up page not")
            << QStringList{"down 600kbit", "up 300kbit", "down 600kbit"}
            << QStringList{overbooked.arg(1).arg(0), overbooked.arg(3).arg(1)};
    }
    void mainClassSumsKeepToTheirDirection()
    {
        QFETCH(QStringList, classes);
        QFETCH(QStringList, problems);
        const Checked checked(mainClasses(classes));
        QStringList places;
        for (const QString& line : checked.report.problems)
            places << line.left(
                line.indexOf(QStringLiteral(": "), line.indexOf(QStringLiteral(" in Zelle "))));
        QCOMPARE(places, problems);
        // The group itself: each main class with the main classes of its direction.
        for (QoSObject* o : checked.doc.Objects())
            if (auto* c = qobject_cast<QoSClass*>(o))
                for (const QoSClass* sibling : SiblingSum::GroupOf(*c))
                    QCOMPARE(sibling->QoSDirection(), c->QoSDirection());
    }

    // The check button's sum stops at 32 bits after every step; the balance lines add on.
    void siblingSum_data()
    {
        using Checked32 = std::optional<qint32>;
        using Total64 = std::optional<qint64>;
        QTest::addColumn<QStringList>("minimums");
        QTest::addColumn<Checked32>("checked");
        QTest::addColumn<Total64>("total");
        // clang-format off
        QTest::newRow("no classes") << QStringList() << Checked32(0) << Total64(0);
        QTest::newRow("kbit of each unit") << QStringList{"300kbit", "1Mbit"} << Checked32(1324) << Total64(1324);
        QTest::newRow("beyond 32 bits") << QStringList{"2000000000kbit", "2000000000kbit"} << Checked32() << Total64(4000000000LL);
        QTest::newRow("beyond 32 bits on the way only") << QStringList{"2147483647kbit", "1kbit", "-5kbit"} << Checked32() << Total64(2147483643);
        QTest::newRow("within 32 bits in another order") << QStringList{"-5kbit", "2147483647kbit", "1kbit"} << Checked32(2147483643) << Total64(2147483643);
        QTest::newRow("a minimum beyond 32 bits") << QStringList{"300kbit", "3000Gbit"} << Checked32() << Total64();
        // clang-format on
    }
    void siblingSum()
    {
        QFETCH(QStringList, minimums);
        QFETCH(std::optional<qint32>, checked);
        QFETCH(std::optional<qint64>, total);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        QList<QoSClass*> group;
        for (const QString& minimum : minimums) {
            group << doc.Down1()->AddClass(QStringLiteral("0"), {.minBandwidth = minimum,
                                                                 .maxBandwidth = QStringLiteral("1000kbit"),
                                                                 .direction = QStringLiteral("down"),
                                                                 .prio = QStringLiteral("0")});
            QVERIFY(group.last());
        }
        const SiblingSum sum(group);
        QCOMPARE(sum.Checked(), checked);
        QCOMPARE(sum.Total(), total);
    }
};

QTEST_GUILESS_MAIN(TestDocumentCheck)
#include "tst_documentcheck.moc"
