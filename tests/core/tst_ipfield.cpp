#include "inputs/ipfield.h"

#include <QSignalSpy>
#include <QTest>

using KeyAction = IpField::KeyAction;
Q_DECLARE_METATYPE(IpField::KeyAction)

class TestIpField : public QObject
{
    Q_OBJECT
private slots:
    void addressKey_data()
    {
        // clang-format off
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("selectionStart");
        QTest::addColumn<int>("selectionLength");
        QTest::addColumn<QChar>("key");
        QTest::addColumn<KeyAction>("action");
        QTest::newRow("255 allowed") << "25" << 2 << 0 << QChar(u'5') << KeyAction::Accept;
        QTest::newRow("259 refused") << "25" << 2 << 0 << QChar(u'9') << KeyAction::Discard;
        QTest::newRow("middle octet") << "1.25.3" << 4 << 0 << QChar(u'9') << KeyAction::Discard;
        QTest::newRow("replaces the selection") << "255" << 0 << 3 << QChar(u'9') << KeyAction::Accept;
        QTest::newRow("fourth dot") << "1.2.3" << 5 << 0 << QChar(u'.') << KeyAction::Accept;
        QTest::newRow("fifth part refused") << "1.2.3.4" << 7 << 0 << QChar(u'.') << KeyAction::Discard;
        QTest::newRow("slash jumps to mask") << "1.2.3.4" << 7 << 0 << QChar(u'/') << KeyAction::FocusMask;
        QTest::newRow("ctrl+v pastes whole text") << "" << 0 << 0 << QChar(22) << KeyAction::Paste;
        QTest::newRow("backspace") << "1" << 1 << 0 << QChar(8) << KeyAction::Accept;
        QTest::newRow("ctrl+c") << "1" << 1 << 0 << QChar(3) << KeyAction::Accept;
        QTest::newRow("letter") << "1" << 1 << 0 << QChar(u'a') << KeyAction::Discard;
        QTest::newRow("octet too long for a number") << QString(400, u'9') << 400 << 0 << QChar(u'1') << KeyAction::Discard;
        QTest::newRow("caret beyond the text") << "1.2" << 99 << 5 << QChar(u'3') << KeyAction::Accept;
        // clang-format on
    }
    void addressKey()
    {
        QFETCH(QString, text);
        QFETCH(int, selectionStart);
        QFETCH(int, selectionLength);
        QFETCH(QChar, key);
        QTEST(IpField::FilterAddressKey(text, selectionStart, selectionLength, key), "action");
    }

    // The text splits at the first "/" into address and mask bits, up to a second "/"; it is
    // written back with the mask as a number, and without a mask that is not above 0.
    void text_data()
    {
        // clang-format off
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QString>("written");
        QTest::newRow("empty") << "" << "" << "" << "";
        QTest::newRow("address only") << "1.2.3.4" << "1.2.3.4" << "" << "1.2.3.4";
        QTest::newRow("with mask") << "10.0.0.0/8" << "10.0.0.0" << "8" << "10.0.0.0/8";
        QTest::newRow("extra parts dropped") << "10.0.0.0/8/9" << "10.0.0.0" << "8" << "10.0.0.0/8";
        QTest::newRow("mask only, its leading zero dropped") << "/024" << "" << "024" << "/24";
        QTest::newRow("zero mask") << "192.168.0.1/0" << "192.168.0.1" << "0" << "192.168.0.1";
        QTest::newRow("fractional mask") << "10.0.0.0/24.5" << "10.0.0.0" << "24.5" << "10.0.0.0/24.5";
        // clang-format on
    }
    void text()
    {
        QFETCH(QString, text);
        IpField f;
        f.SetText(QStringLiteral("9.9.9.9/9"));
        f.SetText(text);
        QTEST(f.Address(), "address");
        QTEST(f.MaskBits(), "mask");
        QTEST(f.Text(), "written");
    }

    void changePerBox()
    {
        IpField f;
        QSignalSpy change(&f, &IpField::Change);
        f.SetText(QStringLiteral("10.0.0.0/8"));
        QCOMPARE(change.count(), 2);
        f.SetText(QStringLiteral("10.0.0.0/8"));
        QCOMPARE(change.count(), 2);
    }

    void leaveCheck_data()
    {
        // clang-format off
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("valid");
        QTest::newRow("empty passes") << "" << true;
        QTest::newRow("bounds") << "0.0.0.255" << true;
        QTest::newRow("three parts") << "192.168.0" << false;
        QTest::newRow("octet 256") << "1.2.3.256" << false;
        QTest::newRow("five parts") << "1.2.3.4.5" << false;
        QTest::newRow("empty part") << "1.2.3." << false;
        QTest::newRow("negative") << "-1.2.3.4" << false;
        QTest::newRow("mask in fourth part") << "1.2.3.4/24" << false;
        QTest::newRow("blanks around a part") << " 1.2.3.4 " << true;
        QTest::newRow("exponent compared by value") << "1e2.1.1.1" << true;
        // clang-format on
    }
    void leaveCheck()
    {
        QFETCH(QString, address);
        QTEST(IpField::IsValidAddress(address), "valid");
    }
};

QTEST_GUILESS_MAIN(TestIpField)
#include "tst_ipfield.moc"
