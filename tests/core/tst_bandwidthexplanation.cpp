#include "base/scriptedprompt.h"
#include "check/bandwidthexplanation.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/validationpass.h"

#include <QTest>

namespace {

// A document from a short script, checked as the check button of every main class checks it.
//   "line 16000kbit 2400kbit"   the down and up line speeds
//   "A P 1000kbit 2000kbit"     class A (its caption) under P ("-": a main class), minimum,
//                               maximum; a fifth word "up" puts it on the up page
struct Checked
{
    ScriptedPrompt prompt;
    Document doc{&prompt};
    QHash<QString, QoSClass*> classes;

    explicit Checked(const QString& script)
    {
        for (const QString& item : script.split(u';', Qt::SkipEmptyParts)) {
            const QStringList w = item.simplified().split(u' ');
            if (w[0] == u"line") {
                doc.Common1()->SetQoSInternetBandDown(w[1]);
                doc.Common1()->SetQoSInternetBandUp(w[2]);
                continue;
            }
            const bool up = w.value(4) == u"up";
            const QoSClass* parent = classes.value(w[1]);
            ObjectPage* page = up ? doc.Up1() : doc.Down1();
            classes.insert(w[0],
                           page->AddClass(parent ? QString::number(parent->ClassIdx()) : QStringLiteral("0"),
                                          {.minBandwidth = w[2],
                                           .maxBandwidth = w[3],
                                           .direction = page->Direction(),
                                           .prio = QStringLiteral("0"),
                                           .caption = w[0]}));
        }
        ValidationPass().ValidateDocument(doc);
    }

    // "B.min=700kbit" or "P.max=3000000Mbit", then the check again: a figure beyond 32 bits
    // stops it, and the colours stay as the first check left them.
    void change(const QString& step)
    {
        const QoSClass* c = classes.value(step.section(u'.', 0, 0));
        QVERIFY(c);
        const QString value = step.section(u'=', 1);
        (step.contains(QStringLiteral(".min=")) ? c->MinField() : c->MaxField())->SetBandwidth(value);
        ValidationPass().ValidateDocument(doc);
    }
};

} // namespace

class TestBandwidthExplanation : public QObject
{
    Q_OBJECT
private slots:
    void explanation_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("then");
        QTest::addColumn<QString>("field"); // "A.min" or "A.max"
        // Parts the text must hold; none: the field is valid and the text empty.
        QTest::addColumn<QStringList>("parts");

        const QString router = QStringLiteral("line 16000kbit 2400kbit; P - 15000kbit 16000kbit;"
                                              "A P 1000kbit 2000kbit; B P 10000kbit 16000kbit;"
                                              "C P 4000kbit 16000kbit");
        QTest::newRow("siblings over the parent's maximum")
            << router << "C.min=6000kbit"
            << "A.min"
            << QStringList{"Klassen unter \"P\" übersteigen zusammen sein Maximum",
                           "17000 kbit aus 3 Klassen",
                           "\"A\" (diese Klasse): 1000 kbit",
                           "\"B\": 10000 kbit",
                           "\"C\": 6000 kbit",
                           "Grenze: 16000 kbit",
                           "Zu viel: 1000 kbit"};
        QTest::newRow("valid maximum beside a red minimum") << router << "C.min=6000kbit"
                                                            << "A.max" << QStringList{};
        QTest::newRow("minimum in Mbit, sum in kbit")
            << "line 16000kbit 2400kbit; P - 1000kbit 4000kbit; A P 2Mbit 4000kbit; B P 3000kbit 4000kbit"
            << QString() << "A.min"
            << QStringList{"\"A\" (diese Klasse): 2 Mbit (2048 kbit)", "5048 kbit aus 2 Klassen",
                           "Grenze: 4000 kbit", "Zu viel: 1048 kbit"};
        QTest::newRow("main classes over the line")
            << "line 1000kbit 1000kbit; A - 600kbit 1000kbit; B - 600kbit 1000kbit" << QString() << "B.min"
            << QStringList{"Die Minima der Hauptklassen", "Bandbreite Down", "1200 kbit aus 2 Klassen",
                           "Grenze: 1000 kbit", "Zu viel: 200 kbit"};
        QTest::newRow("line in Mbit counts by its number")
            << "line 16Mbit 16Mbit; A - 100kbit 16kbit" << QString() << "A.min"
            << QStringList{"Das Minimum ist größer als die Bandbreite Down", "Minimum: 100 kbit",
                           "16 Mbit, gezählt als 16 kbit", "Zu viel: 84 kbit"};
        QTest::newRow("nested level: the parent's maximum, not the line")
            << "line 16000kbit 2400kbit; P - 8000kbit 16000kbit; Q P 3000kbit 3000kbit;"
               "X Q 2000kbit 3000kbit; Y Q 2000kbit 3000kbit"
            << QString() << "Y.min"
            << QStringList{"unter \"Q\"", "4000 kbit aus 2 Klassen", "Grenze: 3000 kbit",
                           "Zu viel: 1000 kbit"};
        QTest::newRow("many siblings: the count, not every caption")
            << "line 1000kbit 1000kbit; A - 200kbit 1000kbit; B - 200kbit 1000kbit; C - 200kbit 1000kbit;"
               "D - 200kbit 1000kbit; E - 200kbit 1000kbit; F - 250kbit 1000kbit"
            << QString() << "F.min"
            << QStringList{"1250 kbit aus 6 Klassen", "davon diese Klasse: 250 kbit", "Zu viel: 250 kbit"};
        QTest::newRow("minimum of 0 kbit")
            << "line 1000kbit 1000kbit; A - 0kbit 1000kbit" << QString() << "A.min"
            << QStringList{"mindestens 1 kbit", "eingetragen ist 0 kbit"};
        QTest::newRow("maximum in Mbit above the parent's, counted by its number")
            << router << "A.max=20000Mbit"
            << "A.max"
            << QStringList{"Das Maximum ist größer als das Maximum von \"P\"",
                           "20000 Mbit, gezählt als 20000 kbit", "Grenze: 16000 kbit", "Zu viel: 4000 kbit"};
        QTest::newRow("maximum above the line")
            << "line 1000kbit 1000kbit; A - 100kbit 1500kbit" << QString() << "A.max"
            << QStringList{"größer als die Bandbreite Down", "Grenze: 1000 kbit", "Zu viel: 500 kbit"};
        QTest::newRow("maximum of 0") << "line 1000kbit 1000kbit; A - 100kbit 0kbit" << QString() << "A.max"
                                      << QStringList{"größer als 0", "eingetragen ist 0 kbit"};
        QTest::newRow("overflow: the sum beyond 32 bits")
            << "line 1000kbit 1000kbit; A - 600kbit 1000kbit; B - 600kbit 1000kbit"
            << "B.min=2147483100kbit"
            << "A.min"
            << QStringList{"2147483700 kbit", "passt nicht in 32 Bit", "Farbe ist die der letzten Prüfung"};
        QTest::newRow("overflow: a minimum beyond 32 bits in kbit")
            << "line 1000kbit 1000kbit; A - 600kbit 1000kbit; B - 600kbit 1000kbit"
            << "A.min=3000000Mbit"
            << "A.min" << QStringList{"3000000 Mbit", "3072000000 kbit", "passt nicht in 32 Bit"};
        QTest::newRow("overflow: the parent's maximum beyond 32 bits")
            << "line 16000kbit 2400kbit; P - 1000kbit 1000kbit; A P 100kbit 2000kbit"
            << "P.max=3000000Mbit"
            << "A.max" << QStringList{"Das Maximum von \"P\", 3000000 Mbit, ergibt 3072000000 kbit"};
    }

    void explanation()
    {
        QFETCH(QString, script);
        QFETCH(QString, then);
        QFETCH(QString, field);
        QFETCH(QStringList, parts);
        Checked checked(script);
        if (!then.isEmpty())
            checked.change(then);
        const QoSClass* c = checked.classes.value(field.section(u'.', 0, 0));
        QVERIFY(c);
        const bool minimum = field.endsWith(QStringLiteral(".min"));
        const QString text = ExplainBandwidth(*c, minimum ? BandwidthSide::Minimum : BandwidthSide::Maximum);
        QCOMPARE(text.isEmpty(), parts.isEmpty());
        for (const QString& part : parts)
            QVERIFY2(text.contains(part), qPrintable(text + QStringLiteral("\n  lacks: ") + part));
        // It is a tooltip: a few lines.
        QVERIFY2(text.count(u'\n') < 8, qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(TestBandwidthExplanation)
#include "tst_bandwidthexplanation.moc"
