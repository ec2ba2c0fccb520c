#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

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

QStringList strings(std::initializer_list<const char*> items)
{
    QStringList out;
    for (const char* item : items)
        out << QString::fromUtf8(item);
    return out;
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
private slots:
    void jsonOfSample()
    {
        const Run r = run({QStringLiteral("json"), sample("home-router.qos.txt")});
        QCOMPARE(r.exitCode, 0);
        const QJsonObject root = QJsonDocument::fromJson(r.out).object();
        QCOMPARE(root.keys(), (QStringList{QStringLiteral("common"), QStringLiteral("messages"),
                                           QStringLiteral("pages")}));
        const QJsonObject common = root[QStringLiteral("common")].toObject();
        QCOMPARE(common.size(), 9);
        QCOMPARE(common[QStringLiteral("QoSInternetBandDown")].toString(), QStringLiteral("16000kbit"));
        QCOMPARE(common[QStringLiteral("QoSInternetDefaultUp")].toString(), QStringLiteral("7"));
        QCOMPARE(common[QStringLiteral("QoSVersion")].toString(), QStringLiteral("unbekannt"));
        QCOMPARE(root[QStringLiteral("messages")].toArray().size(), 0);

        const QJsonObject down = root[QStringLiteral("pages")][QStringLiteral("down")].toObject();
        QCOMPARE(down[QStringLiteral("cols")].toInt(), 6);
        QCOMPARE(down[QStringLiteral("rows")].toInt(), 6);
        const QJsonArray objects = down[QStringLiteral("objects")].toArray();
        QCOMPARE(objects.size(), 7);
        const QJsonObject web = objects[3].toObject();
        QCOMPARE(web[QStringLiteral("type")].toString(), QStringLiteral("class"));
        QCOMPARE(web[QStringLiteral("caption")].toString(), QStringLiteral("Class 4"));
        QCOMPARE(web[QStringLiteral("parent")].toString(),
                 objects[0].toObject()[QStringLiteral("name")].toString());
        QCOMPARE(web[QStringLiteral("x")].toInt(), 2);
        QCOMPARE(web[QStringLiteral("min")].toString(), QStringLiteral("4000kbit"));
        QCOMPARE(web[QStringLiteral("minValid")].toBool(), true);
        QCOMPARE(objects[2].toObject()[QStringLiteral("default")].toBool(), true);
        const QJsonObject filter = objects[5].toObject();
        QCOMPARE(filter.keys(), strings({"caption", "count", "filterType", "ip", "name", "option", "parent",
                                         "port", "type", "x", "y"}));
        QCOMPARE(filter[QStringLiteral("port")].toString(), QStringLiteral("80"));
        QCOMPARE(filter[QStringLiteral("filterType")].toString(), QStringLiteral("client"));
        QCOMPARE(filter[QStringLiteral("count")].toInt(), 1);
        QCOMPARE(filter[QStringLiteral("y")].toInt(), 4);
    }

    void jsonShowsRefusalsAndInvalidFlags()
    {
        Run r = run({QStringLiteral("json"), data("refused-level.qos.txt")});
        QCOMPARE(r.exitCode, 0);
        QJsonObject root = QJsonDocument::fromJson(r.out).object();
        QCOMPARE(root[QStringLiteral("messages")].toArray().toVariantList(),
                 QVariantList{QStringLiteral("Hinzufügen nicht möglich. Keine weitere Ebene möglich.")});

        r = run({QStringLiteral("json"), data("overbooked.qos.txt")});
        root = QJsonDocument::fromJson(r.out).object();
        const QJsonArray objects =
            root[QStringLiteral("pages")][QStringLiteral("down")][QStringLiteral("objects")].toArray();
        QCOMPARE(objects[0].toObject()[QStringLiteral("minValid")].toBool(), false);
        QCOMPARE(objects[0].toObject()[QStringLiteral("maxValid")].toBool(), true);
        QCOMPARE(objects[2].toObject()[QStringLiteral("maxValid")].toBool(), false);
    }

    void exitCodes_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<bool>("emptyOut");
        QTest::newRow("check clean sample")
            << QStringList{QStringLiteral("check"), sample("home-router.qos.txt")} << 0 << false;
        QTest::newRow("check problems")
            << QStringList{QStringLiteral("check"), data("overbooked.qos.txt")} << 1 << false;
        QTest::newRow("check unreadable")
            << QStringList{QStringLiteral("check"), data("no-such-file.txt")} << 2 << true;
        QTest::newRow("export unreadable")
            << QStringList{QStringLiteral("export"), data("no-such-file.txt")} << 2 << true;
        QTest::newRow("export writer fails")
            << QStringList{QStringLiteral("export"), data("absurd-ports.qos.txt")} << 1 << true;
        QTest::newRow("unknown command")
            << QStringList{QStringLiteral("print"), data("overbooked.qos.txt")} << 2 << true;
        QTest::newRow("missing file") << QStringList{QStringLiteral("json")} << 2 << true;
        QTest::newRow("no command") << QStringList{} << 2 << true;
        QTest::newRow("help") << QStringList{QStringLiteral("--help")} << 0 << false;
    }
    void exitCodes()
    {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(bool, emptyOut);
        const Run r = run(args);
        QCOMPARE(r.exitCode, exitCode);
        QCOMPARE(r.out.isEmpty(), emptyOut);
        if (exitCode == 2)
            QCOMPARE(r.err.count('\n'), 1);
        if (args.value(1).endsWith(QStringLiteral("absurd-ports.qos.txt")))
            QCOMPARE(r.err, QByteArray("Bei der Erstellung sind Fehler aufgetreten!\n"));
    }

    // An import that ends early is told on one line; export and json keep their exit code,
    // check counts it as a problem.
    void earlyStopIsReported_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("export") << "export" << 0;
        QTest::newRow("json") << "json" << 0;
        QTest::newRow("check") << "check" << 1;
    }
    void earlyStopIsReported()
    {
        QFETCH(QString, command);
        QFETCH(int, exitCode);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("broken.qos.txt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("QOS_CLASS_N='3'\nQOS_CLASS_2_DIRECTION='sideways'\nQOS_FILTER_N='2'\n");
        file.close();
        const Run r = run({command, path});
        QCOMPARE(r.exitCode, exitCode);
        const QString text = QStringLiteral("Die Datei wurde nicht vollständig gelesen: Klasse 2 hat die Richtung "
                                            "'sideways'. Gelesen: 1 von 3 Klassen, 0 von 2 Filtereinträgen.");
        if (command == u"check") {
            QVERIFY(QString::fromUtf8(r.out).split(u'\n').contains(text));
        } else {
            QCOMPARE(QString::fromUtf8(r.err), text + u'\n');
            QVERIFY(!r.out.isEmpty());
        }
    }

    void outputThatCannotBeWrittenIsAnError()
    {
        if (!QFile::exists(QStringLiteral("/dev/full")))
            QSKIP("no /dev/full here");
        QProcess p;
        p.setStandardOutputFile(QStringLiteral("/dev/full"));
        p.start(QStringLiteral(TARNWICK_CLI), {QStringLiteral("export"), sample("home-router.qos.txt")});
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 1);
        QVERIFY(QString::fromUtf8(p.readAllStandardError())
                    .startsWith(QStringLiteral("Fehler: Die Ausgabe konnte nicht geschrieben werden")));
    }

    void fileAboveTheLimitIsRefused()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("huge.qos.txt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.resize(65 * 1024 * 1024)); // sparse
        file.close();
        const Run r = run({QStringLiteral("export"), path});
        QCOMPARE(r.exitCode, 2);
        QVERIFY(r.out.isEmpty());
        QVERIFY(QString::fromUtf8(r.err).contains(QStringLiteral("größer als 64 MB")));
    }

    void checkNamesReversedRangesAndHugePorts()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("ports.qos.txt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("QOS_CLASS_N='1'\nQOS_FILTER_N='2'\nQOS_FILTER_1_CLASS='1'\nQOS_FILTER_1_PORT='6010-6000'\n"
                   "QOS_FILTER_2_CLASS='1'\nQOS_FILTER_2_PORT='99999999999999999999'\n");
        file.close();
        const Run r = run({QStringLiteral("check"), path});
        QCOMPARE(r.exitCode, 1);
        const QString out = QString::fromUtf8(r.out);
        QVERIFY(out.contains(QStringLiteral("der Bereich \"6010-6000\" läuft rückwärts und zählt 9 Ports, steht aber für 11")));
        QVERIFY(out.contains(QStringLiteral("der erste Port von \"99999999999999999999\" liegt nicht zwischen 0 und 65535")));
    }

    void checkNamesEveryProblem()
    {
        const Run r = run({QStringLiteral("check"), data("overbooked.qos.txt")});
        const QStringList lines = QString::fromUtf8(r.out).split(u'\n', Qt::SkipEmptyParts);
        // Three bandwidths, the address, the first port, the port count; then three summaries.
        QCOMPARE(lines.size(), 9);
        QVERIFY(lines[0].contains(QStringLiteral("(Grenze 1000 kbit, Summe der Minima 1200 kbit)")));
        QVERIFY(lines.last().startsWith(QStringLiteral("Up: Hauptklassen")));
    }

    void render_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("error"); // a part of the one line on standard error
        const QString out = QDir::temp().filePath(QStringLiteral("tarnwick-render-test.png"));
        // clang-format off
        QTest::newRow("down page by default") << QStringList{"render", sample("home-router.qos.txt"), out} << 0 << "";
        QTest::newRow("up page") << QStringList{"render", sample("home-router.qos.txt"), out, "up"} << 0 << "";
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
        // The size from the header: as wide as the page's six columns, as high as its rows.
        const auto be32 = [&head](int at) {
            return (quint32(quint8(head[at])) << 24) | (quint32(quint8(head[at + 1])) << 16) |
                   (quint32(quint8(head[at + 2])) << 8) | quint32(quint8(head[at + 3]));
        };
        QVERIFY(be32(16) > 6 * 117); // at least six boxes of the smallest size side by side
        QVERIFY(be32(20) > 5 * 85);
        png.close();
        QFile::remove(out);
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
