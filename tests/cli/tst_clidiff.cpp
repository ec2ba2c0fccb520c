#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <utility>

namespace {

using Replacements = QList<std::pair<QByteArray, QByteArray>>;

QByteArray sample()
{
    QFile f(QStringLiteral(TARNWICK_SAMPLES "/home-router.qos.txt"));
    if (!f.open(QIODevice::ReadOnly))
        qFatal("cannot read the sample");
    return f.readAll();
}

QByteArray replaced(QByteArray text, const Replacements& replacements)
{
    for (const auto& [from, to] : replacements) {
        if (!text.contains(from))
            qFatal("the sample has no \"%s\"", from.constData());
        text.replace(from, to);
    }
    return text;
}

// The sample with the captions a user would give its classes.
QByteArray named()
{
    const char* captions[] = {"Haupt", "Telefon", "Rest", "Web", "Haupt", "Telefon", "Rest", "Ack"};
    Replacements r;
    for (int n = 1; n <= 8; ++n) {
        const QByteArray parent = "QOS_CLASS_" + QByteArray::number(n) + "_PARENT=";
        r.append({parent,
                  "#QOS_CLASS_" + QByteArray::number(n) + "_CAPTION='" + captions[n - 1] + "'\n" + parent});
    }
    return replaced(sample(), r);
}

// Classes 3 and 4 swap numbers, as when the editor writes the file again after their boxes
// swapped places: the filters and the default class follow the numbers.
QByteArray renumbered(const QByteArray& text)
{
    return replaced(text, {{"QOS_CLASS_3_", "QOS_CLASS_X_"},
                           {"QOS_CLASS_4_", "QOS_CLASS_3_"},
                           {"QOS_CLASS_X_", "QOS_CLASS_4_"},
                           {"QOS_FILTER_2_CLASS='4'", "QOS_FILTER_2_CLASS='3'"},
                           {"QOS_FILTER_3_CLASS='4'", "QOS_FILTER_3_CLASS='3'"},
                           {"QOS_INTERNET_DEFAULT_DOWN='3'", "QOS_INTERNET_DEFAULT_DOWN='4'"}});
}

} // namespace

class TestCliDiff : public QObject
{
    Q_OBJECT
private slots:
    void diff_data()
    {
        QTest::addColumn<QByteArray>("oldText");
        QTest::addColumn<QByteArray>("newText"); // empty: the new file does not exist
        QTest::addColumn<bool>("json");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("out");
        QTest::addColumn<QByteArray>("err"); // how standard error starts, "NEW" standing for the new file

        const QByteArray base = named();
        // clang-format off
        QTest::newRow("a class moved under another parent")
            << base << replaced(base, {{"QOS_CLASS_4_PARENT='1'", "QOS_CLASS_4_PARENT='3'"}})
            << false << 1 << QByteArray("Down: Haupt › Rest › Web: verschoben von Haupt › Web\n") << QByteArray();
        QTest::newRow("a filter's ports changed")
            << base << replaced(base, {{"QOS_FILTER_3_PORT='443'", "QOS_FILTER_3_PORT='443,8443'"}})
            << false << 1 << QByteArray("Down: Haupt › Web › Filter 2: Ports 443 → 443,8443\n") << QByteArray();
        QTest::newRow("only the numbers changed") << base << renumbered(base) << false << 0 << QByteArray() << QByteArray();
        // Without captions the reader names a class by its number, so the names change too.
        QTest::newRow("only the numbers changed, no captions")
            << sample() << renumbered(sample()) << false << 0 << QByteArray() << QByteArray();
        QTest::newRow("a common setting changed")
            << base << replaced(base, {{"QOS_INTERNET_BAND_UP='2400kbit'", "QOS_INTERNET_BAND_UP='3000kbit'"}})
            << false << 1 << QByteArray("Allgemein: Bandbreite Up 2400kbit → 3000kbit\n") << QByteArray();
        QTest::newRow("the default class is another one")
            << base << replaced(base, {{"QOS_INTERNET_DEFAULT_DOWN='3'", "QOS_INTERNET_DEFAULT_DOWN='4'"}})
            << false << 1 << QByteArray("Allgemein: Standardklasse Down Haupt › Rest → Haupt › Web\n") << QByteArray();
        QTest::newRow("a class renamed")
            << base << replaced(base, {{"CAPTION='Web'", "CAPTION='WWW'"}})
            << false << 1 << QByteArray("Down: Haupt › WWW: umbenannt von Web\n") << QByteArray();
        const QByteArray twoWebs = replaced(base, {{"CAPTION='Rest'", "CAPTION='Web'"}});
        QTest::newRow("siblings of one caption pair in order")
            << twoWebs << replaced(twoWebs, {{"CLASS_4_PRIO='2'", "CLASS_4_PRIO='1'"}})
            << false << 1 << QByteArray("Down: Haupt › Web [2]: Prio 2 → 1\n") << QByteArray();
        // "Web" is no longer unique: the class cannot be followed, and goes with its filters.
        QTest::newRow("a class of a shared caption moved")
            << twoWebs << replaced(twoWebs, {{"QOS_CLASS_4_PARENT='1'", "QOS_CLASS_4_PARENT='3'"}}) << false << 1
            << QByteArray("Down: Haupt › Web › Web: neu (Min 4000kbit, Max 16000kbit, Prio 2)\n"
                          "Down: Haupt › Web › Web › Filter 1: neu (Typ client, Ports 80)\n"
                          "Down: Haupt › Web › Web › Filter 2: neu (Typ client, Ports 443)\n"
                          "Down: Haupt › Web [2]: entfernt (Min 4000kbit, Max 16000kbit, Prio 2)\n"
                          "Down: Haupt › Web [2] › Filter 1: entfernt (Typ client, Ports 80)\n"
                          "Down: Haupt › Web [2] › Filter 2: entfernt (Typ client, Ports 443)\n")
            << QByteArray();
        QTest::newRow("two filters swapped places")
            << base << replaced(base, {{"QOS_FILTER_2_PORT='80'", "QOS_FILTER_2_PORT='443'"},
                                       {"QOS_FILTER_3_PORT='443'", "QOS_FILTER_3_PORT='80'"}})
            << false << 0 << QByteArray() << QByteArray();
        QTest::newRow("json")
            << base << replaced(base, {{"CLASS_4_MAXBANDWIDTH='16000kbit'", "CLASS_4_MAXBANDWIDTH='12Mbit'"}})
            << true << 1
            << QByteArray(R"({"common":[],"equal":false,"pages":{"down":[{"changes":[{"field":"max","new":"12Mbit",)"
                          R"("old":"16000kbit"}],"kind":"changed","object":"class","path":["Haupt","Web"]}],"up":[]}})")
            << QByteArray();
        QTest::newRow("an unreadable file") << base << QByteArray() << false << 2 << QByteArray()
            << QByteArray("Fehler: Die Datei \"NEW\" kann nicht gelesen werden");
        QTest::newRow("an import that stopped early names its file")
            << base << replaced(base, {{"QOS_FILTER_5_CLASS='8'", "QOS_FILTER_5_CLASS='99'"}})
            << false << 1 << QByteArray("Up: Haupt › Ack › Filter 1: entfernt (Option ACK)\n")
            << QByteArray("NEW: Die Datei wurde nicht vollständig gelesen");
        // clang-format on
    }

    void diff()
    {
        QFETCH(QByteArray, oldText);
        QFETCH(QByteArray, newText);
        QFETCH(bool, json);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, out);
        QFETCH(QByteArray, err);

        QTemporaryDir dir;
        const QString oldPath = dir.filePath(QStringLiteral("alt.qos.txt"));
        const QString newPath = dir.filePath(QStringLiteral("neu.qos.txt"));
        for (const auto& [path, text] : {std::pair{oldPath, oldText}, {newPath, newText}}) {
            QFile f(path);
            if (!text.isEmpty() && !(f.open(QIODevice::WriteOnly) && f.write(text) == text.size()))
                qFatal("cannot write %s", qPrintable(path));
        }
        QStringList args{QStringLiteral("diff"), oldPath, newPath};
        if (json)
            args.append(QStringLiteral("--json"));
        QProcess p;
        p.start(QStringLiteral(TARNWICK_CLI), args);
        QVERIFY(p.waitForFinished(60000));
        QByteArray stdOut = p.readAllStandardOutput();
        const QByteArray stdErr = p.readAllStandardError();
        if (json)
            stdOut = QJsonDocument::fromJson(stdOut).toJson(QJsonDocument::Compact);
        QCOMPARE(stdOut, out);
        QVERIFY2(stdErr.startsWith(err.replace("NEW", newPath.toUtf8())), stdErr.constData());
        QCOMPARE(p.exitCode(), exitCode);
    }

    void wrongCall_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("one file") << QStringList{QStringLiteral("diff"), QStringLiteral("a")};
        QTest::newRow("three files") << QStringList{QStringLiteral("diff"), QStringLiteral("a"),
                                                    QStringLiteral("b"), QStringLiteral("c")};
    }

    void wrongCall()
    {
        QFETCH(QStringList, args);
        QProcess p;
        p.start(QStringLiteral(TARNWICK_CLI), args);
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 2);
        QVERIFY(p.readAllStandardOutput().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestCliDiff)
#include "tst_clidiff.moc"
