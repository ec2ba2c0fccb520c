#include "base/scriptedprompt.h"
#include "base/version.h"
#include "file/qosreader.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosobject.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

namespace {

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

Run run(const QString& program, const QStringList& args, const QProcessEnvironment& env)
{
    QProcess p;
    p.setProcessEnvironment(env);
    p.start(program, args);
    if (!p.waitForFinished(60000))
        qFatal("%s did not finish", qPrintable(program));
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

QString sample(const char* name)
{
    return QStringLiteral(TARNWICK_SAMPLES "/") + QString::fromLatin1(name);
}

} // namespace

// tarnwick-cli render to SVG, and the version both programs print, without a display.
class TestCliRender : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    // Neither program may need a display for these.
    static QProcessEnvironment noDisplay()
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        return env;
    }

private slots:
    void render_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("picture");
        QTest::addColumn<QString>("direction");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("error");
        QTest::newRow("down page as SVG") << sample("home-router.qos.txt") << "page.svg"
                                          << "down" << 0 << "";
        QTest::newRow("up page, ending in capitals") << sample("upstream-only.qos.txt") << "PAGE.SVG"
                                                     << "up" << 0 << "";
        QTest::newRow("neither SVG nor PNG") << sample("home-router.qos.txt") << "page.jpg"
                                             << "down" << 2 << "weder auf .svg noch auf .png";
    }
    void render()
    {
        QFETCH(QString, file);
        QFETCH(QString, picture);
        QFETCH(QString, direction);
        QFETCH(int, exitCode);
        QFETCH(QString, error);
        const QString out = m_dir.filePath(picture);
        const Run r =
            run(QStringLiteral(TARNWICK_CLI), {QStringLiteral("render"), file, out, direction}, noDisplay());
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY2(r.err.contains(error), qPrintable(r.err));
        QFile svg(out);
        QCOMPARE(svg.exists(), exitCode == 0);
        if (exitCode != 0)
            return;
        QVERIFY(svg.open(QIODevice::ReadOnly));
        QStringList texts;
        QXmlStreamReader xml(&svg);
        while (!xml.atEnd())
            if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"text")
                texts << xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        // Every caption of the page, as the editor reads the file, is in the picture as text.
        ScriptedPrompt prompt;
        Document doc(&prompt);
        ImportQoSText(doc, file);
        const ObjectPage* page = direction == u"up" ? doc.Up1() : doc.Down1();
        QVERIFY(!page->ContainedObjects().isEmpty());
        for (const QoSObject* o : page->ContainedObjects())
            QVERIFY2(o->Caption().isEmpty() || texts.contains(o->Caption()), qPrintable(o->Caption()));
    }

    void bothProgramsPrintTheVersion_data()
    {
        QTest::addColumn<QString>("program");
        QTest::newRow("tarnwick-cli") << "tarnwick-cli";
        QTest::newRow("tarnwick") << "tarnwick";
    }
    void bothProgramsPrintTheVersion()
    {
        QFETCH(QString, program);
        const QString path = QFileInfo(QStringLiteral(TARNWICK_CLI)).dir().filePath(program);
        const Run r = run(path, {QStringLiteral("--version")}, noDisplay());
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out.trimmed(), program + u' ' + TarnwickVersion());
    }
};

QTEST_GUILESS_MAIN(TestCliRender)
#include "tst_clirender.moc"
