#include "base/scriptedprompt.h"
#include "model/arrangement.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"
#include "pagescript.h"

#include <QSignalSpy>
#include <QTest>

// The document's life: common settings, the modified mark, clearing, the page grid and
// the names and numbers that new boxes get.
class TestDocument : public QObject
{
    Q_OBJECT
private slots:
    // An unknown version joins the list marked "unbekannt"; one that carries the mark already,
    // as config.ini keeps it, is taken as it is, so that it does not grow on every start.
    void versionList()
    {
        QoSCommon common;
        QStringList shown;
        for (const char* v :
             {"v0.4", "v0.4", "unbekannt", "v0.3", "v0.4 unbekannt", "v0.4 unbekannt", "v0.5 unbekannt"}) {
            common.SetQoSVersion(QString::fromUtf8(v));
            shown << QString::number(common.VersionIndex()) + u' ' + common.QoSVersion();
        }
        QCOMPARE(shown, (QStringList{"2 v0.4 unbekannt", "3 v0.4 unbekannt", "1 unbekannt", "0 v0.3",
                                     "2 v0.4 unbekannt", "2 v0.4 unbekannt", "4 v0.5 unbekannt"}));
        QCOMPARE(common.VersionList().size(), 5);
    }

    void modifiedMark()
    {
        Document doc;
        QSignalSpy spy(&doc, &Document::modifiedChanged);
        PageScript::run(doc.Down1(), QStringLiteral("C"));
        doc.SetModified(false);
        PageScript::cls(doc, 1)->SetSelected(true);
        QVERIFY(!doc.IsModified()); // selecting is no change of the document
        PageScript::cls(doc, 1)->MinField()->SetValue(QStringLiteral("5")); // typed into the box
        QVERIFY(doc.IsModified());
        PageScript::cls(doc, 1)->SetQoSPrio(QStringLiteral("2"));
        QCOMPARE(spy.count(), 3); // on, off, on: one signal per change of the mark
    }

    void clearDocument_data()
    {
        QTest::addColumn<bool>("modified");
        QTest::addColumn<int>("answer"); // UserPrompt::Answer
        QTest::addColumn<bool>("cleared");
        QTest::addColumn<int>("questions");
        QTest::addColumn<int>("saves");
        QTest::newRow("unmodified asks nothing") << false << 0 << true << 0 << 0;
        QTest::newRow("cancel keeps everything")
            << true << int(UserPrompt::Answer::Cancel) << false << 1 << 0;
        QTest::newRow("no clears") << true << int(UserPrompt::Answer::No) << true << 1 << 0;
        QTest::newRow("yes saves, then clears") << true << int(UserPrompt::Answer::Yes) << true << 1 << 1;
    }
    void clearDocument()
    {
        QFETCH(bool, modified);
        QFETCH(int, answer);
        QFETCH(bool, cleared);
        QFETCH(int, questions);
        QFETCH(int, saves);
        ScriptedPrompt prompt;
        prompt.yesNoCancel << UserPrompt::Answer(answer);
        RecordingStatus status;
        Document doc(&prompt);
        doc.setStatusWindow(&status);
        int saved = 0;
        doc.setSaveAsHandler([&] {
            ++saved;
            return true;
        });
        PageScript::run(doc.Down1(), QStringLiteral("C F1"));
        PageScript::run(doc.Up1(), QStringLiteral("C"));
        doc.SetModified(modified);

        QCOMPARE(doc.ClearDocument(), cleared);
        QCOMPARE(prompt.log.size(), questions);
        if (questions)
            QCOMPARE(prompt.log.first().text, QStringLiteral("Soll noch gespeichert werden?"));
        QCOMPARE(saved, saves);
        QCOMPARE(doc.IsModified(), modified); // clearing leaves the mark as it was
        if (!cleared) {
            QCOMPARE(doc.Objects().size(), 3);
            QCOMPARE(doc.Down1()->ObjectCount(), 2);
            QCOMPARE(status.shown, 0);
            return;
        }
        QVERIFY(doc.Objects().isEmpty());
        QCOMPARE(doc.Down1()->ObjectCount(), 0);
        QCOMPARE(doc.Down1()->ObjectAt(0, 0), nullptr);
        // Removal in creation order, connectors among them.
        QCOMPARE(status.messages.mid(1), (QStringList{"Räume auf\r\nEntferne Objekt QoSClass1",
                                                      "Räume auf\r\nEntferne Objekt QoSFilter1",
                                                      "Räume auf\r\nEntferne Objekt LineTopQoSFilter1",
                                                      "Räume auf\r\nEntferne Objekt QoSClass2"}));
        QCOMPARE(status.captions.first(), QStringLiteral("Räume auf..."));
        QCOMPARE(status.closed, 1);
        // The counters go on: the next document's first class is not QoSClass1.
        PageScript::run(doc.Down1(), QStringLiteral("C"));
        QCOMPARE(doc.Objects().first()->Name(), QStringLiteral("QoSClass3"));
    }

    // A document without boxes has nothing to clear; its mark goes. But edits of the common
    // page alone are asked about like any other, and a cancel keeps them.
    void documentWithoutBoxes()
    {
        ScriptedPrompt prompt;
        prompt.yesNoCancel << UserPrompt::Answer::Cancel << UserPrompt::Answer::No;
        Document doc(&prompt);
        doc.SetModified(true);
        QVERIFY(!doc.ClearDocument());
        QVERIFY(doc.IsModified());
        QVERIFY(doc.ClearDocument());
        QVERIFY(!doc.IsModified());
        QCOMPARE(prompt.log.size(), 2);
    }

    void pageGeometry()
    {
        Document doc;
        ObjectPage* page = doc.Down1();
        qint32 huge = 2147483647, rows = 0;
        page->SetGridDimensions(huge, rows);
        QCOMPARE(page->arrangement().FindFreeColumn(true), 0); // and no walk over two billion columns
        QCOMPARE(page->PaneWidth(), 2147483647LL * 1931);
        rows = 5;
        huge = 6;
        page->SetGridDimensions(huge, rows);
        QCOMPARE(page->PaneHeight(), 8925);
        PageScript::run(page, QStringLiteral("C C C S3"));
        QoSObject* box = PageScript::cls(doc, 4);
        QCOMPARE(box->Left(), 3950.0);
        QCOMPARE(box->Top(), 2040.0);
        page->SetObjectDimensions(1000, 2000); // height first
        QCOMPARE(page->prop().ObjectHeight, 1000);
        QCOMPARE(page->prop().ColWidth, 2200);
    }

    void pageSizeAnswers_data()
    {
        QTest::addColumn<QStringList>("answers");
        QTest::addColumn<int>("questions");
        QTest::addColumn<QString>("size");
        // clang-format off
        QTest::newRow("two parts") << QStringList{"10,8"} << 1 << "10x8";
        QTest::newRow("one part asks again") << QStringList{"10", "9, 7"} << 2 << "9x7";
        QTest::newRow("three parts ask again") << QStringList{"1,2,3", ""} << 2 << "6x5";
        QTest::newRow("small becomes three") << QStringList{"1, 2"} << 1 << "3x3";
        QTest::newRow("zero keeps the columns") << QStringList{"0, 7"} << 1 << "6x7";
        QTest::newRow("negative keeps both") << QStringList{"-4, -1"} << 1 << "6x5";
        QTest::newRow("empty answer cancels") << QStringList{""} << 1 << "6x5";
        QTest::newRow("absurd number keeps") << QStringList{"99999999999, 4"} << 1 << "6x4";
        // clang-format on
    }
    void pageSizeAnswers()
    {
        QFETCH(QStringList, answers);
        QFETCH(int, questions);
        QFETCH(QString, size);
        ScriptedPrompt prompt;
        prompt.inputs = answers;
        Document doc(&prompt);
        doc.Down1()->PageSizeCommand();
        QCOMPARE(prompt.log.size(), questions);
        QCOMPARE(prompt.log.first().text, QStringLiteral("Neue Breite, Höhe eingeben:"));
        QCOMPARE(prompt.inputDefaults.first(), QStringLiteral("6, 5"));
        QCOMPARE(PageScript::size(doc.Down1()), size);
        // The size is written to the file: a change is a change of the document.
        QCOMPARE(doc.IsModified(), size != u"6x5");
    }

    // The page menu: a new class takes the page's own direction, so that it reads back, and a
    // filter needs a class even when one is selected.
    void pageCommands()
    {
        ScriptedPrompt prompt;
        Document doc(&prompt);
        QCOMPARE(doc.Down1()->NewClassCommand()->QoSDirection(), QStringLiteral("down"));
        QCOMPARE(doc.Up1()->NewClassCommand()->QoSDirection(), QStringLiteral("up"));
        PageScript::cls(doc, 1)->SetSelected(true);
        QCOMPARE(doc.Down1()->NewFilterCommand(), nullptr);
        QCOMPARE(prompt.messages(), QStringList{QStringLiteral(
                                        "Hinzufügen nicht möglich. Filter hat keine übergeordnete Klasse")});
    }

    void selection()
    {
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C F1"));
        PageScript::cls(doc, 1)->SetSelected(true);
        QCOMPARE(doc.Down1()->SelectedClass(), PageScript::cls(doc, 1));
        PageScript::flt(doc, 1)->SetSelected(true);
        QVERIFY(!PageScript::cls(doc, 1)->Selected());
        QCOMPARE(doc.Down1()->SelectedObject(), PageScript::flt(doc, 1));
        QCOMPARE(doc.Down1()->SelectedClass(), nullptr);
        // One thing is selected: a line takes the selection from the box and gives it back.
        QoSConnector* line = PageScript::flt(doc, 1)->LineTop();
        line->SetSelected(true);
        QVERIFY(!PageScript::flt(doc, 1)->Selected());
        QCOMPARE(doc.Down1()->SelectedObject(), nullptr);
        QCOMPARE(doc.Down1()->SelectedConnector(), line);
        PageScript::run(doc.Down1(), QStringLiteral("F1"));
        QoSConnector* other = PageScript::flt(doc, 2)->LineTop();
        other->SetSelected(true);
        QVERIFY(!line->Selected());
        PageScript::cls(doc, 1)->SetSelected(true);
        QVERIFY(!other->Selected());
        QCOMPARE(doc.Down1()->SelectedConnector(), nullptr);
        PageScript::cls(doc, 1)->SetSelected(false);
        PageScript::flt(doc, 1)->SetSelected(true);
        PageScript::flt(doc, 1)->EditDelete();
        QCOMPARE(doc.Down1()->SelectedObject(), nullptr);
    }
};

QTEST_GUILESS_MAIN(TestDocument)
#include "tst_document.moc"
