#include "base/qoserror.h"
#include "base/scriptedprompt.h"
#include "base/windows1252.h"
#include "file/qosfiletable.h"
#include "file/qoslines.h"
#include "file/qosreader.h"
#include "file/qostextbuffer.h"
#include "file/qostextsize.h"
#include "file/qoswriter.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"
#include "model/qosfilter.h"
#include "pagescript.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

namespace {

QByteArray readFile(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return f.readAll();
}

QList<QByteArray> linesWithout(const QByteArray& text, std::initializer_list<int> skipped)
{
    QList<QByteArray> lines = text.split('\n');
    for (auto it = std::rbegin(skipped); it != std::rend(skipped); ++it)
        lines.removeAt(*it - 1);
    return lines;
}

QoSClass* addClass(ObjectPage* page, const QString& parent, const QString& caption,
                   const QString& min = QString(), const QString& max = QString(), bool isDefault = false)
{
    return page->AddClass(parent, {.minBandwidth = min,
                                   .maxBandwidth = max,
                                   .direction = page->Direction(),
                                   .prio = QStringLiteral("1"),
                                   .defaultClass = isDefault,
                                   .caption = caption});
}

QoSFilter* addFilter(QoSClass* c, const QString& port, const QString& caption, const QString& ip = QString())
{
    return c->GetObjectPage()->AddFilter(
        QString::number(c->ClassIdx()),
        {.ip = ip, .port = port, .type = QStringLiteral("client"), .caption = caption});
}

QString classNumber(const QoSClass* c)
{
    return QString::number(c->ClassIdx());
}

// The text between the first line starting with `from` and the first line after it starting with `to`.
QString section(const QString& text, const QString& from, const QString& to)
{
    const qsizetype a = text.indexOf(from);
    const qsizetype b = text.indexOf(to, a + 1);
    return a < 0 ? QString() : text.mid(a, b < 0 ? -1 : b - a);
}

struct Fixture
{
    ScriptedPrompt prompt;
    Document doc{&prompt};
    int classes() const { return doc.Down1()->ClassCount() + doc.Up1()->ClassCount(); }
    int filters() const { return doc.Down1()->ObjectCount() + doc.Up1()->ObjectCount() - classes(); }
};

} // namespace

class TestQoSText : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { qputenv("SOURCE_DATE_EPOCH", "1700000000"); }

    // --- writer -------------------------------------------------------------------------

    void sampleExportMatchesEditorFile_data()
    {
        QTest::addColumn<QString>("handWritten");
        QTest::addColumn<QString>("editorWritten");
        QTest::addColumn<int>("boxes");
        QTest::newRow("home router") << "home-router.qos.txt"
                                     << "editor-written.qos.txt" << 13;
        // Filters in rows 5 to 7 of the up page, below the five rows of the down page.
        QTest::newRow("upstream only") << "upstream-only.qos.txt"
                                       << "upstream-only.editor-written.qos.txt" << 8;
    }
    void sampleExportMatchesEditorFile()
    {
        QFETCH(QString, handWritten);
        QFETCH(QString, editorWritten);
        QFETCH(int, boxes);
        Fixture f;
        QVERIFY(ImportQoSText(f.doc, QStringLiteral(TARNWICK_SAMPLES "/") + handWritten).complete);
        QCOMPARE(f.classes() + f.filters(), boxes);
        const QByteArray written = ExportQoSBytes(f.doc);
        const QByteArray expected = readFile(QStringLiteral(TARNWICK_SAMPLES "/") + editorWritten);
        QCOMPARE(linesWithout(written, {21, 22, 24}), linesWithout(expected, {21, 22, 24}));
        // And the written file reads back with every box.
        Fixture again;
        QVERIFY(ImportQoSBytes(again.doc, written).complete);
        QCOMPARE(again.classes() + again.filters(), boxes);
        QCOMPARE(ExportQoSBytes(again.doc), written);
    }

    // The file is counted before it is written: a number the count gets one digit wrong would
    // make every export grow its buffer.
    void countedSizeIsTheWrittenSize_data()
    {
        QTest::addColumn<qint64>("number");
        for (const qint64 n :
             {qint64(0), qint64(9), qint64(10), qint64(99), qint64(100), qint64(65536), qint64(-1),
              qint64(-10), std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()})
            QTest::addRow("%lld", static_cast<long long>(n)) << n;
    }
    void countedSizeIsTheWrittenSize()
    {
        QFETCH(qint64, number);
        QoSTextSize size;
        QoSLines<QoSTextSize> counted(size);
        counted.setting("#QOS_FILTER_", number, "_CAPTION", u"Bürö");
        counted.numberSetting("QOS_CLASS_", 1, "_PARENT", number);
        QoSTextBuffer<QByteArray> bytes(size.size());
        QoSLines<QoSTextBuffer<QByteArray>> written(bytes);
        written.setting("#QOS_FILTER_", number, "_CAPTION", u"Bürö");
        written.numberSetting("QOS_CLASS_", 1, "_PARENT", number);
        QCOMPARE(bytes.take().size(), size.size());
    }

    void headerNamesProgramVersionAndDate()
    {
        Fixture f;
        const QStringList lines = ExportQoSText(f.doc).split(QStringLiteral("\r\n"));
        QCOMPARE(lines[20], QStringLiteral("## Erstellt mit Tarnwick v%1.%2.%3")
                                .arg(TARNWICK_VERSION_MAJOR)
                                .arg(TARNWICK_VERSION_MINOR)
                                .arg(TARNWICK_VERSION_PATCH));
        QVERIFY(lines[21].startsWith(QStringLiteral("## ")));
        QCOMPARE(lines[23], QStringLiteral("## Erstellt am  14.11.2023"));
        QCOMPARE(lines[30], QStringLiteral("#QOS_PAGESIZE='6,5'"));
    }

    void description_data()
    {
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("block");
        QTest::newRow("empty") << QString() << QStringLiteral("#QOS_DESCRIPTION='0' #Zeilen\r\n\r\n");
        QTest::newRow("two lines") << QStringLiteral("eins\r\nzwei")
                                   << QStringLiteral(
                                          "#QOS_DESCRIPTION='2' #Zeilen\r\n#eins\r\n#zwei\r\n\r\n");
        QTest::newRow("ends with CR LF")
            << QStringLiteral("eins\r\n")
            << QStringLiteral("#QOS_DESCRIPTION='2' #Zeilen\r\n#eins\r\n#\r\n\r\n");
        QTest::newRow("lone LF and CR break lines too")
            << QStringLiteral("a\nb\rc")
            << QStringLiteral("#QOS_DESCRIPTION='3' #Zeilen\r\n#a\r\n#b\r\n#c\r\n\r\n");
    }
    void description()
    {
        QFETCH(QString, description);
        QFETCH(QString, block);
        Fixture f;
        f.doc.Common1()->SetQoSDescription(description);
        const QString text = ExportQoSText(f.doc);
        QCOMPARE(text.mid(text.indexOf(QStringLiteral("#QOS_DESCRIPTION"))), block);
    }

    // The caption stands on the first entry only, so that the entries read back as one filter.
    void multiPortFilterExpandsIntoEntries()
    {
        const QString caption = QStringLiteral("Webserver");
        Fixture f;
        QoSClass* c = addClass(f.doc.Down1(), QStringLiteral("0"), QStringLiteral("Web"));
        QoSFilter* web = addFilter(c, QStringLiteral("80,443,8080"), caption);
        QoSFilter* ssh = addFilter(c, QStringLiteral("22"), QStringLiteral("SSH"));
        const QString text = ExportQoSText(f.doc);
        QCOMPARE(
            section(text, QStringLiteral("QOS_FILTER_N"), QStringLiteral("#QOS_DESCRIPTION")),
            QStringLiteral("QOS_FILTER_N='4'\r\n\r\n#QOS_FILTER_1_CAPTION='Webserver'\r\n"
                           "#QOS_FILTER_1_CELLPOS='0,4'\r\nQOS_FILTER_1_CLASS='1'\r\nQOS_FILTER_1_IP=''\r\n"
                           "#QOS_FILTER_1_PORTEXT='80,443,8080'\r\nQOS_FILTER_1_PORT='80'\r\n"
                           "QOS_FILTER_1_TYPE='client'\r\nQOS_FILTER_1_OPTION=''\r\n\r\n"
                           "#QOS_FILTER_2_CELLPOS='0,4'\r\nQOS_FILTER_2_CLASS='1'\r\nQOS_FILTER_2_IP=''\r\n"
                           "#QOS_FILTER_2_PORTEXT='ignore'\r\nQOS_FILTER_2_PORT='443'\r\n"
                           "QOS_FILTER_2_TYPE='client'\r\nQOS_FILTER_2_OPTION=''\r\n\r\n"
                           "#QOS_FILTER_3_CELLPOS='0,4'\r\nQOS_FILTER_3_CLASS='1'\r\nQOS_FILTER_3_IP=''\r\n"
                           "#QOS_FILTER_3_PORTEXT='ignore'\r\nQOS_FILTER_3_PORT='8080'\r\n"
                           "QOS_FILTER_3_TYPE='client'\r\nQOS_FILTER_3_OPTION=''\r\n\r\n"
                           "#QOS_FILTER_4_CAPTION='SSH'\r\n#QOS_FILTER_4_CELLPOS='0,5'\r\n"
                           "QOS_FILTER_4_CLASS='1'\r\nQOS_FILTER_4_IP=''\r\nQOS_FILTER_4_PORT='22'\r\n"
                           "QOS_FILTER_4_TYPE='client'\r\nQOS_FILTER_4_OPTION=''\r\n\r\n"));
        QCOMPARE(web->FilterIdx(), qint16(1));
        QCOMPARE(ssh->FilterIdx(), qint16(4));
        Fixture again;
        QVERIFY(ImportQoSBytes(again.doc, ExportQoSBytes(f.doc)).complete);
        QCOMPARE(again.doc.Down1()->ContainedObjects().at(1)->Caption(), caption);
    }

    // A port list is written as one entry per port it counts, not per port it expands to: a
    // reversed range a-b counts two less than it expands to, so its last two ports have no
    // entry of their own (the whole list stands in the first PORTEXT and reads back whole).
    void portListEntries_data()
    {
        QTest::addColumn<QString>("ports");
        QTest::addColumn<QStringList>("entries"); // the PORT of each entry; one entry: the plain form
        QTest::newRow("forward range") << "80-82" << QStringList{"80", "81", "82"};
        QTest::newRow("reversed range")
            << "90-80" << QStringList{"90", "89", "88", "87", "86", "85", "84", "83", "82"};
        QTest::newRow("reversed range before a port")
            << "90-80,443" << QStringList{"90", "89", "88", "87", "86", "85", "84", "83", "82", "81"};
        QTest::newRow("reversed by two counts one") << "82-80" << QStringList{"82-80"};
        QTest::newRow("reversed by one counts none, written as one") << "81-80" << QStringList{"81-80"};
    }
    void portListEntries()
    {
        QFETCH(QString, ports);
        QFETCH(QStringList, entries);
        Fixture f;
        QoSClass* c = addClass(f.doc.Down1(), QStringLiteral("0"), QStringLiteral("Web"));
        addFilter(c, ports, QString());
        addFilter(c, QStringLiteral("22"), QStringLiteral("SSH"));
        const QString text = ExportQoSText(f.doc);
        const qsizetype n = entries.size();
        QVERIFY(text.contains(QStringLiteral("\r\nQOS_FILTER_N='%1'\r\n").arg(n + 1)));
        for (qsizetype m = 1; m <= n; ++m) {
            QVERIFY2(
                text.contains(QStringLiteral("\r\nQOS_FILTER_%1_PORT='%2'\r\n").arg(m).arg(entries[m - 1])),
                qPrintable(QStringLiteral("entry %1").arg(m)));
            const QString portExt = QStringLiteral("#QOS_FILTER_%1_PORTEXT='%2'\r\n")
                                        .arg(m)
                                        .arg(m == 1 ? ports : QStringLiteral("ignore"));
            QCOMPARE(text.contains(portExt), n > 1);
        }
        // Split without a caption, the filter is written as the router has always seen it.
        QCOMPARE(text.contains(QStringLiteral("#QOS_FILTER_1_CAPTION")), n == 1);
        // The next filter's number follows the entries.
        QVERIFY(text.contains(QStringLiteral("#QOS_FILTER_%1_CAPTION='SSH'\r\n").arg(n + 1)));
        Fixture again;
        QVERIFY(ImportQoSBytes(again.doc, ExportQoSBytes(f.doc)).complete);
        QCOMPARE(qobject_cast<QoSFilter*>(again.doc.Down1()->ContainedObjects().at(1))->QoSPort(), ports);
    }

    void walkRenumbersByCellAndRecomputesDefaults()
    {
        Fixture f;
        QoSClass* a = addClass(f.doc.Down1(), QStringLiteral("0"), QStringLiteral("A"));
        QoSClass* b = addClass(f.doc.Down1(), QStringLiteral("0"), QStringLiteral("B"));
        QoSClass* sub =
            addClass(f.doc.Down1(), classNumber(b), QStringLiteral("B1"), QString(), QString(), true);
        QoSClass* up = addClass(f.doc.Up1(), QStringLiteral("0"), QStringLiteral("U"));
        // Moving A below the row of main classes puts it after B in the walk.
        a->SetMatrixX(4);
        a->SetMatrixY(2);
        f.doc.Common1()->SetQoSInternetDefaultUp(QStringLiteral("9"));
        const QString text = ExportQoSText(f.doc);
        QCOMPARE(b->ClassIdx(), 1);
        QCOMPARE(sub->ClassIdx(), 2);
        QCOMPARE(a->ClassIdx(), 3);
        QCOMPARE(up->ClassIdx(), 4);
        QVERIFY(text.contains(QStringLiteral("QOS_CLASS_2_PARENT='1'\r\n")));
        QCOMPARE(f.doc.Common1()->QoSInternetDefaultDown(), QStringLiteral("2"));
        QCOMPARE(f.doc.Common1()->QoSInternetDefaultUp(), QString());
        QVERIFY(text.contains(QStringLiteral("QOS_INTERNET_DEFAULT_UP=''")));
    }

    void upPageBeyondDownGridIsWritten()
    {
        Fixture f;
        f.doc.Up1()->AddClass(QStringLiteral("0"), {.direction = QStringLiteral("up"),
                                                    .prio = QStringLiteral("0"),
                                                    .caption = QStringLiteral("weit"),
                                                    .x = qint16(9),
                                                    .y = qint16(0)});
        const QString text = ExportQoSText(f.doc);
        QVERIFY(text.contains(QStringLiteral("QOS_CLASS_N='1'")));
        QVERIFY(text.contains(QStringLiteral("#QOS_CLASS_1_CELLPOS='9,0'")));
    }

    // What the reader could not take back is refused with the box that holds it, never
    // written changed or cut.
    void writerRefusesWhatCannotBeReadBack_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("reason");
        QTest::newRow("port list of more than 65536 entries") << "ports 1-100000"
                                                              << "65536";
        QTest::newRow("more entries than the reader takes") << "ports 0-65535,0-65535"
                                                            << "131072 Filtereinträge";
        // Rows 0 to 3 hold the class levels.
        QTest::newRow("class in row 4")
            << "class row 4"
            << "Die Klasse \"C\" in Zelle 0,4 der Seite Down steht in Zeile 4; Klassen stehen in den "
               "Zeilen 0 bis 3, sonst lässt sich die Datei nicht wieder vollständig lesen.";
        QTest::newRow("class in row 3 is written") << "class row 3"
                                                   << "";
        QTest::newRow("a caption with a percent sign is named as it is")
            << "class row 5 50%1"
            << "\"50%1\" in Zelle 0,5 der Seite Down steht in Zeile 5";
        QTest::newRow("filter without class") << "cut filter"
                                              << "an keiner Klasse";
        QTest::newRow("quote in a caption") << "caption Bob's"
                                            << "Hochkomma";
        QTest::newRow("line break in a priority") << "prio 1\n2"
                                                  << "Zeilenumbruch";
        QTest::newRow("character outside the code page") << "caption Ωmega"
                                                         << "Ω";
        QTest::newRow("description outside the code page") << "description →"
                                                           << "→";
    }
    void writerRefusesWhatCannotBeReadBack()
    {
        QFETCH(QString, change);
        QFETCH(QString, reason);
        Fixture f;
        QoSClass* c = addClass(f.doc.Down1(), QStringLiteral("0"), QStringLiteral("C"));
        QoSFilter* filter = addFilter(c, QStringLiteral("80"), QStringLiteral("F"));
        const QString value = change.section(u' ', 1);
        if (change.startsWith(u"ports")) {
            filter->SetQoSPort(value.section(u',', 0, 0));
            if (value.contains(u','))
                addFilter(c, value.section(u',', 1), QString());
        } else if (change.startsWith(u"class row")) {
            c->SetMatrixY(qint16(change.section(u' ', 2, 2).toInt()));
            if (!change.section(u' ', 3).isEmpty())
                c->SetCaption(change.section(u' ', 3));
        } else if (change == u"cut filter") {
            filter->LineTop()->EditCut();
        } else if (change.startsWith(u"caption")) {
            c->SetCaption(value);
        } else if (change.startsWith(u"prio")) {
            c->SetQoSPrio(value);
        } else {
            f.doc.Common1()->SetQoSDescription(value);
        }
        if (reason.isEmpty()) {
            try {
                QVERIFY(ExportQoSText(f.doc).contains(QStringLiteral("#QOS_CLASS_1_CELLPOS='0,3'\r\n")));
            } catch (const QoSError& e) {
                QFAIL(qPrintable(e.message()));
            }
            return;
        }
        try {
            ExportQoSBytes(f.doc);
            QFAIL("written");
        } catch (const QoSError& e) {
            QVERIFY2(e.message().contains(reason), qPrintable(e.message()));
        }
        QVERIFY_THROWS_EXCEPTION(QoSError, ExportQoSText(f.doc));
    }

    // --- reader -------------------------------------------------------------------------

    void lookupRules_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("dev");
        QTest::newRow("missing gives default") << QByteArray("OPT_QOS='yes'\n") << "ppp0";
        QTest::newRow("tabs and blanks") << QByteArray("\t QOS_INTERNET_DEV\t=\t'eth1'\t# DSL\n") << "eth1";
        QTest::newRow("tab inside quotes") << QByteArray("QOS_INTERNET_DEV='a\tb'\n") << "a b";
        QTest::newRow("comment after quote") << QByteArray("QOS_INTERNET_DEV='eth1' # 'x'\n") << "eth1";
        QTest::newRow("first wins") << QByteArray("QOS_INTERNET_DEV='eth1'\nQOS_INTERNET_DEV='eth2'\n")
                                    << "eth1";
        QTest::newRow("commented twin not seen")
            << QByteArray("#QOS_INTERNET_DEV='x'\nQOS_INTERNET_DEV='y'\n") << "y";
        QTest::newRow("longer name first wins")
            << QByteArray("QOS_INTERNET_DEVICE='z'\nQOS_INTERNET_DEV='y'\n") << "z";
        QTest::newRow("first line without quotes is not skipped")
            << QByteArray("QOS_INTERNET_DEV=eth1\nQOS_INTERNET_DEV='eth2'\n") << "ppp0";
        QTest::newRow("CR line ends") << QByteArray("OPT_QOS='yes'\rQOS_INTERNET_DEV='cr'\r") << "cr";
        QTest::newRow("empty value") << QByteArray("QOS_INTERNET_DEV=''\n") << "";
        QTest::newRow("undefined byte kept")
            << QByteArray("QOS_INTERNET_DEV='\x81\x9d'\n") << QString(QChar(0x81)) + QChar(0x9d);
    }
    void lookupRules()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, dev);
        Fixture f;
        ImportQoSBytes(f.doc, file);
        QCOMPARE(f.doc.Common1()->QoSInternetDev(), dev);
    }

    // A numbered variable is its first line that begins with its name, as every variable: a
    // longer number, a number with a leading zero, the commented twin, a later twin and a
    // description line are other variables. A longer name that begins with it is the same
    // variable (the prefix rule), so "_PARENTX" and an uncommented "_PORTEXT" are taken.
    void numberedVariablesTakeTheirFirstMatch_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("boxes"); // each box: caption<parent caption, or caption[port]
        const QByteArray two = "QOS_CLASS_N='2'\nQOS_CLASS_1_PARENT='0'\n";
        const QByteArray filter = "QOS_CLASS_N='1'\nQOS_CLASS_1_PRIO='0'\nQOS_FILTER_N='1'\n";
        // clang-format off
        QTest::newRow("parent of class 2") << two + "QOS_CLASS_2_PARENT='1'\n" << "Class 1<-, Class 2<Class 1";
        QTest::newRow("class 21 first") << two + "QOS_CLASS_21_PARENT='0'\nQOS_CLASS_2_PARENT='1'\n" << "Class 1<-, Class 2<Class 1";
        QTest::newRow("class 02 first") << two + "QOS_CLASS_02_PARENT='0'\nQOS_CLASS_2_PARENT='1'\n" << "Class 1<-, Class 2<Class 1";
        QTest::newRow("commented twin first") << two + "#QOS_CLASS_2_PARENT='0'\nQOS_CLASS_2_PARENT='1'\n" << "Class 1<-, Class 2<Class 1";
        QTest::newRow("later twin") << two + "QOS_CLASS_2_PARENT='1'\nQOS_CLASS_2_PARENT='0'\n" << "Class 1<-, Class 2<Class 1";
        QTest::newRow("blanks and a tab before") << two + " \tQOS_CLASS_2_PARENT = '1'\n" << "Class 1<-, Class 2<Class 1";
        QTest::newRow("a longer name first is taken") << two + "QOS_CLASS_2_PARENTX='0'\nQOS_CLASS_2_PARENT='1'\n" << "Class 1<-, Class 2<-";
        QTest::newRow("caption in the description first") << two + "#QOS_DESCRIPTION='1'\n#QOS_CLASS_2_CAPTION='Text'\n#QOS_CLASS_2_CAPTION='Zwei'\nQOS_CLASS_2_PARENT='1'\n" << "Class 1<-, Zwei<Class 1";
        QTest::newRow("active caption first") << two + "QOS_CLASS_2_CAPTION='aktiv'\n#QOS_CLASS_2_CAPTION='Zwei'\n" << "Class 1<-, Zwei<-";
        QTest::newRow("commented port list first") << filter + "QOS_FILTER_1_CLASS='1'\n#QOS_FILTER_1_PORTEXT=''\nQOS_FILTER_1_PORT='80'\n" << "Class 1<-, [80]";
        QTest::newRow("uncommented port list first is taken") << filter + "QOS_FILTER_1_CLASS='1'\nQOS_FILTER_1_PORTEXT='22'\nQOS_FILTER_1_PORT='80'\n" << "Class 1<-, [22]";
        QTest::newRow("port list in the description first") << filter + "#QOS_DESCRIPTION='1'\n#QOS_FILTER_1_PORTEXT='ignore'\nQOS_FILTER_1_CLASS='1'\nQOS_FILTER_1_PORT='80'\n" << "Class 1<-, [80]";
        // clang-format on
    }
    void numberedVariablesTakeTheirFirstMatch()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, boxes);
        Fixture f;
        const ImportReport report = ImportQoSBytes(f.doc, file);
        QVERIFY2(report.complete, qPrintable(report.Message()));
        QStringList out;
        for (const QoSObject* o : f.doc.Down1()->ContainedObjects()) {
            const QoSClass* parent = o->ParentQoSObject();
            if (auto* filter = qobject_cast<const QoSFilter*>(o))
                out << o->Caption() + u'[' + filter->QoSPort() + u']';
            else
                out << o->Caption() + u'<' + (parent ? parent->Caption() : QStringLiteral("-"));
        }
        QCOMPARE(out.join(QStringLiteral(", ")), boxes);
    }

    void classNumberIsNotAPrefixOfTheNextDigit()
    {
        const QoSFileTable t(QByteArray("QOS_CLASS_10_PRIO='10'\nQOS_CLASS_1_PRIO='1'\n"));
        QCOMPARE(t.GetQoSValue(u"QOS_CLASS_1_PRIO", QString()), QStringLiteral("1"));
        QCOMPARE(t.GetQoSValue(u"QOS_CLASS_1", QString()), QStringLiteral("10"));
    }

    void descriptionAndVersion_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("version");
        QTest::newRow("none") << QByteArray("") << ""
                              << "unbekannt";
        QTest::newRow("two lines raw")
            << QByteArray("x\n## qos.txt     V0.3 \n#QOS_DESCRIPTION='2' #Zeilen\n# a\t\nb\n") << " a\t\r\n"
            << "v0.3";
        QTest::newRow("count beyond end") << QByteArray("#QOS_DESCRIPTION='5'\n#eins\n") << "eins"
                                          << "unbekannt";
        QTest::newRow("count no number") << QByteArray("#QOS_DESCRIPTION='abc'\n#eins\n") << ""
                                         << "unbekannt";
        QTest::newRow("version elsewhere") << QByteArray("x\nv0.3 is not at the end\n") << ""
                                           << "unbekannt";
    }
    void descriptionAndVersion()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, description);
        QFETCH(QString, version);
        Fixture f;
        ImportQoSBytes(f.doc, file);
        QCOMPARE(f.doc.Common1()->QoSDescription(), description);
        QCOMPARE(f.doc.Common1()->QoSVersion(), version);
    }

    void errorEndsImportKeepingWhatWasMade_data()
    {
        // What was made, and the report: where it stopped, a word of the reason, and classes
        // and filter entries read of those announced.
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("classes");
        QTest::addColumn<int>("filters");
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<QString>("read");
        const QByteArray two =
            "QOS_INTERNET_DEV='eth9'\nQOS_CLASS_N='2'\nQOS_CLASS_1_PARENT='0'\n#QOS_CLASS_2_CAPTION=''\n";
        const QByteArray layout = "#QOS_FILEVERSION='Tarnwick 1.1'\n";
        // clang-format off
        QTest::newRow("complete") << two + "QOS_FILTER_N='1'\nQOS_FILTER_1_CLASS='2'\n" << 2 << 1 << "" << "" << "2/2 1/1";
        QTest::newRow("class number with a fraction") << two + "QOS_FILTER_N='1'\nQOS_FILTER_1_CLASS='2.4'\n" << 2 << 1 << "" << "" << "2/2 1/1";
        QTest::newRow("missing quotes") << two + "QOS_CLASS_2_PARENT=1\n" << 1 << 0 << "Klasse 2" << "Anführungszeichen" << "1/2 0/0";
        QTest::newRow("missing =") << two + "QOS_CLASS_2_PRIO '1'\n" << 1 << 0 << "Klasse 2" << "Zeile 5" << "1/2 0/0";
        QTest::newRow("filter count not a number") << two + "QOS_FILTER_N='1x'\n" << 0 << 0 << "Kopfteil" << "QOS_FILTER_N='1x'" << "0/2 0/0";
        QTest::newRow("direction sideways") << two + "QOS_CLASS_2_DIRECTION='sideways'\n" << 1 << 0 << "Klasse 2" << "Richtung 'sideways'" << "1/2 0/0";
        QTest::newRow("direction with blank") << two + "QOS_CLASS_2_DIRECTION='down '\n" << 1 << 0 << "Klasse 2" << "Richtung 'down '" << "1/2 0/0";
        QTest::newRow("filter names no class") << two + "QOS_FILTER_N='2'\nQOS_FILTER_1_CLASS='7'\nQOS_FILTER_2_CLASS='1'\n" << 2 << 0 << "Filtereintrag 1" << "Klasse '7'" << "2/2 0/2";
        QTest::newRow("ignore entry names no class") << two + "QOS_FILTER_N='2'\nQOS_FILTER_1_CLASS='2'\n#QOS_FILTER_2_PORTEXT='ignore'\n" << 2 << 1 << "Filtereintrag 2" << "Klasse ''" << "2/2 1/2";
        QTest::newRow("class count above 100000") << QByteArray("QOS_CLASS_N='100001'\n") << 0 << 0 << "Kopfteil" << "100000" << "0/0 0/0";
        QTest::newRow("bad cell") << layout + two + "#QOS_CLASS_2_CELLPOS='1;1'\n" << 1 << 0 << "Klasse 2" << "Zellposition '1;1'" << "1/2 0/0";
        QTest::newRow("cell with blanks and sign") << layout + two + "#QOS_CLASS_2_CELLPOS=' +1 , 2.5 '\n" << 2 << 0 << "" << "" << "2/2 0/0";
        QTest::newRow("cell beyond 16 bits") << layout + two + "#QOS_CLASS_2_CELLPOS='40000,0'\n" << 1 << 0 << "Klasse 2" << "40000,0" << "1/2 0/0";
        QTest::newRow("page size one part") << layout + "#QOS_PAGESIZE='7'\n" + two << 0 << 0 << "Kopfteil" << "Seitengröße" << "0/0 0/0";
        // The class is made whole on its own page; only the link is missing.
        QTest::newRow("parent on the other page") << two + "QOS_CLASS_2_PARENT='1'\nQOS_CLASS_2_DIRECTION='up'\n" << 2 << 0 << "Klasse 2" << "übergeordneten Klasse 1" << "1/2 0/0";
        // Numbers that do not fit end the import at their setting; the box stays.
        QTest::newRow("class bandwidth beyond 32 bits") << two + "QOS_CLASS_2_MINBANDWIDTH='99999999999kbit'\n" << 2 << 0 << "Klasse 2" << "99999999999kbit" << "1/2 0/0";
        QTest::newRow("line speed beyond 32 bits") << "QOS_INTERNET_BAND_DOWN='1e3000'\nQOS_INTERNET_BAND_UP='3000000000kbit'\n" + two << 0 << 0 << "Kopfteil" << "QOS_INTERNET_BAND_UP" << "0/0 0/0";
        QTest::newRow("port count beyond 32 bits") << two + "QOS_FILTER_N='2'\nQOS_FILTER_1_CLASS='2'\nQOS_FILTER_1_PORT='1-99999999999'\nQOS_FILTER_2_CLASS='2'\n" << 2 << 1 << "Filtereintrag 1" << "1-99999999999" << "2/2 0/2";
        // clang-format on
    }
    void errorEndsImportKeepingWhatWasMade()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, classes);
        QFETCH(int, filters);
        QFETCH(QString, where);
        QFETCH(QString, reason);
        QFETCH(QString, read);
        Fixture f;
        RecordingStatus status;
        f.doc.setStatusWindow(&status);
        const ImportReport report = ImportQoSBytes(f.doc, file);
        QCOMPARE(f.classes(), classes);
        QCOMPARE(f.filters(), filters);
        QCOMPARE(f.doc.Common1()->QoSInternetDev(),
                 file.contains("eth9") ? QStringLiteral("eth9") : QStringLiteral("ppp0"));
        QCOMPARE(f.prompt.messages(), QStringList());
        QCOMPARE(status.closed, 1);
        QCOMPARE(report.stopped, !where.isEmpty());
        QCOMPARE(report.complete, where.isEmpty());
        QCOMPARE(report.where, where);
        QVERIFY2(report.reason.contains(reason), qPrintable(report.reason));
        QCOMPARE(QStringLiteral("%1/%2 %3/%4")
                     .arg(report.classesRead)
                     .arg(report.classesAnnounced)
                     .arg(report.entriesRead)
                     .arg(report.entriesAnnounced),
                 read);
        if (!report.complete)
            QVERIFY(
                report.Message().startsWith(QStringLiteral("Die Datei wurde nicht vollständig gelesen: ") +
                                            report.reason + QStringLiteral(" Gelesen: ")));
        else
            QCOMPARE(report.Message(), QString());
    }

    // Refusals of the pages while reading are counted in the report, never shown one by one;
    // warnings tell what the file lacks. The document is built all the same.
    void reportCollectsRefusalsAndWarnings_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("classes");
        QTest::addColumn<int>("filters");
        QTest::addColumn<QString>("message");
        const auto chain = [](int from, int to, int parent) {
            QByteArray out;
            for (int n = from; n <= to; ++n)
                out += QStringLiteral("QOS_CLASS_%1_PARENT='%2'\n")
                           .arg(n)
                           .arg(parent < 0 ? n - 1 : parent)
                           .toLatin1();
            return out;
        };
        const QByteArray layout = "#QOS_FILEVERSION='Tarnwick 1.1'\n";
        // clang-format off
        QTest::newRow("a fifth level") << "QOS_CLASS_N='5'\n" + chain(1, 5, -1) << 4 << 0
            << "Klasse 5 nicht angelegt: mehr als vier Ebenen.";
        QTest::newRow("many refused, told once") << "QOS_CLASS_N='12'\n" + chain(1, 4, -1) + chain(5, 12, 4) << 4 << 0
            << "8 Klassen nicht angelegt, mehr als vier Ebenen: 5, 6, 7, 8, 9 und 3 weitere.";
        QTest::newRow("a class cell in row 4") << layout + "QOS_CLASS_N='2'\n" + chain(1, 2, 0) + "#QOS_CLASS_2_CELLPOS='1,4'\n" << 1 << 0
            << "Klasse 2 nicht angelegt: Klassen stehen nur in den Zeilen 0 bis 3.";
        QTest::newRow("a filter under a class with sub classes")
            << "QOS_CLASS_N='2'\n" + chain(1, 2, -1) + "QOS_FILTER_N='2'\nQOS_FILTER_1_CLASS='1'\nQOS_FILTER_2_CLASS='1'\n" << 2 << 0
            << "2 Filtereinträge nicht angelegt, die Klasse hat Unterklassen: 1, 2.";
        QTest::newRow("refusals and an early stop")
            << "QOS_CLASS_N='6'\n" + chain(1, 5, -1) + "QOS_CLASS_6_DIRECTION='sideways'\n" << 4 << 0
            << "Die Datei wurde nicht vollständig gelesen: Klasse 6 hat die Richtung 'sideways'. Gelesen: 5 von 6 "
               "Klassen, 0 von 0 Filtereinträgen. Klasse 5 nicht angelegt: mehr als vier Ebenen.";
        QTest::newRow("no variable of a qos.txt") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16) << 0 << 0
            << "Die Datei enthält keine Variable einer qos.txt.";
        QTest::newRow("empty file") << QByteArray() << 0 << 0 << "Die Datei enthält keine Variable einer qos.txt.";
        QTest::newRow("cut off after class 2 of 8") << "OPT_QOS='yes'\nQOS_CLASS_N='8'\n" + chain(1, 2, 0) << 8 << 0
            << "Klassen 3 bis 8 von 8 angekündigten fehlen in der Datei.";
        QTest::newRow("cut off in the filters") << "QOS_CLASS_N='1'\n" + chain(1, 1, 0) + "QOS_FILTER_N='2'\nQOS_FILTER_1_CLASS='1'\n" << 1 << 1
            << "Die Datei wurde nicht vollständig gelesen: Filtereintrag 2 nennt die Klasse '', die es nicht gibt. "
               "Gelesen: 1 von 1 Klassen, 1 von 2 Filtereinträgen. Filtereintrag 2 von 2 angekündigten fehlt in der "
               "Datei.";
        QTest::newRow("gaps") << "QOS_CLASS_N='4'\n" + chain(2, 2, 0) + chain(4, 4, 0) << 4 << 0
            << "2 von 4 angekündigten Klassen fehlen in der Datei, die erste ist 1, die letzte 3.";
        QTest::newRow("one setting is a qos.txt") << QByteArray("OPT_QOS='yes'\n") << 0 << 0 << "";
        // clang-format on
    }
    void reportCollectsRefusalsAndWarnings()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, classes);
        QFETCH(int, filters);
        QFETCH(QString, message);
        Fixture f;
        const ImportReport report = ImportQoSBytes(f.doc, file);
        QCOMPARE(report.Message(), message);
        QCOMPARE(report.complete, message.isEmpty());
        QCOMPARE(f.prompt.messages(), QStringList());
        QCOMPARE(f.classes(), classes);
        QCOMPARE(f.filters(), filters);
    }

    void laterParentsAreLinkedAtTheEnd_data()
    {
        // Each class as caption<parent caption, in the order of the page.
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("tree");
        const auto cls = [](int n, int parent, const char* direction) {
            return QStringLiteral("QOS_CLASS_%1_PARENT='%2'\nQOS_CLASS_%1_DIRECTION='%3'\n")
                .arg(n)
                .arg(parent)
                .arg(QLatin1String(direction))
                .toLatin1();
        };
        QTest::newRow("parent later, its direction taken")
            << "QOS_CLASS_N='2'\n" + cls(1, 2, "DOWN") + cls(2, 0, "down")
            << "Class 1<Class 2 down, Class 2<- down";
        QTest::newRow("parent first as always") << "QOS_CLASS_N='2'\n" + cls(1, 0, "down") + cls(2, 1, "down")
                                                << "Class 1<- down, Class 2<Class 1 down";
        QTest::newRow("own parent") << "QOS_CLASS_N='1'\n" + cls(1, 1, "down") << "Class 1<- down";
        QTest::newRow("two classes naming each other")
            << "QOS_CLASS_N='2'\n" + cls(1, 2, "down") + cls(2, 1, "down")
            << "Class 1<- down, Class 2<Class 1 down";
        QTest::newRow("beyond the announced classes")
            << "QOS_CLASS_N='1'\n" + cls(1, 5, "down") << "Class 1<- down";
        QTest::newRow("later parent on the other page")
            << "QOS_CLASS_N='2'\n" + cls(1, 2, "down") + cls(2, 0, "up") << "Class 1<- down, Class 2<- up";
    }
    void laterParentsAreLinkedAtTheEnd()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, tree);
        Fixture f;
        QVERIFY(ImportQoSBytes(f.doc, file).complete);
        QStringList classes;
        for (ObjectPage* page : {f.doc.Down1(), f.doc.Up1()})
            for (QoSObject* o : page->ContainedObjects()) {
                auto* c = qobject_cast<QoSClass*>(o);
                classes << QStringLiteral("%1<%2 %3")
                               .arg(c->Caption(),
                                    c->ParentQoSObject() ? c->ParentQoSObject()->Caption()
                                                         : QStringLiteral("-"),
                                    c->QoSDirection());
            }
        QCOMPARE(classes.join(QStringLiteral(", ")), tree);
        QCOMPARE(f.prompt.messages(), QStringList());
    }

    void descriptionLinesAreText_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("dev");
        QTest::addColumn<int>("filters");
        const QByteArray oneFilter =
            "QOS_CLASS_N='1'\nQOS_CLASS_1_PRIO='0'\nQOS_FILTER_N='1'\nQOS_FILTER_1_CLASS='1'\n"
            "QOS_FILTER_1_PORT='80'\n";
        QTest::newRow("a line without # under a count too large stays a setting")
            << "#QOS_DESCRIPTION='3'\n#a\nQOS_INTERNET_DEV='eth7'\n" + oneFilter
            << "a\r\nOS_INTERNET_DEV='eth7'\r\nOS_CLASS_N='1'"
            << "Class 1"
            << "eth7" << 1;
        QTest::newRow("the lines after the block are settings again")
            << "#QOS_DESCRIPTION='1'\n#x\n#QOS_CLASS_1_CAPTION='eigen'\n" + oneFilter << "x"
            << "eigen"
            << "ppp0" << 1;
    }
    void descriptionLinesAreText()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, description);
        QFETCH(QString, caption);
        QFETCH(QString, dev);
        QFETCH(int, filters);
        Fixture f;
        QVERIFY(ImportQoSBytes(f.doc, file).complete);
        QCOMPARE(f.doc.Common1()->QoSDescription(), description);
        QCOMPARE(f.doc.Down1()->ContainedObjects().first()->Caption(), caption);
        QCOMPARE(f.doc.Common1()->QoSInternetDev(), dev);
        QCOMPARE(f.filters(), filters);
    }

    void pagesGrowToHoldBoxesReadBeyondThem()
    {
        Fixture f;
        const ImportReport report =
            ImportQoSBytes(f.doc, "#QOS_FILEVERSION='Tarnwick "
                                  "1.1'\n#QOS_PAGESIZE='6,5'\nQOS_CLASS_N='2'\n#QOS_CLASS_1_CELLPOS='9,0'\n"
                                  "#QOS_CLASS_2_CELLPOS='20,3'\nQOS_CLASS_2_DIRECTION='up'\nQOS_FILTER_N='1'"
                                  "\nQOS_FILTER_1_CLASS='1'\n"
                                  "#QOS_FILTER_1_CELLPOS='11,12'\n");
        QVERIFY(report.complete);
        QCOMPARE(PageScript::size(f.doc.Down1()), QStringLiteral("12x13"));
        QCOMPARE(PageScript::size(f.doc.Up1()), QStringLiteral("21x5"));
    }

    void filesTooLargeOrUnreadableCreateNothing()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("huge.qos.txt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.resize(MaxQoSFileSize + 1)); // sparse: costs no disk
        file.close();
        Fixture f;
        RecordingStatus status;
        f.doc.setStatusWindow(&status);
        const ImportReport report = ImportQoSText(f.doc, path);
        QVERIFY(!report.complete);
        QVERIFY2(report.reason.contains(QStringLiteral("größer als 64 MB")), qPrintable(report.reason));
        QCOMPARE(f.classes(), 0);
        QCOMPARE(status.closed, 1);
        QByteArray bytes;
        QString error;
        QVERIFY(!ReadQoSFile(path, bytes, error));
        QVERIFY(bytes.isEmpty());
        // A file that cannot be read at all ends the same way.
        ImportQoSText(f.doc, dir.filePath(QStringLiteral("does-not-exist.txt")));
        QCOMPARE(f.classes(), 0);
        QCOMPARE(status.closed, 2);
    }

    void layoutDataOnlyFromOwnFiles_data()
    {
        QTest::addColumn<QByteArray>("version");
        QTest::addColumn<QByteArray>("pageSize");
        QTest::addColumn<int>("cols");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("filterRow");
        QTest::newRow("own file") << QByteArray("Tarnwick 1.1") << QByteArray("#QOS_PAGESIZE='8,9,1'\n") << 8
                                  << 9 << 7;
        QTest::newRow("no page size") << QByteArray("Tarnwick 1.1") << QByteArray() << 10 << 5 << 7;
        QTest::newRow("small page size")
            << QByteArray("Tarnwick 1.1") << QByteArray("#QOS_PAGESIZE='1,0'\n") << 3 << 5 << 7;
        QTest::newRow("other tool") << QByteArray("Tarnwick 1.0") << QByteArray("#QOS_PAGESIZE='8,9'\n") << 6
                                    << 5 << 4;
    }
    void layoutDataOnlyFromOwnFiles()
    {
        QFETCH(QByteArray, version);
        QFETCH(QByteArray, pageSize);
        QFETCH(int, cols);
        QFETCH(int, rows);
        QFETCH(int, filterRow);
        Fixture f;
        ImportQoSBytes(f.doc, "#QOS_FILEVERSION='" + version + "'\n" + pageSize +
                                  "QOS_CLASS_N='1'\n#QOS_CLASS_1_CELLPOS='2,0'\n"
                                  "QOS_FILTER_N='1'\nQOS_FILTER_1_CLASS='1'\n#QOS_FILTER_1_CELLPOS='2,7'\n");
        QCOMPARE(f.doc.Down1()->prop().Cols, cols);
        QCOMPARE(f.doc.Down1()->prop().Rows >= rows, true);
        QCOMPARE(f.doc.Up1()->prop().Cols, 6);
        const QList<QoSObject*> objects = f.doc.Down1()->ContainedObjects();
        QCOMPARE(objects.size(), 2);
        QCOMPARE(int(objects[1]->MatrixY()), filterRow);
    }

    void progressAndRefusals()
    {
        Fixture f;
        RecordingStatus status;
        f.doc.setStatusWindow(&status);
        ImportQoSBytes(f.doc, "#QOS_FILEVERSION='Tarnwick 1.1'\nQOS_CLASS_N='2'\n#QOS_CLASS_2_CELLPOS='1,4'\n"
                              "QOS_FILTER_N='1'\nQOS_FILTER_1_CLASS='1'\n");
        QCOMPARE(status.captions, QStringList{QStringLiteral("Import")});
        QCOMPARE(status.messages,
                 (QStringList{QStringLiteral("Import..."), QStringLiteral("Import...Header"),
                              QStringLiteral("Import...Class 1"), QStringLiteral("Import...Class 2"),
                              QStringLiteral("Import...Filter 1")}));
        QCOMPARE(status.progress, (QList<QPair<int, int>>{{3, 3}}));
        QCOMPARE(status.closed, 1);
        // The page refuses a class in row 4 without a message box; the import goes on.
        QCOMPARE(f.prompt.messages(), QStringList());
        QCOMPARE(f.classes(), 1);
        QCOMPARE(f.filters(), 1);
    }

    void absurdCellsStayCheap()
    {
        Fixture f;
        QByteArray file = "#QOS_FILEVERSION='Tarnwick 1.1'\n#QOS_PAGESIZE='2000000000,3'\nQOS_CLASS_N='1'\n"
                          "QOS_FILTER_N='200'\n";
        for (int m = 1; m <= 200; ++m)
            file += QStringLiteral("QOS_FILTER_%1_CLASS='1'\n#QOS_FILTER_%1_CELLPOS='0,%2'\n")
                        .arg(m)
                        .arg(32767 - m)
                        .toLatin1();
        ImportQoSBytes(f.doc, file);
        QCOMPARE(f.filters(), 200);
        QCOMPARE(f.doc.Down1()->prop().Rows, 32767);
    }
};

QTEST_GUILESS_MAIN(TestQoSText)
#include "tst_qostext.moc"
