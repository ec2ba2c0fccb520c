#include "base/windows1252.h"

#include <QTest>

class TestWindows1252 : public QObject
{
    Q_OBJECT
private slots:
    void encode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("ascii") << QStringLiteral("QOS_CLASS_N='1'") << QByteArray("QOS_CLASS_N='1'");
        QTest::newRow("umlauts") << QStringLiteral("äöüÄÖÜß") << QByteArray("\xe4\xf6\xfc\xc4\xd6\xdc\xdf");
        QTest::newRow("euro and quotes") << QStringLiteral("€„“…") << QByteArray("\x80\x84\x93\x85");
        QTest::newRow("undefined five")
            << QString::fromUtf16(u"\u0081\u008d\u008f\u0090\u009d") << QByteArray("\x81\x8d\x8f\x90\x9d");
        QTest::newRow("C1 control without byte") << QString(QChar(0x80)) << QByteArray("?");
        QTest::newRow("outside the code page") << QStringLiteral("a漢b") << QByteArray("a?b");
        QTest::newRow("surrogate pair is one character")
            << QString::fromUtf16(u"x\U0001F600y") << QByteArray("x?y");
    }
    void encode()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QCOMPARE(Windows1252::Encode(text), bytes);
    }

    void everyByteSurvivesDecodeAndEncode()
    {
        QByteArray all;
        for (int b = 0; b < 256; ++b)
            all.append(char(b));
        const QString text = Windows1252::Decode(all);
        QCOMPARE(text.size(), 256);
        QCOMPARE(text[0x80], QChar(0x20AC));
        QCOMPARE(text[0x9F], QChar(0x0178));
        QCOMPARE(text[0xFC], QChar(u'ü'));
        QCOMPARE(Windows1252::Encode(text), all);
    }
};

QTEST_GUILESS_MAIN(TestWindows1252)
#include "tst_windows1252.moc"
