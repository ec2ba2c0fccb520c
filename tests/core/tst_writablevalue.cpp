#include "base/qoserror.h"
#include "base/scriptedprompt.h"
#include "base/writablevalue.h"
#include "file/qoswriter.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"

#include <QTest>

using Flaw = WritableValue::Flaw;
using Place = WritableValue::Place;
Q_DECLARE_METATYPE(WritableValue::Flaw)
Q_DECLARE_METATYPE(WritableValue::Place)

// What may go into qos.txt as it is: the writer refuses the rest, and the fields refuse it where
// it is pasted, with the same words.
class TestWritableValue : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { qputenv("SOURCE_DATE_EPOCH", "1700000000"); }

    void check_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<Place>("place");
        QTest::addColumn<Flaw>("flaw");
        QTest::addColumn<int>("at");
        // clang-format off
        QTest::newRow("umlaut and euro are in the code page") << "Büro €" << Place::Setting << Flaw::None << -1;
        QTest::newRow("undefined byte read from a file writes back") << QString(QChar(0x81)) << Place::Setting << Flaw::None << -1;
        QTest::newRow("quote") << "Bob's" << Place::Setting << Flaw::Quote << 3;
        QTest::newRow("lone CR") << "21\r80" << Place::Setting << Flaw::LineBreak << 2;
        QTest::newRow("lone LF") << "21\n80" << Place::Setting << Flaw::LineBreak << 2;
        QTest::newRow("a quote is named before an earlier foreign character") << "Ω'" << Place::Setting << Flaw::Quote << 1;
        QTest::newRow("foreign character") << "Ωmega" << Place::Setting << Flaw::Unmappable << 0;
        QTest::newRow("character beyond the basic plane") << "a😀" << Place::Setting << Flaw::Unmappable << 1;
        QTest::newRow("comment takes quotes and line breaks") << "Bob's\r\nNetz" << Place::Comment << Flaw::None << -1;
        QTest::newRow("comment refuses a foreign character") << "a\n→" << Place::Comment << Flaw::Unmappable << 2;
        // clang-format on
    }
    void check()
    {
        QFETCH(QString, value);
        QFETCH(Place, place);
        const WritableValue::Verdict v = WritableValue::Check(value, place);
        QTEST(v.flaw, "flaw");
        QTEST(int(v.at), "at");
        QCOMPARE(v.writable(), v.flaw == Flaw::None);
    }

    // The writer's messages are those it always gave; the paste refusal gives the same reason.
    // A class's title is a setting, the description a comment that may hold quotes and breaks.
    void writerAndPasteGiveTheSameReason_data()
    {
        QTest::addColumn<Place>("place");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("pasted");
        const QString written =
            QStringLiteral("Die Klasse \"%1\" in Zelle 0,0 der Seite Down: der Titel \"%1\" %2");
        const QString pasted = QStringLiteral("Der Text wird nicht eingefügt: er %1");
        const QString quote =
            QStringLiteral("enthält ein Hochkomma ('); so lässt sich der Wert nicht in qos.txt schreiben.");
        const QString lineBreak =
            QStringLiteral("enthält einen Zeilenumbruch; so lässt sich der Wert nicht in qos.txt schreiben.");
        const QString emoji = QStringLiteral("enthält das Zeichen \"😀\", das qos.txt nicht kennt.");
        const QString arrow = QStringLiteral("enthält das Zeichen \"→\", das qos.txt nicht kennt.");
        // clang-format off
        QTest::newRow("quote") << Place::Setting << "Bob's" << written.arg(QStringLiteral("Bob's"), quote) << pasted.arg(quote);
        QTest::newRow("line break") << Place::Setting << "a\r\nb" << written.arg(QStringLiteral("a\r\nb"), lineBreak) << pasted.arg(lineBreak);
        QTest::newRow("pair of surrogates named whole") << Place::Setting << "x😀" << written.arg(QStringLiteral("x😀"), emoji) << pasted.arg(emoji);
        QTest::newRow("description") << Place::Comment << "Büro's\r\nNetz → LAN" << "Allgemein: die Beschreibung " + arrow << pasted.arg(arrow);
        // clang-format on
    }
    void writerAndPasteGiveTheSameReason()
    {
        QFETCH(Place, place);
        QFETCH(QString, text);
        QFETCH(QString, written);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        if (place == Place::Comment)
            doc.Common1()->SetQoSDescription(text);
        else
            doc.Down1()->AddClass(
                QStringLiteral("0"),
                {.direction = QStringLiteral("down"), .prio = QStringLiteral("0"), .caption = text});
        try {
            ExportQoSBytes(doc);
            QFAIL("written");
        } catch (const QoSError& e) {
            QCOMPARE(e.message(), written);
        }
        QTEST(WritableValue::PasteRefusal(text, place), "pasted");
    }
};

QTEST_GUILESS_MAIN(TestWritableValue)
#include "tst_writablevalue.moc"
