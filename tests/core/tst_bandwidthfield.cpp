#include "base/qoserror.h"
#include "base/scriptedprompt.h"
#include "inputs/bandwidthfield.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

class TestBandwidthField : public QObject
{
    Q_OBJECT
private slots:
    // How a text splits into number and unit, what is written back, and its kbit value: a text
    // kept whole because the rounded number does not read back leaves an unknown unit.
    void setBandwidth_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("unit");
        QTest::addColumn<QString>("written");
        QTest::addColumn<int>("kbit");
        const int beyond = std::numeric_limits<int>::min(); // kbit beyond 32 bits
        // clang-format off
        QTest::newRow("empty is 0kbit") << "" << "0" << "kbit" << "0kbit" << 0;
        QTest::newRow("case of unit kept") << "10Mbit" << "10" << "Mbit" << "10Mbit" << 10240;
        QTest::newRow("number alone gets kbit") << "768" << "768" << "kbit" << "768kbit" << 768;
        QTest::newRow("unit alone gets 0") << "kbit" << "0" << "kbit" << "0kbit" << 0;
        QTest::newRow("rounded number not in text: text kept") << "1.5Mbit" << "2" << "1.5Mbit" << "1.5Mbit" << 0;
        QTest::newRow("rounded number found in text") << "2.5kbit" << "2" << ".5kbit" << "2.5kbit" << 0;
        QTest::newRow("negative fraction: text kept") << "-0.4kbit" << "0" << ".4kbit" << "-0.4kbit" << 0;
        QTest::newRow("leading zero dropped, same number") << "0768kbit" << "768" << "kbit" << "768kbit" << 768;
        QTest::newRow("exponent is unit") << "1e3kbit" << "1" << "e3kbit" << "1e3kbit" << 0;
        QTest::newRow("bit rounds up to a kbit") << "1023bit" << "1023" << "bit" << "1023bit" << 1;
        QTest::newRow("half a kbit rounds to even") << "512bit" << "512" << "bit" << "512bit" << 0;
        QTest::newRow("kbit beyond 32 bits") << "3000gbit" << "3000" << "gbit" << "3000gbit" << beyond;
        // clang-format on
    }
    void setBandwidth()
    {
        QFETCH(QString, text);
        QFETCH(QString, written);
        QFETCH(int, kbit);
        BandwidthField f;
        f.SetBandwidth(text);
        QTEST(f.Value(), "value");
        QTEST(f.Unit(), "unit");
        QCOMPARE(f.Bandwidth(), written);
        if (kbit == std::numeric_limits<int>::min())
            QVERIFY_THROWS_EXCEPTION(QoSError, f.kbit());
        else
            QCOMPARE(f.kbit(), kbit);
        // What is written reads back as itself: saving twice never grows a bandwidth.
        BandwidthField again;
        again.SetBandwidth(f.Bandwidth());
        QCOMPARE(again.Bandwidth(), written);
    }

    void keptTextGoesWhenTheUserChangesTheField()
    {
        BandwidthField f;
        f.SetBandwidth(QStringLiteral("1.5Mbit"));
        f.SetValue(QStringLiteral("3"));
        QCOMPARE(f.Bandwidth(), QStringLiteral("31.5Mbit"));
        f.SetBandwidth(QStringLiteral("1.5Mbit"));
        QVERIFY(f.Relabel(QStringLiteral("mbit")));
        QCOMPARE(f.Bandwidth(), QStringLiteral("2mbit"));
    }

    void numbersThatDoNotFitAreRefused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("beyond 32 bits") << "99999999999kbit";
        QTest::newRow("below 32 bits") << "-2147483649kbit";
        QTest::newRow("beyond a double") << QString(400, u'9') + QStringLiteral("kbit");
    }
    void numbersThatDoNotFitAreRefused()
    {
        QFETCH(QString, text);
        BandwidthField f;
        f.SetBandwidth(QStringLiteral("768kbit"));
        QSignalSpy change(&f, &BandwidthField::Change);
        QVERIFY_THROWS_EXCEPTION(QoSError, f.SetBandwidth(text));
        QVERIFY_THROWS_EXCEPTION(QoSError, f.SetValue(text.chopped(4)));
        QCOMPARE(f.Bandwidth(), QStringLiteral("768kbit"));
        QCOMPARE(change.count(), 0);
    }

    // Change follows the number: the same number read with another unit is no change, while a
    // unit relabelled by the user is one. A locked field is not relabelled.
    void changeSignal()
    {
        BandwidthField f;
        f.SetBandwidth(QStringLiteral("768kbit"));
        QSignalSpy change(&f, &BandwidthField::Change);
        f.SetBandwidth(QStringLiteral("768mbit"));
        QCOMPARE(change.count(), 0);
        f.SetBandwidth(QStringLiteral("512mbit"));
        QCOMPARE(change.count(), 1);
        QVERIFY(!f.Relabel(QStringLiteral("mbit")));
        f.SetLocked(true);
        QVERIFY(!f.Relabel(QStringLiteral("kbit")));
        f.SetLocked(false);
        QVERIFY(f.Relabel(QStringLiteral("kbit")));
        QCOMPARE(f.Bandwidth(), QStringLiteral("512kbit"));
        QCOMPARE(change.count(), 2);
    }

    void kbitLet_data()
    {
        // clang-format off
        QTest::addColumn<QString>("unit");
        QTest::addColumn<int>("kbit");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("unitAfter");
        QTest::newRow("mbit") << "mbit" << 2048 << "2" << "mbit";
        QTest::newRow("fraction unrounded") << "mbit" << 1000 << "0.9765625" << "mbit";
        QTest::newRow("capitals are unknown here") << "Mbit" << 2048 << "0" << "Mbit";
        QTest::newRow("empty unit becomes kbit") << "" << 64 << "64" << "kbit";
        // clang-format on
    }
    void kbitLet()
    {
        QFETCH(QString, unit);
        QFETCH(int, kbit);
        BandwidthField f;
        f.SetUnit(unit);
        f.SetKbit(kbit);
        QTEST(f.Value(), "value");
        QTEST(f.Unit(), "unitAfter");
    }

    void convert_data()
    {
        // clang-format off
        QTest::addColumn<QString>("bandwidth");
        QTest::addColumn<QString>("target");
        QTest::addColumn<bool>("answer");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("asked"); // the kind of the one question or message, if any
        QTest::addColumn<bool>("locked");
        QTest::newRow("inexact, yes") << "1000kbit" << "mbit" << true << "1mbit" << "yesno" << false;
        QTest::newRow("inexact, no") << "1000kbit" << "mbit" << false << "1000kbit" << "yesno" << false;
        QTest::newRow("exact") << "2048kbit" << "mbit" << true << "2mbit" << "" << false;
        QTest::newRow("same unit in other case") << "5Kbit" << "kbit" << true << "5Kbit" << "" << false;
        QTest::newRow("overflow") << "3gbit" << "bit" << true << "3gbit" << "message" << false;
        // A menu opened before the field was locked may still offer its commands.
        QTest::newRow("locked: nothing changes, nothing asked") << "2048kbit" << "mbit" << true << "2048kbit" << "" << true;
        // clang-format on
    }
    void convert()
    {
        QFETCH(QString, bandwidth);
        QFETCH(QString, target);
        QFETCH(bool, answer);
        QFETCH(QString, after);
        QFETCH(QString, asked);
        QFETCH(bool, locked);
        BandwidthField f;
        f.SetBandwidth(bandwidth);
        f.SetLocked(locked);
        ScriptedPrompt prompt;
        prompt.yesNo << answer;
        QSignalSpy change(&f, &BandwidthField::Change);
        const bool changed = f.ConvertTo(target, prompt);
        QCOMPARE(f.Bandwidth(), after);
        QCOMPARE(changed, after != bandwidth);
        QCOMPARE(change.count(), changed ? 1 : 0);
        QCOMPARE(prompt.log.size(), asked.isEmpty() ? 0 : 1);
        QCOMPARE(prompt.log.value(0).kind, asked);
        if (asked == u"yesno")
            QCOMPARE(prompt.log.first().text,
                     QStringLiteral(
                         "Bei dieser Umwandlung entsteht ein Genauigkeitsverlust!\nTrotzdem umwandeln?"));
    }

    // Pasted text is not filtered: the kbit value reads the leading number, a conversion
    // refuses a number part that is no number.
    void lettersPasted()
    {
        BandwidthField f;
        f.SetBandwidth(QStringLiteral("768kbit"));
        f.SetValue(QStringLiteral("12ab"));
        QCOMPARE(f.kbit(), 12);
        ScriptedPrompt prompt;
        QVERIFY(!f.ConvertTo(QStringLiteral("bit"), prompt));
        QCOMPARE(f.Bandwidth(), QStringLiteral("12abkbit"));
        QCOMPARE(prompt.messages().size(), 1);
    }

    void colourRule_data()
    {
        // clang-format off
        QTest::addColumn<bool>("valid");
        QTest::addColumn<bool>("locked");
        QTest::addColumn<Colors::Rgb>("background");
        QTest::newRow("valid") << true << false << Colors::White;
        QTest::newRow("invalid") << false << false << Colors::LightRed;
        QTest::newRow("locked") << true << true << Colors::Silver;
        QTest::newRow("invalid wins over locked") << false << true << Colors::LightRed;
        // clang-format on
    }
    void colourRule()
    {
        QFETCH(bool, valid);
        QFETCH(bool, locked);
        QFETCH(Colors::Rgb, background);
        BandwidthField f;
        f.SetBackColor(0x123456); // never used as the background
        f.SetIsValid(valid);
        f.SetLocked(locked);
        QCOMPARE(f.NumberBackground(), background);
        // Another error colour shows from the next check on, not at once.
        f.SetErrorBackColor(0x00FF00);
        QCOMPARE(f.NumberBackground(), background);
        f.SetIsValid(valid);
        QCOMPARE(f.NumberBackground(), valid ? background : Colors::Rgb(0x00FF00));
    }
};

QTEST_GUILESS_MAIN(TestBandwidthField)
#include "tst_bandwidthfield.moc"
