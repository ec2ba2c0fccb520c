#include "base/qoserror.h"
#include "inputs/portfield.h"
#include "inputs/portlist.h"

#include <QTest>

#include <limits>

using LeaveResult = PortField::LeaveResult;
using CountLook = PortField::CountLook;
Q_DECLARE_METATYPE(PortField::LeaveResult)
Q_DECLARE_METATYPE(PortField::CountLook)
Q_DECLARE_METATYPE(PortField::SetResult)

namespace {
QStringList list(const char* commaSeparated)
{
    return QString::fromLatin1(commaSeparated).split(u',');
}
} // namespace

class TestPortField : public QObject
{
    Q_OBJECT
private slots:
    // One row per kind of item: what it counts, what it expands to (an empty list when the
    // list is not expanded as a whole), and how many entries the expansion has (-1 when an
    // end is beyond 32 bits). count -1: the count does not fit 32 bits.
    void portList_data()
    {
        // clang-format off
        QTest::addColumn<QString>("port");
        QTest::addColumn<int>("count");
        QTest::addColumn<qint64>("expanded");
        QTest::addColumn<QStringList>("ports");
        QTest::addColumn<QStringList>("reversed"); // the ranges the document check names
        QTest::newRow("single") << "21" << 1 << 1LL << list("21") << QStringList();
        QTest::newRow("range") << "20-22,80" << 4 << 4LL << list("20,21,22,80") << QStringList();
        QTest::newRow("reversed range counts two less") << "6010-6000" << 9 << 11LL
            << list("6010,6009,6008,6007,6006,6005,6004,6003,6002,6001,6000") << QStringList{"6010-6000: 9 of 11"};
        QTest::newRow("reversed by one counts none, raised to one") << "6-5" << 1 << 2LL << list("6,5") << QStringList{"6-5: 0 of 2"};
        QTest::newRow("two dashes are one port") << "1-2-3,abc" << 2 << 2LL << list("1-2-3,abc") << QStringList();
        QTest::newRow("empty") << "" << 1 << 1LL << list("") << QStringList();
        QTest::newRow("trailing comma") << "21," << 2 << 2LL << list("21,") << QStringList();
        QTest::newRow("leading dash is a range from 0") << "-3" << 4 << 4LL << list("0,1,2,3") << QStringList();
        QTest::newRow("trailing dash is a range down to 0") << "3-" << 2 << 4LL << list("3,2,1,0") << QStringList{"3-: 2 of 4"};
        QTest::newRow("one of three reversed") << "5-5,9-3,x-y" << 7 << 9LL << list("5,9,8,7,6,5,4,3,0")
            << QStringList{"9-3: 5 of 7"};
        QTest::newRow("letters around a dash are 0-0") << "x-y" << 1 << 1LL << list("0") << QStringList();
        QTest::newRow("fraction ends round: 2 and 3") << "1.5-3" << 2 << 2LL << list("2,3") << QStringList();
        QTest::newRow("halves to even: 2, 3 and 4") << "2.5-4" << 3 << 3LL << list("2,3,4") << QStringList();
        QTest::newRow("reversed fraction ends") << "4.5-2.5" << 1 << 3LL << list("4,3,2") << QStringList{"4.5-2.5: 1 of 3"};
        QTest::newRow("huge single") << "99999999999" << 1 << 1LL << list("99999999999") << QStringList();
        QTest::newRow("exponent not read") << "1e400" << 1 << 1LL << list("1e400") << QStringList();
        QTest::newRow("end beyond 32 bits") << "21,1-99999999999" << -1 << -1LL << QStringList() << QStringList();
        QTest::newRow("reversed before an end beyond 32 bits") << "9-3,1-99999999999" << -1 << -1LL << QStringList()
            << QStringList{"9-3: 5 of 7"};
        QTest::newRow("start beyond 32 bits") << "99999999999-1,80" << -1 << -1LL << QStringList() << QStringList();
        QTest::newRow("end too long for a number") << QStringLiteral("1-") + QString(400, u'9') << -1 << -1LL
                                                   << QStringList() << QStringList();
        QTest::newRow("largest count, not expanded") << "1-2147483647" << std::numeric_limits<int>::max()
                                                     << 2147483647LL << QStringList() << QStringList();
        QTest::newRow("one past the largest count") << "0-2147483647" << -1 << 2147483648LL << QStringList() << QStringList();
        QTest::newRow("sum beyond 32 bits") << "0-2147483647,0-2147483647" << -1 << 4294967296LL << QStringList() << QStringList();
        QTest::newRow("reversed across 32 bits") << "2147483647-0" << 2147483646 << 2147483648LL
                                                 << QStringList() << QStringList{"2147483647-0: 2147483646 of 2147483648"};
        // clang-format on
    }
    void portList()
    {
        QFETCH(QString, port);
        QFETCH(int, count);
        QFETCH(qint64, expanded);
        QFETCH(QStringList, ports);
        QStringList reversedSeen;
        for (const PortList::Item& item : PortList(port))
            if (item.Reversed())
                reversedSeen << QStringLiteral("%1: %2 of %3")
                                    .arg(item.text.toString())
                                    .arg(item.Counted())
                                    .arg(item.Expanded());
        QTEST(reversedSeen, "reversed");
        QCOMPARE(PortField::TryCount(port), count < 0 ? std::nullopt : std::optional<qint32>(count));

        // Typed: a list beyond 32 bits of ports is refused and nothing changes. Each change is
        // announced with the new count in place.
        QList<qint32> countsSeen;
        PortField typed;
        typed.SetPort(QStringLiteral("1,2"));
        connect(&typed, &PortField::Change, this, [&] { countsSeen << typed.count(); });
        QCOMPARE(typed.TrySetPort(port),
                 count < 0 ? PortField::SetResult::TooManyPorts : PortField::SetResult::Set);
        QCOMPARE(typed.Port(), count < 0 ? QStringLiteral("1,2") : port);
        QCOMPARE(typed.count(), count < 0 ? 2 : count);
        QVERIFY(typed.CountFits());

        // Read from a file: the text stays, the count keeps its old value, and the list never
        // passes as few ports.
        PortField f;
        f.SetPort(QStringLiteral("1,2"));
        connect(&f, &PortField::Change, this, [&] { countsSeen << f.count(); });
        if (count < 0) {
            QVERIFY_THROWS_EXCEPTION(QoSError, f.SetPort(port));
            QCOMPARE(f.Port(), port);
            QCOMPARE(f.count(), 2);
            QVERIFY(!f.CountFits());
            QCOMPARE(f.CheckLeave(), LeaveResult::TooManyPorts);
        } else {
            f.SetPort(port);
            QCOMPARE(f.count(), count);
            QVERIFY(f.CountFits());
        }
        QCOMPARE(countsSeen, count < 0 ? QList<qint32>({2}) : QList<qint32>({count, count}));
        QCOMPARE(f.ExpandedCount(), expanded);
        QCOMPARE(f.PortExt(), ports);
    }

    // How the count looks (1, 2 to 9, more) and the check when the focus leaves the box: at
    // most 20 ports, and the first of them in 0..65535.
    void lookAndLeave_data()
    {
        QTest::addColumn<QString>("port");
        QTest::addColumn<CountLook>("look");
        QTest::addColumn<LeaveResult>("leave");
        const auto one = CountLook::One, few = CountLook::Few, many = CountLook::Many;
        const auto ok = LeaveResult::Ok, outOfRange = LeaveResult::OutOfRange;
        // clang-format off
        QTest::newRow("none raised to one") << "5-4" << one << ok;
        QTest::newRow("two") << "21,80" << few << ok;
        QTest::newRow("nine") << "1-9" << few << ok;
        QTest::newRow("ten") << "1-10" << many << ok;
        QTest::newRow("20 ports") << "21,1-19" << many << ok;
        QTest::newRow("21 ports") << "21,1-20" << many << LeaveResult::TooManyPorts;
        QTest::newRow("upper bound") << "65535" << one << ok;
        QTest::newRow("above range") << "70000" << one << outOfRange;
        QTest::newRow("only first checked") << "21,70000" << few << ok;
        QTest::newRow("negative") << "-5" << few << outOfRange;
        QTest::newRow("too long for a number") << QString(400, u'9') << one << outOfRange;
        QTest::newRow("exponent not read") << "1e400" << one << ok;
        QTest::newRow("empty") << "" << one << ok;
        // clang-format on
    }
    void lookAndLeave()
    {
        QFETCH(QString, port);
        PortField f;
        f.SetPort(port);
        QTEST(f.Look(), "look");
        QTEST(f.CheckLeave(), "leave");
    }
};

QTEST_GUILESS_MAIN(TestPortField)
#include "tst_portfield.moc"
