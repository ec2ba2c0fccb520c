#include "base/numbers.h"
#include "base/qoserror.h"
#include "base/unitconversion.h"

#include <QTest>

#include <cmath>

class TestNumbers : public QObject
{
    Q_OBJECT
private slots:
    void leadingValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("plain") << "768kbit" << 768.0;
        QTest::newRow("leading blanks") << "   12x" << 12.0;
        QTest::newRow("tab is no blank") << "\t12" << 0.0;
        QTest::newRow("decimal point") << "1.5Mbit" << 1.5;
        QTest::newRow("comma stops") << "1,5" << 1.0;
        QTest::newRow("no exponent") << "1.5e3kbit" << 1.5;
        QTest::newRow("blank after sign") << "- 5" << 0.0;
        QTest::newRow("negative") << "-7" << -7.0;
        QTest::newRow("point first") << ".5" << 0.5;
        QTest::newRow("lone point") << "." << 0.0;
    }
    void leadingValue()
    {
        QFETCH(QString, text);
        QTEST(Numbers::LeadingValue(text), "value");
    }

    void leadingValueOverflow()
    {
        QVERIFY_THROWS_EXCEPTION(QoSError, Numbers::LeadingValue(QString(400, u'9')));
    }

    void asInteger_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<int>("value");
        QTest::newRow("plain") << "42" << true << 42;
        QTest::newRow("blanks around") << "  42 " << true << 42;
        QTest::newRow("half to even down") << "2.5" << true << 2;
        QTest::newRow("half to even up") << "3.5" << true << 4;
        QTest::newRow("negative half") << "-2.5" << true << -2;
        QTest::newRow("empty") << "" << false << 0;
        QTest::newRow("trailing letter") << "4x" << false << 0;
        QTest::newRow("comma") << "2,5" << false << 0;
        QTest::newRow("exponent") << "1e2" << false << 0;
    }
    void asInteger()
    {
        QFETCH(QString, text);
        QFETCH(bool, ok);
        if (ok)
            QTEST(Numbers::AsInteger(text), "value");
        else
            QVERIFY_THROWS_EXCEPTION(QoSError, Numbers::AsInteger(text));
    }

    void rounding_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<int>("rounded");
        QTest::newRow("max") << 2147483647.0 << true << 2147483647;
        QTest::newRow("max plus half rounds even up") << 2147483647.5 << false << 0;
        QTest::newRow("min") << -2147483648.0 << true << int(-2147483647 - 1);
        QTest::newRow("below min") << -2147483649.0 << false << 0;
        QTest::newRow("nan") << std::nan("") << false << 0;
        QTest::newRow("infinity") << HUGE_VAL << false << 0;
    }
    void rounding()
    {
        QFETCH(double, value);
        QFETCH(bool, ok);
        if (ok)
            QTEST(Numbers::RoundToInt32(value), "rounded");
        else
            QVERIFY_THROWS_EXCEPTION(QoSError, Numbers::RoundToInt32(value));
    }

    void int16Range()
    {
        QCOMPARE(Numbers::AsInt16(u"32767"), qint16(32767));
        QVERIFY_THROWS_EXCEPTION(QoSError, Numbers::AsInt16(u"32768"));
        QVERIFY_THROWS_EXCEPTION(QoSError, Numbers::AsInt16(u"-32769"));
    }

    void format_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 10240.0 << "10240";
        QTest::newRow("fraction") << 0.9765625 << "0.9765625";
        QTest::newRow("fifteen digits") << 1.0 / 3 << "0.333333333333333";
        QTest::newRow("large") << 1e20 << "1E+20";
        QTest::newRow("small") << 0.0000125 << "1.25E-05";
    }
    void format()
    {
        QFETCH(double, value);
        QTEST(Numbers::Format(value), "text");
    }

    // Each unit's factor, both ways, on a value that every other factor would change: 5 of a
    // unit is 40960 kbit read in another. k, m and g are powers of 1024, a byte is 8 bit.
    void unitFactors_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::addColumn<double>("kbitOfFive");
        QTest::addColumn<double>("unitsOf40960Kbit");
        QTest::newRow("bit") << "bit" << 0.0048828125 << 41943040.0;
        QTest::newRow("kbit") << "kbit" << 5.0 << 40960.0;
        QTest::newRow("mbit") << "mbit" << 5120.0 << 40.0;
        QTest::newRow("gbit") << "gbit" << 5242880.0 << 0.0390625;
        QTest::newRow("bps") << "bps" << 0.0390625 << 5242880.0;
        QTest::newRow("kbps") << "kbps" << 40.0 << 5120.0;
        QTest::newRow("mbps") << "mbps" << 40960.0 << 5.0;
        QTest::newRow("gbps") << "gbps" << 41943040.0 << 0.0048828125;
    }
    void unitFactors()
    {
        QFETCH(QString, unit);
        QFETCH(double, kbitOfFive);
        QFETCH(double, unitsOf40960Kbit);
        const auto whole = [](double v) { return v == std::floor(v); };
        bool inexact = whole(kbitOfFive);
        QCOMPARE(UnitConversion::ToKbit(5, unit, inexact), kbitOfFive);
        QCOMPARE(inexact, !whole(kbitOfFive));
        QCOMPARE(UnitConversion::ToKbit(5, unit.toUpper(), inexact), kbitOfFive);
        inexact = whole(unitsOf40960Kbit);
        QCOMPARE(UnitConversion::FromKbit(40960, unit, inexact), unitsOf40960Kbit);
        QCOMPARE(inexact, !whole(unitsOf40960Kbit));
        // Through kbit from one unit into another.
        QCOMPARE(UnitConversion::ConvertUnit(5, unit, QStringLiteral("mbps"), inexact), kbitOfFive / 8192);
    }

    // Around the factors: a number beyond single precision is inexact even in its own unit, a
    // source unit nobody knows converts to 0 without a question, and a result beyond 32 bits
    // is an error.
    void conversionEdges()
    {
        bool inexact = false;
        QCOMPARE(UnitConversion::ToKbit(16777217, QStringLiteral("kbit"), inexact), 16777217.0);
        QVERIFY(inexact);
        QCOMPARE(UnitConversion::ConvertUnit(5, QStringLiteral("xyz"), QStringLiteral("kbit"), inexact), 0.0);
        QVERIFY(!inexact);
        QVERIFY_THROWS_EXCEPTION(
            QoSError, UnitConversion::ConvertUnit(3, QStringLiteral("gbit"), QStringLiteral("bit"), inexact));
    }
};

QTEST_GUILESS_MAIN(TestNumbers)
#include "tst_numbers.moc"
