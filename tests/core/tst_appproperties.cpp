#include "app/appproperties.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qoscommon.h"
#include "pagescript.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

// config.ini: what a save writes and in which order, and that no missing or broken value can
// stop the start.
class TestAppProperties : public QObject
{
    Q_OBJECT

    const QList<QRect> screens{QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)};

    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }

    static QByteArray read(const QString& path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void saveWritesInOrder()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("sub/config.ini")); // the folder is made
        Document doc;
        AppProperties props(doc, path);
        props.Load(screens);
        qint32 cols = 9, rows = 7;
        doc.Up1()->SetGridDimensions(cols, rows);
        doc.Common1()->SetQoSInternetBandDown(QStringLiteral("2Mbit"));
        WindowSettings w;
        w.normalGeometry = QRect(10, 20, 800, 600);
        w.windowState = WindowSettings::Maximized;
        w.calculator = false;
        QVERIFY(props.Save(w, {QStringLiteral("/srv/a-qos.txt"), QStringLiteral("/srv/b-qos.txt")}));
        const QString expected = QStringLiteral(
            "[Down]\nCols=6\nRows=5\n[Up]\nCols=9\nRows=7\n"
            "[Common]\nQoSInternetBandDown=2Mbit\nQoSInternetBandUp=128kbit\nQoSInternetDev=ppp0\n"
            "QoSLocalBand=10mbit\nQoSLocalNetDev=eth0\nQoSVersion=v0.3\n"
            "[MainWindow]\nWindowState=2\nLeft=150\nTop=300\nWidth=12000\nHeight=9000\nCalculator="
            "0\nProblems=0\n"
            "[RecentFiles]\nFile1=/srv/a-qos.txt\nFile2=/srv/b-qos.txt");
        QCOMPARE(QString::fromUtf8(read(path)).split(u'\n', Qt::SkipEmptyParts).join(u'\n'), expected);

        // Read back, the recent files come in their order; the other values are read as the
        // hand-written files below are.
        Document again;
        AppProperties reread(again, path);
        reread.Load(screens);
        QCOMPARE(reread.RecentFiles(), (QStringList{"/srv/a-qos.txt", "/srv/b-qos.txt"}));
    }

    // Nothing in the file stops the start: a missing or broken value takes its default, and the
    // window comes back onto a screen. The default window is two thirds of the primary screen.
    void brokenValuesTakeDefaults_data()
    {
        QTest::addColumn<QByteArray>("ini");
        QTest::addColumn<QString>("sizes"); // of the down and the up page
        QTest::addColumn<QRect>("geometry");
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("calculator");
        const QRect def(0, 0, 1280, 720);
        const QString sizes = QStringLiteral("6x5 6x5");
        // clang-format off
        QTest::newRow("no file") << QByteArray() << sizes << def << 0 << true;
        QTest::newRow("no numbers") << QByteArray("[Down]\nCols=abc\nRows=\n[MainWindow]\nLeft=links\nWindowState=max\nCalculator=ja\n") << sizes << def << 0 << true;
        QTest::newRow("keys and sections in any case") << QByteArray("[down]\ncols=8\nROWS=9\n[UP]\nCols=7\n[mainwindow]\nwindowstate=2\ncalculator=0\n") << "8x9 7x5" << def << 2 << false;
        QTest::newRow("state out of range") << QByteArray("[MainWindow]\nWindowState=7\n") << sizes << def << 0 << true;
        QTest::newRow("binary garbage") << QByteArray("\x00\xff[\x01=\n==\n[MainWindow\nTop=3", 26) << sizes << def << 0 << true;
        QTest::newRow("window far off every screen") << QByteArray("[MainWindow]\nLeft=-300000\nTop=900000\nWidth=12000\nHeight=9000\n") << sizes << QRect(0, 480, 800, 600) << 0 << true;
        QTest::newRow("window larger than any screen") << QByteArray("[MainWindow]\nLeft=-900000\nTop=0\nWidth=90000000\nHeight=90000000\n") << sizes << QRect(0, 0, 1920, 1080) << 0 << true;
        QTest::newRow("window on the second screen stays") << QByteArray("[MainWindow]\nLeft=30000\nTop=1500\nWidth=12000\nHeight=9000\n") << sizes << QRect(2000, 100, 800, 600) << 0 << true;
        // clang-format on
    }
    void brokenValuesTakeDefaults()
    {
        QFETCH(QByteArray, ini);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("config.ini"));
        if (!ini.isNull())
            write(path, ini);
        Document doc;
        AppProperties props(doc, path);
        const WindowSettings w = props.Load(screens);
        QTEST(PageScript::size(doc.Down1()) + u' ' + PageScript::size(doc.Up1()), "sizes");
        QTEST(w.normalGeometry, "geometry");
        QTEST(w.windowState, "state");
        QTEST(w.calculator, "calculator");
    }

    // The window's place is kept in twips, 15 to a pixel; a hand-written value between two
    // pixels goes to the nearer one, and a half to the one away from zero.
    void twipsBetweenPixels_data()
    {
        QTest::addColumn<QByteArray>("ini");
        QTest::addColumn<QRect>("geometry");
        // clang-format off
        QTest::newRow("whole pixels") << QByteArray("Left=150\nTop=300\nWidth=12000\nHeight=9000") << QRect(10, 20, 800, 600);
        QTest::newRow("nearer the pixel above") << QByteArray("Left=1000\nTop=8\nWidth=12008\nHeight=1000") << QRect(67, 1, 801, 67);
        QTest::newRow("nearer the pixel below") << QByteArray("Left=1007\nTop=7\nWidth=12007\nHeight=9007") << QRect(67, 0, 800, 600);
        QTest::newRow("halves") << QByteArray("Left=22.5\nTop=37.5\nWidth=12007.5\nHeight=9022.5") << QRect(2, 3, 801, 602);
        // clang-format on
    }
    void twipsBetweenPixels()
    {
        QFETCH(QByteArray, ini);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("config.ini"));
        write(path, "[MainWindow]\n" + ini + "\n");
        Document doc;
        AppProperties props(doc, path);
        QTEST(props.Load(screens).normalGeometry, "geometry");
    }

    void unknownKeysSurviveASave()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("config.ini"));
        write(path, "[Later]\nColour=blue\n[Common]\nQoSInternetDev=dsl0\nHint=keep me\n");
        Document doc;
        AppProperties props(doc, path);
        props.Load(screens);
        QCOMPARE(doc.Common1()->QoSInternetDev(), QStringLiteral("dsl0"));
        QVERIFY(props.Save(WindowSettings{QRect(0, 0, 640, 480)}, {}));
        const QByteArray bytes = read(path);
        QVERIFY(bytes.startsWith("[Later]\nColour=blue\n"));
        QVERIFY(bytes.contains("Hint=keep me"));
    }

    void longValueIsCut()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("config.ini"));
        write(path, "[Common]\nQoSInternetDev=" + QByteArray(20000, 'e') + "\n");
        Document doc;
        AppProperties(doc, path).Load(screens);
        QCOMPARE(doc.Common1()->QoSInternetDev().size(), 16383);
    }
};

QTEST_GUILESS_MAIN(TestAppProperties)
#include "tst_appproperties.moc"
