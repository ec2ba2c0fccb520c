#include "base/windows1252.h"

#include <QTest>

// Every byte decodes and encodes back; what has no byte in the code page is written as "?".
class TestWindows1252 : public QObject
{
    Q_OBJECT
private slots:
    void encode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
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
