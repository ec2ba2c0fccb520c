#include "base/qoserror.h"
#include "base/scriptedprompt.h"
#include "inputs/bandwidthfield.h"
#include "inputs/ipfield.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"

#include <QTest>

#include <optional>

Q_DECLARE_METATYPE(std::optional<int>)

// Figures beyond 32 bits: the check button stops and says why, and each query that throws
// has a twin that gives nothing instead, in exactly the cases where the first one throws.
class TestOverflow : public QObject
{
    Q_OBJECT

    static std::optional<int> none() { return std::nullopt; }

private slots:
    void checkButton_data()
    {
        // Main classes M1, M2, ... and sub classes S1, S2, ... of M1, each "minimum maximum",
        // on a 1000kbit down line; the button is pressed on M1.
        QTest::addColumn<QStringList>("mains");
        QTest::addColumn<QStringList>("subs");
        QTest::addColumn<bool>("ranToEnd");
        QTest::addColumn<QString>("invalid"); // the flags the check left invalid

        QTest::newRow("a tree that fits is checked without a word")
            << QStringList{"400kbit 1000kbit", "400kbit 1000kbit"} << QStringList{"100kbit 400kbit"} << true
            << "";
        QTest::newRow("an overbooked tree is coloured, not told")
            << QStringList{"600kbit 1000kbit", "600kbit 1000kbit"}
            << QStringList{"600kbit 400kbit", "600kbit 400kbit"} << true << "M1.min S1.min S2.min";
        QTest::newRow("sibling minimums beyond 32 bits stop the check at once")
            << QStringList{"2000000000kbit 1kbit", "2000000000kbit 1kbit"} << QStringList{"0kbit 0kbit"}
            << false << "";
        QTest::newRow("a parent maximum beyond 32 bits stops it below the parent")
            << QStringList{"400kbit 3000gbit"} << QStringList{"0kbit 1kbit"} << false << "M1.max";
    }
    void checkButton()
    {
        QFETCH(QStringList, mains);
        QFETCH(QStringList, subs);
        QFETCH(bool, ranToEnd);
        QFETCH(QString, invalid);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        doc.Common1()->SetQoSInternetBandDown(QStringLiteral("1000kbit"));
        QList<std::pair<QString, QoSClass*>> classes;
        auto add = [&](const QString& parent, const QString& name, const QString& figures) {
            QoSClass* c = doc.Down1()->AddClass(parent, {.minBandwidth = figures.section(u' ', 0, 0),
                                                         .maxBandwidth = figures.section(u' ', 1, 1),
                                                         .direction = QStringLiteral("down"),
                                                         .prio = QStringLiteral("0")});
            classes << std::pair(name, c);
            return c;
        };
        for (qsizetype i = 0; i < mains.size(); ++i)
            add(QStringLiteral("0"), QStringLiteral("M%1").arg(i + 1), mains[i]);
        const QString first = QString::number(classes.first().second->ClassIdx());
        for (qsizetype i = 0; i < subs.size(); ++i)
            add(first, QStringLiteral("S%1").arg(i + 1), subs[i]);

        QCOMPARE(classes.first().second->CheckCommand(), ranToEnd);
        QCOMPARE(prompt.messages(), ranToEnd ? QStringList() : QStringList{QoSError::overflow().message()});
        QStringList flags;
        for (const auto& [name, c] : std::as_const(classes)) {
            if (!c->MinField()->IsValid())
                flags << name + QStringLiteral(".min");
            if (!c->MaxField()->IsValid())
                flags << name + QStringLiteral(".max");
        }
        QCOMPARE(flags.join(u' '), invalid);
    }

    void tryKbit_data()
    {
        QTest::addColumn<QString>("bandwidth");
        QTest::addColumn<std::optional<int>>("kbit");
        QTest::newRow("converted by its unit") << "10Mbit" << std::optional<int>(10240);
        QTest::newRow("unknown unit counts 0") << "5xyz" << std::optional<int>(0);
        QTest::newRow("the largest that fits") << "2097151mbit" << std::optional<int>(2147482624);
        QTest::newRow("beyond 32 bits by the unit alone") << "2097152mbit" << none();
        QTest::newRow("far beyond below zero") << "-3000gbit" << none();
    }
    void tryKbit()
    {
        QFETCH(QString, bandwidth);
        QFETCH(std::optional<int>, kbit);
        BandwidthField f;
        f.SetBandwidth(bandwidth);
        QCOMPARE(f.TryKbit(), kbit);
        if (kbit)
            QCOMPARE(f.kbit(), *kbit);
        else
            QVERIFY_THROWS_EXCEPTION(QoSError, f.kbit());
    }

    void tryLimit_data()
    {
        QTest::addColumn<QString>("parentMax"); // "" for a main class
        QTest::addColumn<std::optional<int>>("limit");
        QTest::newRow("a main class: the line's bare number") << "" << std::optional<int>(2);
        QTest::newRow("a sub class: the parent's maximum in kbit") << "1Mbit" << std::optional<int>(1024);
        QTest::newRow("a parent maximum beyond 32 bits") << "3000gbit" << none();
    }
    void tryLimit()
    {
        QFETCH(QString, parentMax);
        QFETCH(std::optional<int>, limit);
        Document doc;
        doc.Common1()->SetQoSInternetBandDown(QStringLiteral("2Mbit"));
        QString parent = QStringLiteral("0");
        if (!parentMax.isEmpty())
            parent = QString::number(
                doc.Down1()
                    ->AddClass(parent, {.maxBandwidth = parentMax, .direction = QStringLiteral("down")})
                    ->ClassIdx());
        const QoSClass* c = doc.Down1()->AddClass(parent, {.minBandwidth = QStringLiteral("1kbit"),
                                                           .maxBandwidth = QStringLiteral("1kbit"),
                                                           .direction = QStringLiteral("down")});
        QCOMPARE(c->TryLimit(), limit);
        if (limit)
            QCOMPARE(c->Limit(), *limit);
        else
            QVERIFY_THROWS_EXCEPTION(QoSError, c->Limit());
    }

    void tryText_data()
    {
        QTest::addColumn<QString>("maskBits");
        QTest::addColumn<QString>("text"); // "-" for nothing
        QTest::newRow("mask bits") << "8"
                                   << "10.0.0.0/8";
        QTest::newRow("no mask bits") << ""
                                      << "10.0.0.0";
        QTest::newRow("mask bits beyond any number") << QString(400, u'9') << "-";
    }
    void tryText()
    {
        QFETCH(QString, maskBits);
        QFETCH(QString, text);
        IpField f;
        f.SetAddress(QStringLiteral("10.0.0.0"));
        f.SetMaskBits(maskBits);
        QCOMPARE(f.TryText().value_or(QStringLiteral("-")), text);
        if (text != u"-")
            QCOMPARE(f.Text(), text);
        else
            QVERIFY_THROWS_EXCEPTION(QoSError, f.Text());
    }
};

QTEST_GUILESS_MAIN(TestOverflow)
#include "tst_overflow.moc"
