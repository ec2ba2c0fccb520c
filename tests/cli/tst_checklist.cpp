#include "app/firststart.h"
#include "base/scriptedprompt.h"
#include "check/problemwatcher.h"
#include "check/validationwatcher.h"
#include "file/qosreader.h"
#include "model/document.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// tarnwick-cli check names exactly the problems the window's list shows, in the same order:
// the window's list made as the window makes it (its pages' validation following the import,
// the list following both), the command run on the same file.
class TestCheckList : public QObject
{
    Q_OBJECT

    static QStringList windowList(const QByteArray& text)
    {
        ScriptedPrompt prompt;
        Document doc(&prompt);
        ValidationWatcher down(doc.Down1());
        ValidationWatcher up(doc.Up1());
        ProblemWatcher problems(&doc);
        FirstStart::Apply(doc);
        problems.SetImportReport(ImportQoSBytes(doc, text));
        for (int i = 0; i < 10 && (problems.Pending() || down.Pending() || up.Pending()); ++i)
            QCoreApplication::processEvents();
        QStringList lines;
        for (const Problem& p : problems.Problems())
            lines << p.text;
        return lines;
    }

private slots:
    void sameAsTheWindow_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const QString& folder : {QStringLiteral(TARNWICK_SAMPLES), QStringLiteral(TARNWICK_TEST_DATA)}) {
            const QDir dir(folder);
            for (const QString& name : dir.entryList({QStringLiteral("*.qos.txt")}, QDir::Files)) {
                QFile file(dir.filePath(name));
                QVERIFY(file.open(QIODevice::ReadOnly));
                QTest::newRow(qPrintable(name)) << file.readAll();
            }
        }
        // clang-format off
        QTest::newRow("a problem of every kind") << QByteArray(
            "#QOS_FILEVERSION='Tarnwick 1.1'\nQOS_INTERNET_BAND_DOWN='1000kbit'\nQOS_LOCALNET_BAND='1.5Mbit'\n"
            "QOS_CLASS_N='7'\n#QOS_CLASS_1_CELLPOS='0,0'\nQOS_CLASS_1_PARENT='0'\nQOS_CLASS_1_MINBANDWIDTH='900kbit'\n"
            "QOS_CLASS_1_MAXBANDWIDTH='1000kbit'\n#QOS_CLASS_2_CELLPOS='0,1'\nQOS_CLASS_2_PARENT='1'\n"
            "QOS_CLASS_2_MINBANDWIDTH='100kbit'\nQOS_CLASS_2_MAXBANDWIDTH='2000kbit'\nQOS_CLASS_2_PRIO='9'\n"
            "#QOS_CLASS_3_CELLPOS='0,2'\nQOS_CLASS_3_PARENT='2'\nQOS_CLASS_3_MINBANDWIDTH='10kbit'\n"
            "QOS_CLASS_3_MAXBANDWIDTH='10kbit'\n#QOS_CLASS_4_CELLPOS='0,3'\nQOS_CLASS_4_PARENT='3'\n"
            "QOS_CLASS_4_MINBANDWIDTH='1kbit'\nQOS_CLASS_4_MAXBANDWIDTH='10kbit'\n#QOS_CLASS_5_CELLPOS='1,3'\n"
            "QOS_CLASS_5_PARENT='4'\nQOS_CLASS_5_MINBANDWIDTH='1kbit'\nQOS_CLASS_5_MAXBANDWIDTH='10kbit'\n"
            "#QOS_CLASS_6_CELLPOS='1,0'\nQOS_CLASS_6_PARENT='0'\nQOS_CLASS_6_MINBANDWIDTH='200kbit'\n"
            "QOS_CLASS_6_MAXBANDWIDTH='1.5Mbit'\nQOS_CLASS_6_DIRECTION='up'\n"
            "#QOS_CLASS_7_CELLPOS='2,0'\nQOS_CLASS_7_PARENT='0'\nQOS_CLASS_7_MINBANDWIDTH='200kbit'\n"
            "QOS_FILTER_N='6'\n"
            "#QOS_FILTER_1_CELLPOS='2,4'\nQOS_FILTER_1_CLASS='7'\nQOS_FILTER_1_PORT='90-80,1-20'\nQOS_FILTER_1_IP='1.2.3.4.5'\n"
            "#QOS_FILTER_2_CELLPOS='2,5'\nQOS_FILTER_2_CLASS='7'\nQOS_FILTER_2_PORT='70000'\nQOS_FILTER_2_TYPE='both'\n"
            "#QOS_FILTER_3_CELLPOS='2,6'\nQOS_FILTER_3_CLASS='7'\nQOS_FILTER_3_OPTION='SYN'\n");
        // clang-format on
    }
    void sameAsTheWindow()
    {
        QFETCH(QByteArray, text);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("qos.txt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        const QStringList shown = windowList(text);

        QProcess cli;
        cli.start(QStringLiteral(TARNWICK_CLI), {QStringLiteral("check"), path});
        QVERIFY(cli.waitForFinished(60000));
        QCOMPARE(cli.exitCode(), shown.isEmpty() ? 0 : 1);
        // The problems come first, then one balance line per class with sub classes and page.
        const QStringList printed = QString::fromUtf8(cli.readAllStandardOutput()).split(u'\n');
        QCOMPARE(printed.mid(0, shown.size()), shown);
        QVERIFY(printed.size() > shown.size() && printed.at(shown.size()).contains(u"garantiert von"));
    }
};

QTEST_GUILESS_MAIN(TestCheckList)
#include "tst_checklist.moc"
