#include "base/qoserror.h"
#include "inputs/portfield.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

using LeaveResult = PortField::LeaveResult;
using CountLook = PortField::CountLook;
Q_DECLARE_METATYPE(PortField::LeaveResult)
Q_DECLARE_METATYPE(PortField::CountLook)

namespace {
QString singlePorts(int n)
{
    QStringList ports;
    for (int i = 1; i <= n; ++i)
        ports << QString::number(1000 + i);
    return ports.join(u',');
}
} // namespace

class TestPortField : public QObject
{
    Q_OBJECT
private slots:
    void count_data()
    {
        // clang-format off
        QTest::addColumn<QString>("port");
        QTest::addColumn<int>("count");
        QTest::addColumn<CountLook>("look");
        QTest::newRow("single") << "21" << 1 << CountLook::One;
        QTest::newRow("two") << "21,80" << 2 << CountLook::Few;
        QTest::newRow("range") << "6000-6010" << 11 << CountLook::Many;
        QTest::newRow("reversed range counts two less") << "6010-6000" << 9 << CountLook::Few;
        QTest::newRow("two dashes count one") << "1-2-3" << 1 << CountLook::One;
        QTest::newRow("empty") << "" << 1 << CountLook::One;
        QTest::newRow("empty items") << ",," << 3 << CountLook::Few;
        QTest::newRow("zero raised to one") << "5-4" << 1 << CountLook::One;
        QTest::newRow("leading dash is a range from 0") << "-5" << 6 << CountLook::Few;
        QTest::newRow("huge single") << "99999999999" << 1 << CountLook::One;
        QTest::newRow("exponent not read") << "1e400" << 1 << CountLook::One;
        QTest::newRow("fraction ends round: 2 and 3") << "1.5-3" << 2 << CountLook::Few;
        QTest::newRow("halves to even: 2, 3 and 4") << "2.5-4" << 3 << CountLook::Few;
        QTest::newRow("largest count") << "1-2147483647" << std::numeric_limits<int>::max() << CountLook::Many;
        // clang-format on
    }
    void count()
    {
        QFETCH(QString, port);
        QFETCH(int, count);
        QFETCH(CountLook, look);
        PortField f;
        f.SetPort(QStringLiteral("1,2"));
        f.SetPort(port);
        QCOMPARE(f.count(), count);
        QCOMPARE(f.Look(), look);
    }

    void countsBeyond32BitsAreRefused_data()
    {
        QTest::addColumn<QString>("port");
        QTest::newRow("end beyond 32 bits") << "1-99999999999";
        QTest::newRow("end too long for a number") << QStringLiteral("1-") + QString(400, u'9');
        QTest::newRow("sum beyond 32 bits") << "0-2147483647,0-2147483647";
        QTest::newRow("one past the largest count") << "0-2147483647";
    }
    void countsBeyond32BitsAreRefused()
    {
        QFETCH(QString, port);
        PortField f;
        f.SetPort(QStringLiteral("21,80"));
        QCOMPARE(PortField::TryCount(port), std::nullopt);
        // The text stays, the count keeps its old value, and the list never passes as few ports.
        QVERIFY_THROWS_EXCEPTION(QoSError, f.SetPort(port));
        QCOMPARE(f.Port(), port);
        QCOMPARE(f.count(), 2);
        QVERIFY(!f.CountFits());
        QCOMPARE(f.CheckLeave(), LeaveResult::TooManyPorts);
    }

    void expand_data()
    {
        // clang-format off
        QTest::addColumn<QString>("port");
        QTest::addColumn<QStringList>("ports");
        QTest::newRow("list") << "21,80" << QStringLiteral("21,80").split(u',');
        QTest::newRow("fraction ends") << "1.5-3" << QStringLiteral("2,3").split(u',');
        QTest::newRow("half to even") << "2.5-4" << QStringLiteral("2,3,4").split(u',');
        QTest::newRow("range") << "20-22,80" << QStringLiteral("20,21,22,80").split(u',');
        QTest::newRow("reversed range runs down") << "6010-6000"
            << QStringLiteral("6010,6009,6008,6007,6006,6005,6004,6003,6002,6001,6000").split(u',');
        QTest::newRow("malformed copied") << "1-2-3,abc" << QStringLiteral("1-2-3,abc").split(u',');
        QTest::newRow("empty") << "" << QStringLiteral("").split(u',');
        // clang-format on
    }
    void expand()
    {
        QFETCH(QString, port);
        QFETCH(QStringList, ports);
        PortField f;
        f.SetPort(port);
        QCOMPARE(f.PortExt(), ports);
        QCOMPARE(f.ExpandedCount(), ports.size());
        for (int i = 0; i < ports.size(); ++i)
            QCOMPARE(f.PortExt(i), ports.at(i));
        QCOMPARE(f.PortExt(ports.size()), QString());
    }

    // A list standing for billions of ports must neither hang nor exhaust memory.
    void hugeRangeIsNotExpanded()
    {
        PortField f;
        f.SetPort(QStringLiteral("1-2147483647"));
        QCOMPARE(f.ExpandedCount(), qint64(std::numeric_limits<int>::max()));
        QCOMPARE(f.PortExt(5), QStringLiteral("6"));
        QVERIFY(f.PortExt().isEmpty());
    }

    void leave_data()
    {
        // clang-format off
        QTest::addColumn<QString>("port");
        QTest::addColumn<LeaveResult>("result");
        QTest::newRow("20 ports") << singlePorts(20) << LeaveResult::Ok;
        QTest::newRow("21 ports") << singlePorts(21) << LeaveResult::TooManyPorts;
        QTest::newRow("range of 21") << "100-120" << LeaveResult::TooManyPorts;
        QTest::newRow("upper bound") << "65535" << LeaveResult::Ok;
        QTest::newRow("above range") << "70000" << LeaveResult::OutOfRange;
        QTest::newRow("only first checked") << "21,70000" << LeaveResult::Ok;
        QTest::newRow("negative") << "-5" << LeaveResult::OutOfRange;
        QTest::newRow("huge") << "99999999999" << LeaveResult::OutOfRange;
        QTest::newRow("too long for a number") << QString(400, u'9') << LeaveResult::OutOfRange;
        QTest::newRow("exponent not read") << "1e400" << LeaveResult::Ok;
        QTest::newRow("empty") << "" << LeaveResult::Ok;
        // clang-format on
    }
    void leave()
    {
        QFETCH(QString, port);
        QFETCH(LeaveResult, result);
        PortField f;
        f.SetPort(port);
        QCOMPARE(f.CheckLeave(), result);
    }

    void changeAfterCount()
    {
        PortField f;
        int countSeen = -1;
        connect(&f, &PortField::Change, this, [&] { countSeen = f.count(); });
        f.SetPort(QStringLiteral("6000-6010"));
        QCOMPARE(countSeen, 11);
    }
};

QTEST_GUILESS_MAIN(TestPortField)
#include "tst_portfield.moc"
