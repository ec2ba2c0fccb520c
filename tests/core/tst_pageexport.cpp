#include "app/pageexport.h"
#include "app/sheetlayout.h"
#include "base/scriptedprompt.h"
#include "model/document.h"
#include "model/objectpage.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// What "Seite exportieren" decides (the format, the name, what a failure leaves behind) and
// how a printed page is spread over sheets.
class TestPageExport : public QObject
{
    Q_OBJECT

    static QByteArray read(const QString& path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    }

private slots:
    void formatOf_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<PageExport::Format>("format");
        QTest::newRow("svg") << "/tmp/page.svg" << PageExport::Format::Svg;
        QTest::newRow("ending in capitals") << "PAGE.PNG" << PageExport::Format::Png;
        QTest::newRow("only the last ending counts") << "page.svg.png" << PageExport::Format::Png;
        QTest::newRow("a folder named like a picture") << "/tmp/x.svg/page" << PageExport::Format::Unknown;
    }
    void formatOf()
    {
        QFETCH(QString, name);
        QFETCH(PageExport::Format, format);
        QCOMPARE(PageExport::FormatOf(name), format);
    }

    void initialName_data()
    {
        QTest::addColumn<QString>("currentFile");
        QTest::addColumn<bool>("up");
        QTest::addColumn<QString>("name");
        QTest::newRow("no file yet") << "" << false << "qos-down.svg";
        QTest::newRow("a router file, up") << "/data/home.qos.txt" << true << "/data/home-up.svg";
        QTest::newRow("a name without the usual ending")
            << "/data/router.conf" << false << "/data/router.conf-down.svg";
    }
    void initialName()
    {
        QFETCH(QString, currentFile);
        QFETCH(bool, up);
        QFETCH(QString, name);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        QCOMPARE(PageExport::InitialName(currentFile, up ? doc.Up1() : doc.Down1()), name);
    }

    void run_data()
    {
        QTest::addColumn<QString>("answer");   // "" cancels the dialog
        QTest::addColumn<QByteArray>("drawn"); // what the drawing gives; "" fails
        QTest::addColumn<bool>("written");
        QTest::addColumn<QString>("message"); // a part of the one message, "" for none
        QTest::addColumn<QString>("status");
        // clang-format off
        QTest::newRow("cancelled") << "" << QByteArray("<svg/>") << false << "" << "Seite exportieren abgebrochen.";
        QTest::newRow("svg written") << "page.svg" << QByteArray("<svg/>") << true << "" << "Seite exportiert: ";
        QTest::newRow("unknown ending") << "page.jpg" << QByteArray("x") << false << "page.jpg\" endet weder auf .svg"
                                        << "Seite nicht exportiert.";
        QTest::newRow("the picture cannot be drawn") << "page.png" << QByteArray() << false
                                                     << "page.png\" exportiert. zu groß" << "Seite nicht exportiert.";
        QTest::newRow("no such folder") << "gone/page.svg" << QByteArray("<svg/>") << false
                                        << "page.svg\" exportiert. Den Ordner" << "Seite nicht exportiert.";
        // clang-format on
    }
    void run()
    {
        QFETCH(QString, answer);
        QFETCH(QByteArray, drawn);
        QFETCH(bool, written);
        QFETCH(QString, message);
        QFETCH(QString, status);
        QTemporaryDir dir;
        ScriptedPrompt prompt;
        RecordingStatus line;
        Document doc(&prompt);
        doc.setStatusLine(&line);
        const QString path = dir.filePath(answer);
        // An older picture of that name stays unless a new one was written whole.
        QFile old(dir.filePath(QStringLiteral("page.png")));
        QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
        old.close();
        prompt.fileNames << (answer.isEmpty() ? std::nullopt : std::optional<QString>(path));
        QList<PageExport::Format> asked;
        const bool done =
            PageExport::Run(doc, doc.Down1(), QString(), [&](PageExport::Format format, QString* reason) {
                asked << format;
                *reason = QStringLiteral("zu groß");
                return drawn;
            });
        QCOMPARE(done, written);
        QCOMPARE(prompt.log.first().kind, QStringLiteral("save"));
        const QStringList messages = prompt.messages();
        QCOMPARE(messages.size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty())
            QVERIFY2(messages.first().contains(message), qPrintable(messages.first()));
        QVERIFY2(line.statusTexts.last().startsWith(status), qPrintable(line.statusTexts.last()));
        // The picture is drawn only for a name it can be written under, in the name's format.
        const PageExport::Format format = PageExport::FormatOf(answer);
        QCOMPARE(asked, answer.isEmpty() || format == PageExport::Format::Unknown
                            ? QList<PageExport::Format>{}
                            : QList<PageExport::Format>{format});
        if (written)
            QCOMPARE(read(path), drawn);
        QCOMPARE(read(dir.filePath(QStringLiteral("page.png"))), QByteArray("old"));
    }

    void sheets_data()
    {
        QTest::addColumn<QSize>("page");
        QTest::addColumn<QSizeF>("sheet"); // at 300 dpi
        QTest::addColumn<double>("share"); // of the page's size on screen
        QTest::addColumn<int>("columns");
        QTest::addColumn<int>("rows");
        // At 300 dpi a page pixel is 3.125 dots.
        QTest::newRow("fits at its size") << QSize(600, 400) << QSizeF(2000, 3000) << 1.0 << 1 << 1;
        QTest::newRow("shrunk to fit exactly, no second sheet")
            << QSize(755, 100) << QSizeF(2000, 3000) << 2000 / 3.125 / 755 << 1 << 1;
        QTest::newRow("wide: tiled across at the readable share")
            << QSize(236385, 856) << QSizeF(3300, 2300) << 0.6 << 135 << 1;
        QTest::newRow("large both ways") << QSize(5000, 5000) << QSizeF(2000, 3000) << 0.6 << 5 << 4;
    }
    void sheets()
    {
        QFETCH(QSize, page);
        QFETCH(QSizeF, sheet);
        QFETCH(double, share);
        QFETCH(int, columns);
        QFETCH(int, rows);
        const SheetLayout layout = SheetLayout::For(page, sheet, 300);
        QVERIFY2(qAbs(layout.scale() - share * 3.125) < 1e-6, qPrintable(QString::number(layout.scale())));
        QCOMPARE(layout.columns(), columns);
        QCOMPARE(layout.rows(), rows);
        // The sheets cover the page once: no gap, no overlap, each within the paper.
        qint64 covered = 0;
        QRect all;
        for (int i = 0; i < layout.count(); ++i) {
            const QRect a = layout.area(i);
            QVERIFY(!a.isEmpty());
            QVERIFY(a.width() * layout.scale() <= sheet.width() + 1e-6);
            QVERIFY(a.height() * layout.scale() <= sheet.height() + 1e-6);
            for (int j = 0; j < i; ++j)
                QVERIFY(!a.intersects(layout.area(j)));
            covered += qint64(a.width()) * a.height();
            all |= a;
        }
        QCOMPARE(all, QRect(QPoint(), page));
        QCOMPARE(covered, qint64(page.width()) * page.height());
        // Across first, then down.
        if (layout.count() > 1)
            QCOMPARE(layout.area(1).top(), columns > 1 ? 0 : layout.area(0).bottom() + 1);
    }

    // The printer's header with a file is checked where a page is printed.
    void headerOfANewFile()
    {
        QCOMPARE(SheetLayout::Header(QString(), QStringLiteral("up"), 1, 7),
                 QStringLiteral("Unbenannt – Up – Blatt 2 von 7"));
    }
};

QTEST_GUILESS_MAIN(TestPageExport)
#include "tst_pageexport.moc"
