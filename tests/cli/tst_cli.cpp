#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

namespace {

struct Run
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

Run run(const QStringList& args)
{
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("SOURCE_DATE_EPOCH"), QStringLiteral("1700000000"));
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(TARNWICK_CLI), args);
    if (!p.waitForFinished(60000))
        qFatal("tarnwick-cli did not finish");
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
            p.readAllStandardError()};
}

// Runs a command on a file of the given bytes.
Run runOn(const QString& command, const QByteArray& bytes)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("test.qos.txt"));
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    f.close();
    return run({command, path});
}

QString sample(const char* name)
{
    return QStringLiteral(TARNWICK_SAMPLES "/") + QLatin1String(name);
}

QString data(const char* name)
{
    return QStringLiteral(TARNWICK_TEST_DATA "/") + QLatin1String(name);
}

} // namespace

class TestCli : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir; // for the pictures
private slots:
    // The document as JSON, each part compared as written: the common settings, a class and a
    // filter with every field, the validity of the bandwidths, and no message boxes.
    void json_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("path"); // to the part compared
        QTest::addColumn<QByteArray>("part");
        const QString home = sample("home-router.qos.txt");
        const QString overbooked = data("overbooked.qos.txt");
        // clang-format off
        QTest::newRow("common settings") << home << "common"
            << QByteArray(R"({"QoSDescription":"","QoSInternetBandDown":"16000kbit","QoSInternetBandUp":"2400kbit",)"
                          R"("QoSInternetDefaultDown":"3","QoSInternetDefaultUp":"7","QoSInternetDev":"ppp0",)"
                          R"("QoSLocalBand":"100Mbit","QoSLocalNetDev":"eth0","QoSVersion":"unbekannt"})");
        QTest::newRow("a sub class") << home << "pages/down/objects/3"
            << QByteArray(R"({"caption":"Class 4","default":false,"direction":"down","max":"16000kbit","maxValid":true,)"
                          R"("min":"4000kbit","minValid":true,"name":"QoSClass4","parent":"QoSClass1","prio":"2",)"
                          R"("type":"class","x":2,"y":1})");
        QTest::newRow("the default class") << home << "pages/down/objects/2/default" << QByteArray("true");
        QTest::newRow("a filter") << home << "pages/down/objects/5"
            << QByteArray(R"({"caption":"","count":1,"filterType":"client","ip":"","name":"QoSFilter2","option":"",)"
                          R"("parent":"QoSClass4","port":"80","type":"filter","x":2,"y":4})");
        QTest::newRow("no message boxes") << home << "messages" << QByteArray("[]");
        QTest::newRow("an overbooked minimum") << overbooked << "pages/down/objects/0/minValid" << QByteArray("false");
        QTest::newRow("a maximum above the parent's") << overbooked << "pages/down/objects/2/maxValid" << QByteArray("false");
        // clang-format on
    }
    void json()
    {
        QFETCH(QString, file);
        QFETCH(QString, path);
        QFETCH(QByteArray, part);
        const Run r = run({QStringLiteral("json"), file});
        QCOMPARE(r.exitCode, 0);
        QJsonValue value = QJsonDocument::fromJson(r.out).object();
        for (const QString& step : path.split(u'/'))
            value = value.isArray() ? value.toArray().at(step.toInt()) : value.toObject().value(step);
        // Inside an array, so that a single value is written as well.
        QCOMPARE(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact), '[' + part + ']');
    }

    void exitCodes_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<bool>("emptyOut");
        const QString check = QStringLiteral("check"), exportCommand = QStringLiteral("export");
        // clang-format off
        QTest::newRow("check clean sample") << QStringList{check, sample("home-router.qos.txt")} << 0 << false;
        QTest::newRow("check problems") << QStringList{check, data("overbooked.qos.txt")} << 1 << false;
        QTest::newRow("check unreadable") << QStringList{check, data("no-such-file.txt")} << 2 << true;
        QTest::newRow("export writer fails") << QStringList{exportCommand, data("absurd-ports.qos.txt")} << 1 << true;
        QTest::newRow("unknown command") << QStringList{QStringLiteral("print"), data("overbooked.qos.txt")} << 2 << true;
        QTest::newRow("missing file") << QStringList{QStringLiteral("json")} << 2 << true;
        QTest::newRow("no command") << QStringList{} << 2 << true;
        QTest::newRow("help") << QStringList{QStringLiteral("--help")} << 0 << false;
        // clang-format on
    }
    void exitCodes()
    {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        const Run r = run(args);
        QCOMPARE(r.exitCode, exitCode);
        QTEST(r.out.isEmpty(), "emptyOut");
        if (exitCode == 2)
            QCOMPARE(r.err.count('\n'), 1);
        if (args.value(1).endsWith(QStringLiteral("absurd-ports.qos.txt")))
            QCOMPARE(r.err, QByteArray("Bei der Erstellung sind Fehler aufgetreten!\n"));
    }

    // What the import has to tell (an early stop, refused boxes, a file cut off) is one line:
    // export and json keep their exit code, check counts it as a problem.
    void importReportIsOneLine_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("line");
        // clang-format off
        QTest::newRow("export, early stop") << "export" << QByteArray("QOS_CLASS_N='1'\nQOS_CLASS_1_DIRECTION='sideways'\n") << 0
            << "Die Datei wurde nicht vollständig gelesen: Klasse 1 hat die Richtung 'sideways'. Gelesen: 0 von 1 Klassen, 0 von 0 Filtereinträgen.";
        QTest::newRow("json, file cut off") << "json" << QByteArray("QOS_CLASS_N='8'\nQOS_CLASS_1_PARENT='0'\nQOS_CLASS_2_PARENT='0'\n") << 0
            << "Klassen 3 bis 8 von 8 angekündigten fehlen in der Datei.";
        QTest::newRow("check, refused classes") << "check"
            << QByteArray("QOS_CLASS_N='5'\nQOS_CLASS_1_PARENT='0'\nQOS_CLASS_2_PARENT='1'\nQOS_CLASS_3_PARENT='2'\n"
                          "QOS_CLASS_4_PARENT='3'\nQOS_CLASS_5_PARENT='4'\n") << 1
            << "Klasse 5 nicht angelegt: mehr als vier Ebenen.";
        // clang-format on
    }
    void importReportIsOneLine()
    {
        QFETCH(QString, command);
        QFETCH(QByteArray, file);
        QFETCH(int, exitCode);
        QFETCH(QString, line);
        const Run r = runOn(command, file);
        QCOMPARE(r.exitCode, exitCode);
        if (command == u"check") {
            QVERIFY2(QString::fromUtf8(r.out).split(u'\n').contains(line), r.out.constData());
        } else {
            QCOMPARE(QString::fromUtf8(r.err), line + u'\n');
            QVERIFY(!r.out.isEmpty());
        }
    }

    // Output that cannot be written is an error, told in German like every other.
    void outputThatCannotBeWritten_data()
    {
        QTest::addColumn<QString>("redirect");
        QTest::addColumn<QString>("reason");
        // clang-format off
        QTest::newRow("closed before the start") << ">&-" << "keine Ausgabe geöffnet";
        QTest::newRow("a full disk") << ">/dev/full" << "kein Platz mehr auf dem Datenträger";
        // clang-format on
    }
    void outputThatCannotBeWritten()
    {
        QFETCH(QString, redirect);
        QFETCH(QString, reason);
        if (redirect.contains(u"/dev/full") && !QFile::exists(QStringLiteral("/dev/full")))
            QSKIP("no /dev/full here");
        QProcess p;
        p.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), QStringLiteral("exec \"$0\" export \"$1\" ") + redirect,
                 QStringLiteral(TARNWICK_CLI), sample("home-router.qos.txt")});
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 1);
        QCOMPARE(QString::fromUtf8(p.readAllStandardError()),
                 QStringLiteral("Fehler: Die Ausgabe konnte nicht geschrieben werden: %1.\n").arg(reason));
    }

    // The output of check, line for line: every kind of line it prints. A line ending in
    // "…" stands for a bandwidth's explanation, whose words are not this test's business.
    void checkOutput_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("out");
        QFile overbooked(data("overbooked.qos.txt"));
        QVERIFY(overbooked.open(QIODevice::ReadOnly));
        QTest::newRow("bandwidths, address, first port, port count")
            << overbooked.readAll() << 1
            << QStringLiteral(
                   "Down: Klasse \"Class 1\" in Zelle 0,0: …\n"
                   "Down: Klasse \"Class 2\" in Zelle 1,0: …\n"
                   "Down: Klasse \"Class 3\" in Zelle 1,1: …\n"
                   "Down: Filter \"\" in Zelle 0,4: ungültige IP-Adresse \"300.1.2.3\"\n"
                   "Down: Filter \"\" in Zelle 0,4: der erste Port von \"70000\" liegt nicht zwischen 0 und "
                   "65535\n"
                   "Down: Filter \"\" in Zelle 1,4: 31 Ports, erlaubt sind höchstens 20\n"
                   "Down: Klasse \"Class 2\" in Zelle 1,0: 100 kbit garantiert von 1000 kbit verfügbar, 900 "
                   "kbit frei\n"
                   "Down: Hauptklassen: 1200 kbit garantiert von 1000 kbit der Leitung, 200 kbit überbucht\n"
                   "Up: Hauptklassen: 0 kbit garantiert von 128 kbit der Leitung, 128 kbit frei\n");
        QTest::newRow("port lists")
            << QByteArray("QOS_CLASS_N='1'\nQOS_CLASS_1_PARENT='0'\nQOS_CLASS_1_MINBANDWIDTH='100kbit'\n"
                          "QOS_CLASS_1_DIRECTION='down'\nQOS_FILTER_N='5'\n"
                          "QOS_FILTER_1_CLASS='1'\nQOS_FILTER_1_PORT='6010-6000'\n"
                          "QOS_FILTER_2_CLASS='1'\nQOS_FILTER_2_PORT='5-5,9-3,x-y'\n"
                          "QOS_FILTER_3_CLASS='1'\nQOS_FILTER_3_PORT='1-21'\nQOS_FILTER_3_IP='10.0.0.256'\n"
                          "QOS_FILTER_4_CLASS='1'\nQOS_FILTER_4_PORT='99999999999999999999'\n"
                          "QOS_FILTER_5_CLASS='1'\nQOS_FILTER_5_PORT='0-2147483647,0-2147483647'\n")
            << 1
            << QStringLiteral(
                   "Die Datei wurde nicht vollständig gelesen: Filtereintrag 5: Die Portliste "
                   "'0-2147483647,0-2147483647' steht für mehr Ports, als sich zählen lassen. Gelesen: 1 von "
                   "1 "
                   "Klassen, 4 von 5 Filtereinträgen.\n"
                   "Down: Filter \"\" in Zelle 0,4: der Bereich \"6010-6000\" läuft rückwärts und zählt 9 "
                   "Ports, steht aber für 11\n"
                   "Down: Filter \"\" in Zelle 0,5: der Bereich \"9-3\" läuft rückwärts und zählt 5 Ports, "
                   "steht aber für 7\n"
                   "Down: Filter \"\" in Zelle 0,6: 21 Ports, erlaubt sind höchstens 20\n"
                   "Down: Filter \"\" in Zelle 0,6: ungültige IP-Adresse \"10.0.0.256\"\n"
                   "Down: Filter \"\" in Zelle 0,7: der erste Port von \"99999999999999999999\" liegt nicht "
                   "zwischen 0 und 65535\n"
                   "Down: Filter \"\" in Zelle 0,8: \"0-2147483647,0-2147483647\" steht für mehr Ports, als "
                   "sich zählen lassen\n");
        // A sum beyond 32 bits is still named in the balance; a figure beyond 32 bits is not.
        QTest::newRow("sums beyond 32 bits")
            << QByteArray(
                   "QOS_INTERNET_BAND_DOWN='1000kbit'\nQOS_INTERNET_BAND_UP='3000Gbit'\nQOS_CLASS_N='3'\n"
                   "QOS_CLASS_1_PARENT='0'\nQOS_CLASS_1_MINBANDWIDTH='2000000000kbit'\n"
                   "QOS_CLASS_1_MAXBANDWIDTH='2000000000kbit'\nQOS_CLASS_1_DIRECTION='down'\n"
                   "QOS_CLASS_2_PARENT='0'\nQOS_CLASS_2_MINBANDWIDTH='2000000000kbit'\n"
                   "QOS_CLASS_2_DIRECTION='down'\nQOS_CLASS_3_PARENT='1'\n"
                   "QOS_CLASS_3_MINBANDWIDTH='3000Gbit'\nQOS_CLASS_3_DIRECTION='down'\n")
            << 0
            << QStringLiteral(
                   "Down: Klasse \"Class 1\" in Zelle 0,0: Überlauf garantiert von 2000000000 kbit "
                   "verfügbar\n"
                   "Down: Hauptklassen: 4000000000 kbit garantiert von 1000 kbit der Leitung, "
                   "3999999000 kbit überbucht\n"
                   "Up: Hauptklassen: 0 kbit garantiert von Überlauf der Leitung\n");
        // Cells in rows 0 to 3 do not keep a tree to four levels: the parent links decide.
        QTest::newRow("classes below the fourth level")
            << QByteArray("#QOS_FILEVERSION='Tarnwick 1.1'\nQOS_CLASS_N='5'\n"
                          "#QOS_CLASS_1_CELLPOS='0,0'\nQOS_CLASS_1_PARENT='0'\n#QOS_CLASS_2_CELLPOS='0,1'\n"
                          "QOS_CLASS_2_PARENT='1'\n#QOS_CLASS_3_CELLPOS='0,2'\nQOS_CLASS_3_PARENT='2'\n"
                          "#QOS_CLASS_4_CELLPOS='0,3'\nQOS_CLASS_4_PARENT='3'\n#QOS_CLASS_5_CELLPOS='1,3'\n"
                          "QOS_CLASS_5_PARENT='4'\n")
            << 1
            << QStringLiteral(
                   "Down: Klasse \"Class 5\" in Zelle 1,3: liegt in Ebene 5, erlaubt sind höchstens vier "
                   "Ebenen\n");
    }
    void checkOutput()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, exitCode);
        QFETCH(QString, out);
        const Run r = runOn(QStringLiteral("check"), file);
        QCOMPARE(r.exitCode, exitCode);
        QStringList lines = QString::fromUtf8(r.out).split(u'\n');
        // A row without the balance lines compares the problems only.
        if (!out.contains(u"Hauptklassen"))
            lines.removeIf([](const QString& l) { return l.contains(u" garantiert von "); });
        const QStringList expected = out.split(u'\n');
        QCOMPARE(lines.size(), expected.size());
        for (qsizetype i = 0; i < lines.size(); ++i)
            if (expected[i].endsWith(u'…') && lines[i].startsWith(expected[i].chopped(1)))
                lines[i] = expected[i];
        QCOMPARE(lines, expected);
    }

    void render_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("error"); // a part of the one line on standard error
        const QString out = m_dir.filePath(QStringLiteral("page.png"));
        // clang-format off
        QTest::newRow("down page by default") << QStringList{"render", sample("home-router.qos.txt"), out} << 0 << "";
        QTest::newRow("a page too large for one picture") << QStringList{"render", data("huge-page.qos.txt"), out}
                                                          << 1 << "zu groß für ein Bild";
        QTest::newRow("no such page") << QStringList{"render", sample("home-router.qos.txt"), out, "sideways"} << 2
                                      << "\"down\" oder \"up\"";
        QTest::newRow("no picture named") << QStringList{"render", sample("home-router.qos.txt")} << 2
                                          << "fehlt der Name des Bildes";
        QTest::newRow("picture cannot be written") << QStringList{"render", sample("home-router.qos.txt"),
                                                                  data("no-such-dir/out.png")} << 1 << "kann nicht geschrieben werden";
        // clang-format on
    }
    void render()
    {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(QString, error);
        const QString out = args.size() > 2 ? args[2] : QString();
        if (!out.isEmpty())
            QFile::remove(out);
        const Run r = run(args);
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY2(QString::fromUtf8(r.err).contains(error), r.err.constData());
        QFile png(out);
        QCOMPARE(png.exists(), exitCode == 0);
        if (exitCode != 0)
            return;
        QVERIFY(png.open(QIODevice::ReadOnly));
        const QByteArray head = png.read(24);
        QVERIFY(head.startsWith("\x89PNG\r\n\x1a\n"));
        // The size from the header: at least six boxes of the smallest size side by side, and
        // five rows of them.
        QVERIFY(qFromBigEndian<quint32>(head.constData() + 16) > 6 * 117);
        QVERIFY(qFromBigEndian<quint32>(head.constData() + 20) > 5 * 85);
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
