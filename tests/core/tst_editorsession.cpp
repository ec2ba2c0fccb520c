#include "app/editorsession.h"
#include "base/scriptedprompt.h"
#include "file/qoswriter.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"
#include "model/qosfilter.h"
#include "pagescript.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

// The decisions behind the main window's file commands and page tools: questions, status
// texts, what a failed or cancelled step leaves behind, and the recent files.
class TestEditorSession : public QObject
{
    Q_OBJECT

    struct Fixture
    {
        ScriptedPrompt prompt;
        RecordingStatus status;
        Document doc{&prompt};
        EditorSession session{doc};
        QTemporaryDir dir;

        Fixture() { doc.setStatusLine(&status); }
        QString path(const QString& name) const { return dir.filePath(name); }
        QStringList asked() const
        {
            QStringList out;
            for (const auto& e : prompt.log)
                if (e.kind != u"message")
                    out << e.kind;
            return out;
        }
    };

    static QByteArray read(const QString& path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    static QByteArray twoClassFile()
    {
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C C"));
        return ExportQoSBytes(doc);
    }

    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }

private slots:
    // Nothing is thrown away: a command stops when its save question is cancelled, or answered
    // "Ja" and the save does not happen; Open clears only once a file was chosen and read.
    void questionsAndDialogs_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("modified");
        QTest::addColumn<int>("answer");     // to the save question
        QTest::addColumn<QString>("chosen"); // in the first file dialog: "" cancels it, "dir" names a folder
        QTest::addColumn<QStringList>("asked");
        QTest::addColumn<QString>("status");
        QTest::addColumn<int>("objectsLeft");
        QTest::addColumn<bool>("done"); // what the command returns
        const int yes = int(UserPrompt::Answer::Yes), no = int(UserPrompt::Answer::No),
                  cancel = int(UserPrompt::Answer::Cancel);
        const QStringList question{"yesnocancel"};
        const QStringList questionSave{"yesnocancel", "save"};
        const QStringList questionOpen{"yesnocancel", "open"};
        // clang-format off
        QTest::newRow("open: cancel at the question opens no dialog") << "open" << true << cancel << "" << question << "" << 2 << false;
        QTest::newRow("open: no, then cancel in the dialog keeps the document") << "open" << true << no << "" << questionOpen << "Datei öffnen abgebrochen." << 2 << false;
        QTest::newRow("open: no, then a folder chosen keeps the document") << "open" << true << no << "dir" << questionOpen << "Datei nicht geöffnet." << 2 << false;
        QTest::newRow("open: yes, saved, then cancel in the dialog") << "open" << true << yes << "qos.txt" << QStringList{"yesnocancel", "save", "open"} << "Datei gespeichert." << 2 << false;
        QTest::newRow("new: yes, then cancel in the save dialog") << "new" << true << yes << "" << questionSave << "Datei speichern unter abgebrochen." << 2 << false;
        QTest::newRow("new: yes, saved, then cleared") << "new" << true << yes << "qos.txt" << questionSave << "Datei gespeichert." << 0 << true;
        QTest::newRow("new: no clears") << "new" << true << no << "" << question << "Neue Konfiguration begonnen." << 0 << true;
        QTest::newRow("new: unmodified asks nothing") << "new" << false << 0 << "" << QStringList{} << "Neue Konfiguration begonnen." << 0 << true;
        QTest::newRow("save as: cancel in the dialog") << "save" << true << 0 << "" << QStringList{"save"} << "Datei speichern unter abgebrochen." << 2 << false;
        QTest::newRow("close: unmodified closes without asking") << "close" << false << 0 << "" << QStringList{} << "" << 2 << true;
        QTest::newRow("close: yes, save failed, stays open") << "close" << true << yes << "dir" << questionSave << "Datei nicht gespeichert." << 2 << false;
        // clang-format on
    }
    void questionsAndDialogs()
    {
        QFETCH(QString, command);
        QFETCH(bool, modified);
        QFETCH(int, answer);
        QFETCH(QString, chosen);
        Fixture f;
        PageScript::run(f.doc.Down1(), QStringLiteral("C F1"));
        f.doc.SetModified(modified);
        f.prompt.yesNoCancel << UserPrompt::Answer(answer);
        if (chosen == u"dir")
            f.prompt.fileNames << f.dir.path();
        else if (!chosen.isEmpty())
            f.prompt.fileNames << f.path(chosen);
        f.prompt.fileNames << std::nullopt; // the open dialog, if it comes, is cancelled
        bool done = false;
        if (command == u"open")
            done = f.session.Open();
        else if (command == u"new")
            done = f.session.New();
        else if (command == u"close")
            done = f.session.QueryClose();
        else
            done = f.session.SaveAs();
        QTEST(done, "done");
        QTEST(f.asked(), "asked");
        QTEST(f.status.statusTexts.value(0), "status");
        QTEST(int(f.doc.Objects().size()), "objectsLeft");
        if (f.doc.Objects().size() == 2 && chosen != u"qos.txt")
            QCOMPARE(f.doc.IsModified(), modified); // nothing happened: the mark stays as well
    }

    void saveWritesAndRemembers()
    {
        Fixture f;
        QSignalSpy fileSpy(&f.session, &EditorSession::currentFileChanged);
        const QString target = f.path(QStringLiteral("qos.txt"));
        write(target, QByteArray(20000, 'x')); // an older, longer file: nothing of it may remain
        PageScript::run(f.doc.Down1(), QStringLiteral("C S1 F2"));
        f.prompt.fileNames << target;
        QVERIFY(f.session.SaveAs());
        QVERIFY(!read(target).contains("xxx"));
        QVERIFY(!f.doc.IsModified());
        QCOMPARE(f.session.CurrentFile(), target);
        QCOMPARE(fileSpy.count(), 1);
        QCOMPARE(f.session.InitialSaveName(), target); // the next save starts at the same file
        QCOMPARE(f.session.RecentFiles(), QStringList{target});
        QCOMPARE(QDir(f.dir.path()).entryList(QDir::Files), QStringList{"qos.txt"}); // no temporary left
        // The status line says so only until the document changes again.
        QCOMPARE(f.doc.StatusText(), QStringLiteral("Datei gespeichert."));
        PageScript::cls(f.doc, 1)->SetCaption(QStringLiteral("Büro"));
        QCOMPARE(f.doc.StatusText(), QString());
    }

    // A save that fails leaves the file it would have replaced byte for byte, the document
    // modified and no temporary file behind.
    void failedSaveKeepsOldFileAndMark_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("kept"); // the old file that must survive
        QTest::addColumn<QString>("reason");
        QTest::addColumn<bool>("writerFails");
        // clang-format off
        QTest::newRow("a folder in place of the file") << "folder" << "folder/qos.txt" << "Ordner" << false;
        QTest::newRow("a folder that does not exist") << "missing/qos.txt" << "qos.txt" << "gibt es nicht" << false;
        QTest::newRow("a read-only folder") << "locked/qos.txt" << "locked/qos.txt" << "nicht geschrieben" << false;
        QTest::newRow("the writer fails") << "qos.txt" << "qos.txt" << "Bei der Erstellung sind Fehler aufgetreten!" << true;
        // clang-format on
    }
    void failedSaveKeepsOldFileAndMark()
    {
        QFETCH(QString, target);
        QFETCH(QString, kept);
        QFETCH(QString, reason);
        QFETCH(bool, writerFails);
        Fixture f;
        const QByteArray old("old contents");
        for (const char* folder : {"folder", "locked"}) {
            QDir(f.dir.path()).mkdir(QString::fromLatin1(folder));
            write(f.path(QString::fromLatin1(folder) + QStringLiteral("/qos.txt")), old);
        }
        write(f.path(QStringLiteral("qos.txt")), old);
        const QString locked = f.path(QStringLiteral("locked"));
        QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner);
        const auto unlock = qScopeGuard(
            [&] { QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner); });
        if (target.startsWith(u"locked") && QFileInfo(locked).isWritable())
            QSKIP("This user writes into a read-only folder all the same.");
        PageScript::run(f.doc.Down1(), QStringLiteral("C F1"));
        if (writerFails)
            // More entries than one filter may stand for.
            PageScript::flt(f.doc, 1)->SetQoSPort(QStringLiteral("1-100000"));
        f.prompt.fileNames << f.path(target);
        QVERIFY(!f.session.SaveAs());
        QVERIFY(f.doc.IsModified());
        QVERIFY(f.session.CanSave());
        QCOMPARE(f.prompt.messages().size(), 1);
        QVERIFY2(f.prompt.messages().first().contains(reason), qPrintable(f.prompt.messages().first()));
        QCOMPARE(f.prompt.log.last().icon, UserPrompt::Icon::Critical);
        QCOMPARE(read(f.path(kept)), old);
        QCOMPARE(f.session.CurrentFile(), QString());
        QCOMPARE(f.doc.StatusText(), QStringLiteral("Datei nicht gespeichert."));
        for (const QString& folder : {f.dir.path(), f.path(QStringLiteral("folder")), locked})
            QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(),
                     folder == f.dir.path() ? 3 : 1);
    }

    // A file read only in part is said once, as a warning; the document is the file's all the same.
    void aFileReadInPartIsSaidOnce()
    {
        Fixture f;
        const QString path = f.path(QStringLiteral("router-qos.txt"));
        write(path, twoClassFile().replace("#QOS_CLASS_2_CELLPOS='1,0'", "#QOS_CLASS_2_CELLPOS='1,5'"));
        f.doc.Common1()->SetQoSInternetDev(QStringLiteral("dsl0")); // a change before: the mark is set
        f.prompt.yesNoCancel << UserPrompt::Answer::No;
        f.prompt.fileNames << path;
        QVERIFY(!f.session.Open());
        QCOMPARE(f.doc.Down1()->ClassCount(), 1);
        QVERIFY(!f.doc.IsModified());
        QCOMPARE(f.session.CurrentFile(), path);
        QCOMPARE(f.prompt.messages().size(), 1);
        QVERIFY2(f.prompt.messages().first().contains(QStringLiteral("Klasse 2 nicht angelegt")),
                 qPrintable(f.prompt.messages().first()));
        QCOMPARE(f.prompt.log.last().icon, UserPrompt::Icon::Warning);
        QCOMPARE(f.doc.StatusText(), QStringLiteral("Datei unvollständig gelesen."));
    }

    void recentFiles()
    {
        Fixture f;
        QStringList paths;
        for (int i = 0; i < 8; ++i) {
            paths << f.path(QStringLiteral("%1-qos.txt").arg(i));
            write(paths.last(), twoClassFile());
        }
        for (const QString& p : paths)
            QVERIFY(f.session.OpenFile(p));
        QVERIFY(f.session.OpenFile(paths.at(5))); // opened again: back to the front, once
        QVERIFY(f.prompt.log.isEmpty());
        QCOMPARE(f.doc.StatusText(), QStringLiteral("Datei geöffnet."));
        QCOMPARE(f.session.CurrentFile(), paths[5]);
        QCOMPARE(f.session.RecentFiles(),
                 (QStringList{paths[5], paths[7], paths[6], paths[4], paths[3], paths[2]}));
        QCOMPARE(f.session.InitialOpenName(), f.path(QStringLiteral("*qos.txt")));

        QFile::remove(paths[7]);
        QVERIFY(!f.session.OpenFile(paths[7])); // gone: said so, and no longer offered
        QVERIFY(f.prompt.messages().last().contains(QStringLiteral("kann nicht gelesen werden")));
        QVERIFY(!f.session.RecentFiles().contains(paths[7]));
    }

    // Writing renumbers the boxes but changes nothing a user wrote; a refusal names its reason.
    void generate()
    {
        Fixture f;
        PageScript::run(f.doc.Down1(), QStringLiteral("C F1"));
        f.doc.SetModified(false);
        QString clipboard;
        const auto toClipboard = [&](const QString& t) { clipboard = t; };
        QVERIFY(f.session.Generate(toClipboard));
        QVERIFY(clipboard.contains(QStringLiteral("QOS_FILTER_N='1'")));
        QCOMPARE(f.prompt.messages(),
                 QStringList{QStringLiteral("Konfiguration generiert und in die Zwischenablage eingefügt.")});
        QVERIFY(!f.doc.IsModified());

        PageScript::flt(f.doc, 1)->SetQoSPort(QStringLiteral("1-100000"));
        clipboard.clear();
        QVERIFY(!f.session.Generate(toClipboard));
        QVERIFY(clipboard.isEmpty());
        QVERIFY(f.prompt.messages().last().startsWith(
            QStringLiteral("Bei der Erstellung sind Fehler aufgetreten!\n\n")));
        QVERIFY(f.prompt.messages().last().contains(QStringLiteral("1-100000")));
        QVERIFY(f.doc.IsModified()); // set by the edit above, and left so
    }

    // Which page tools can act, by the page shown and its selection; each command acts exactly
    // when its query allows it. The page holds a main class 1 with the sub classes 2 (empty)
    // and 3 (with filter 1); "class" selects class 2, "connector" the line above it.
    void toolQueries_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("selection");
        QTest::addColumn<QString>("allowed");
        const QString onAnyPage = QStringLiteral("main size calc choose");
        const QString onClass = QStringLiteral("main sub filter delete default size calc choose");
        const QString onFilter = QStringLiteral("main delete size calc choose");
        for (const char* page : {"none", "down", "up"}) {
            const bool none = qstrcmp(page, "none") == 0;
            // clang-format off
            QTest::addRow("%s, nothing selected", page) << page << "none" << (none ? QString() : onAnyPage);
            QTest::addRow("%s, a class selected", page) << page << "class" << (none ? QString() : onClass);
            QTest::addRow("%s, a filter selected", page) << page << "filter" << (none ? QString() : onFilter);
            QTest::addRow("%s, a connector selected", page) << page << "connector" << (none ? QString() : onAnyPage);
            // clang-format on
        }
    }
    void toolQueries()
    {
        QFETCH(QString, page);
        QFETCH(QString, selection);
        QFETCH(QString, allowed);
        // A fresh document for every command, so that one command does not change the next one's case.
        const auto prepare = [&](Fixture& f) -> ObjectPage* {
            ObjectPage* tree = page == u"up" ? f.doc.Up1() : f.doc.Down1();
            PageScript::run(tree, QStringLiteral("C S1 S1 F3"));
            QoSClass* empty = PageScript::cls(f.doc, 2);
            if (selection == u"class")
                empty->SetSelected(true);
            else if (selection == u"filter")
                PageScript::flt(f.doc, 1)->SetSelected(true);
            else if (selection == u"connector")
                empty->LineTop()->SetSelected(true);
            else
                tree->SetSelectedObject(nullptr);
            return page == u"none" ? nullptr : tree; // none: the common page is shown
        };
        Fixture f;
        const ObjectPage* shown = prepare(f);
        const EditorSession& s = f.session;
        const std::pair<const char*, bool> queries[] = {
            {"main", s.CanNewMainClass(shown)},        {"sub", s.CanNewSubClass(shown)},
            {"filter", s.CanNewFilter(shown)},         {"delete", s.CanDeleteObject(shown)},
            {"default", s.CanMakeDefaultClass(shown)}, {"size", s.CanChangePageSize(shown)},
            {"calc", s.CanShowCalculator(shown)},      {"choose", s.CanChooseNewObject(shown)}};
        QStringList can;
        for (const auto& [name, yes] : queries)
            if (yes)
                can << QString::fromLatin1(name);
        QCOMPARE(can.join(u' '), allowed);

        const std::pair<const char*, std::function<bool(EditorSession&, ObjectPage*)>> commands[] = {
            {"main", [](EditorSession& e, ObjectPage* p) { return e.NewMainClass(p) != nullptr; }},
            {"sub", [](EditorSession& e, ObjectPage* p) { return e.NewSubClass(p) != nullptr; }},
            {"filter", [](EditorSession& e, ObjectPage* p) { return e.NewFilter(p) != nullptr; }},
            {"delete", [](EditorSession& e, ObjectPage* p) { return e.DeleteObject(p); }},
            {"default", [](EditorSession& e, ObjectPage* p) { return e.MakeDefaultClass(p); }}};
        for (const auto& [name, command] : commands) {
            Fixture fresh;
            ObjectPage* target = prepare(fresh);
            const int objects = int(fresh.doc.Objects().size());
            const bool acted = command(fresh.session, target);
            QVERIFY2(acted == allowed.split(u' ').contains(QString::fromLatin1(name)), name);
            if (!acted)
                QCOMPARE(int(fresh.doc.Objects().size()), objects);
            QVERIFY(fresh.prompt.messages().isEmpty()); // nothing refused with a message here
        }
    }

    // A new main class is selected, and stays so while sub classes are added under it; a
    // filter goes under the selected class.
    void pageToolsFollowTheSelection()
    {
        Fixture f;
        ObjectPage* up = f.doc.Up1();
        QoSClass* main = f.session.NewMainClass(up);
        QVERIFY(main);
        QCOMPARE(up->SelectedClass(), main);

        QoSClass* sub = f.session.NewSubClass(up);
        QVERIFY(sub);
        QCOMPARE(sub->ParentQoSObject(), main);
        QCOMPARE(up->SelectedClass(), main); // the parent stays selected for the next one
        sub->SetSelected(true);
        QoSFilter* filter = f.session.NewFilter(up);
        QVERIFY(filter);
        QCOMPARE(filter->ParentQoSObject(), sub);
        QVERIFY(f.session.MakeDefaultClass(up));
        QCOMPARE(f.doc.Common1()->QoSInternetDefaultUp(), QString::number(sub->ClassIdx()));
    }

    void commonEditsMarkAndRevalidate()
    {
        Fixture f;
        QoSClass* c = f.doc.Down1()->AddClass(QStringLiteral("0"), {.minBandwidth = QStringLiteral("500kbit"),
                                                                    .maxBandwidth = QStringLiteral("500kbit"),
                                                                    .direction = QStringLiteral("down"),
                                                                    .prio = QStringLiteral("0")});
        c->Validate(true);
        QVERIFY(c->MinField()->IsValid());
        f.doc.SetModified(false);
        f.doc.Common1()->SetQoSInternetBandDown(QStringLiteral("400kbit"));
        QVERIFY(f.doc.IsModified());
        QVERIFY(!c->MinField()->IsValid()); // 500 no longer fits the line
        f.doc.SetModified(false);
        f.doc.Common1()->SetQoSInternetDefaultDown(QStringLiteral("3")); // as every export does
        QVERIFY(!f.doc.IsModified());
    }
};

QTEST_GUILESS_MAIN(TestEditorSession)
#include "tst_editorsession.moc"
