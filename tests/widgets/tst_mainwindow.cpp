#include "app/classcalculatorpanel.h"
#include "app/editorsession.h"
#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "base/scriptedprompt.h"
#include "file/qoswriter.h"
#include "mainwindowfixture.h"
#include "model/classcalculator.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"
#include "model/qosobjectbox.h"
#include "page/objectpageview.h"
#include "pagescript.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QWidgetAction>

// The real main window, driven through its actions and controls on the offscreen platform,
// with a scripted prompt answering every question.
class TestMainWindow : public QObject
{
    Q_OBJECT

    struct Editor : MainWindowFixture
    {
        using MainWindowFixture::MainWindowFixture;
        bool markShown() const { return child<QToolButton>("pnlModified")->isVisibleTo(w.get()); }
    };

    // Runs an action as a click on its button would; a disabled one cannot be clicked.
    static bool trigger(const Editor& e, const char* key)
    {
        QAction* a = e.action(key);
        if (!a || !a->isEnabled())
            return false;
        a->trigger();
        return true;
    }

    // A page as its picture: every box with its cell, the cell of its parent and its caption.
    static QString picture(ObjectPage* page)
    {
        QStringList out;
        for (QoSObject* o : page->ObjectsInWriteOrder()) {
            const QoSClass* parent = o->ParentQoSObject();
            out << QStringLiteral("%1@%2,%3<%4 %5")
                       .arg(o->IsClass() ? QChar(u'C') : QChar(u'F'))
                       .arg(o->MatrixX())
                       .arg(o->MatrixY())
                       .arg(parent ? QStringLiteral("%1,%2").arg(parent->MatrixX()).arg(parent->MatrixY())
                                   : QStringLiteral("-"),
                            o->Caption());
        }
        return out.join(u' ');
    }

    static QByteArray read(const QString& path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    // Shows the window on "Down" and runs the given tools there, the first a new main class.
    static bool showAndRun(const Editor& e, std::initializer_list<const char*> tools)
    {
        if (!e.show() || !trigger(e, "optDown") || !trigger(e, "NewMainClass"))
            return false;
        for (const char* tool : tools)
            if (!trigger(e, tool))
                return false;
        QCoreApplication::processEvents();
        return true;
    }

    // Shows the window with a class and a filter on "Down" and types into the filter's box.
    static QLineEdit* typeIntoFilter(const Editor& e, const char* box, const QString& typed)
    {
        if (!showAndRun(e, {"NewFilter"}))
            return nullptr;
        QoSObject* filter = PageScript::flt(e.doc(), 1);
        auto* view = e.w->findChild<ObjectPageView*>(e.doc().Down1()->Name());
        if (!filter || !view || !QTest::qWaitFor([&] { return view->box(filter->Name()) != nullptr; }))
            return nullptr;
        auto* edit = view->box(filter->Name())->findChild<QLineEdit*>(QString::fromLatin1(box));
        if (!edit)
            return nullptr;
        edit->setFocus();
        QTest::keyClicks(edit, typed);
        QCoreApplication::processEvents();
        return edit;
    }

    QTemporaryDir m_dir;
    QString config() const { return m_dir.filePath(QStringLiteral("config.ini")); }

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        qputenv("SOURCE_DATE_EPOCH", "1700000000"); // the writer's date line stays the same
    }

    void init() { QFile::remove(config()); }

    // A long loop reports every step; the window shows the latest a few times a second.
    void theStatusWindowRepaintsAFewTimesASecond()
    {
        struct PaintCount : QObject
        {
            int paints = 0;
            bool eventFilter(QObject*, QEvent* event) override
            {
                paints += event->type() == QEvent::Paint;
                return false;
            }
        } count;
        frmStatus status;
        status.Show(QStringLiteral("Import"), QStringLiteral("Import..."));
        auto* bar = status.findChild<QProgressBar*>(QStringLiteral("prgStatus"));
        bar->installEventFilter(&count);
        QElapsedTimer clock;
        clock.start();
        constexpr int Steps = 5000;
        for (int step = 1; step <= Steps; ++step) {
            status.SetMessage(QStringLiteral("Import...Filter %1").arg(step));
            status.SetProgress(step, Steps);
        }
        // At most one repaint for every 40 ms the loop took, and the first.
        QVERIFY2(count.paints <= clock.elapsed() / 40 + 2, qPrintable(QString::number(count.paints)));
        QTest::qWait(60);
        status.SetProgress(Steps, Steps);
        QCOMPARE(bar->value(), Steps);
        QCOMPARE(status.findChild<QLabel*>(QStringLiteral("lblMessage"))->text(),
                 QStringLiteral("Import...Filter 5000"));
        status.Close();
    }

    // A document built with the window's tools, the calculator and the common page, saved and
    // opened again: the same picture and the same bytes.
    void buildSaveReopen()
    {
        Editor e(config());
        // The line speed typed on the common page.
        QLineEdit* down = e.child<QWidget>("txtQoSInternetBandDown")->findChild<QLineEdit*>();
        down->selectAll();
        QTest::keyClicks(down, QStringLiteral("4000"));
        QTest::keyClicks(e.child<QLineEdit>("txtQoSInternetDev"), QStringLiteral("x"));

        // Down: a main class, two sub classes, a filter under each, reached with the calculator.
        QVERIFY(trigger(e, "optDown"));
        QVERIFY(trigger(e, "NewMainClass"));
        QoSClass* main = e.doc().Down1()->SelectedClass();
        QCOMPARE(main->QoSMaxBandWidth(), QStringLiteral("4000kbit"));
        QVERIFY(trigger(e, "NewSubClass"));
        QVERIFY(trigger(e, "NewSubClass"));
        e.child<QToolButton>("cmdMoveDown")->click();
        QoSClass* first = e.doc().Down1()->SelectedClass();
        QCOMPARE(first->ParentQoSObject(), main);
        QVERIFY(trigger(e, "NewFilter"));
        e.child<QToolButton>("cmdMoveRight")->click();
        QoSClass* second = e.doc().Down1()->SelectedClass();
        QVERIFY(second != first);
        // The new object button runs the kind last chosen from its menu.
        QVERIFY(trigger(e, "FilterSelect"));
        QVERIFY(trigger(e, "NewObject"));
        QCOMPARE(second->ChildQoSObjects().size(), 2);
        // The calculator gives the second sub class what is free, and applies it.
        e.child<QPushButton>("lblFreeMin")->click();
        e.child<QPushButton>("cmdApply")->click();
        QCOMPARE(second->QoSMinBandWidthKBit(), 3999);

        // Up: a main class with one sub class and a filter; it is the default class.
        QVERIFY(trigger(e, "optUp"));
        QVERIFY(trigger(e, "MainClassSelect"));
        QVERIFY(trigger(e, "NewSubClass"));
        e.child<QToolButton>("cmdMoveDown")->click();
        QVERIFY(trigger(e, "NewFilter"));
        QVERIFY(trigger(e, "DefaultClass"));

        // Named in their title bars: a class without a name is given one when the file is read.
        int n = 0;
        for (QoSObject* o : e.doc().Objects())
            if (o->IsClass())
                o->SetCaption(QStringLiteral("Klasse %1").arg(++n));
        const QString before[] = {picture(e.doc().Down1()), picture(e.doc().Up1())};

        // Save: the mark goes, the title names the file.
        const QString path = m_dir.filePath(QStringLiteral("office-qos.txt"));
        e.prompt.fileNames << path;
        QVERIFY(trigger(e, "Save"));
        QVERIFY(!e.markShown());
        QCOMPARE(e.w->windowTitle(), QStringLiteral("office-qos.txt[*] – Tarnwick"));
        const QByteArray saved = read(path);
        QVERIFY(saved.contains("QOS_INTERNET_DEV='ppp0x'"));

        // Open it again in the same window.
        e.prompt.fileNames << path;
        QVERIFY(trigger(e, "itmFileOpen"));
        QVERIFY(e.prompt.messages().isEmpty());
        QCOMPARE(picture(e.doc().Down1()), before[0]);
        QCOMPARE(picture(e.doc().Up1()), before[1]);
        QCOMPARE(ExportQoSBytes(e.doc()), saved);
        QVERIFY(!e.doc().IsModified());
        QCOMPARE(e.w->session().RecentFiles().first(), path);
    }

    // Every command that would drop the document asks first; nothing is lost unless the user
    // said "Nein" or the save after "Ja" went through.
    void saveQuestion_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("save"); // whether the save dialog after "Ja" names a file
        QTest::addColumn<bool>("kept"); // the document still holds its class
        const int yes = int(UserPrompt::Answer::Yes), no = int(UserPrompt::Answer::No),
                  cancel = int(UserPrompt::Answer::Cancel);
        for (const char* command : {"itmFileNew", "New", "itmFileOpen", "close"}) {
            // Open clears only once a file was chosen; here its dialog is cancelled.
            const bool keeps = qstrcmp(command, "close") == 0 || qstrcmp(command, "itmFileOpen") == 0;
            const QString c = QString::fromLatin1(command);
            QTest::addRow("%s: yes saves", command) << c << yes << true << keeps;
            QTest::addRow("%s: no", command) << c << no << false << keeps;
            QTest::addRow("%s: cancel", command) << c << cancel << false << true;
        }
    }
    void saveQuestion()
    {
        QFETCH(QString, command);
        QFETCH(int, answer);
        QFETCH(bool, save);
        Editor e(config());
        trigger(e, "optDown");
        trigger(e, "NewMainClass");
        e.prompt.yesNoCancel << UserPrompt::Answer(answer);
        const QString target = m_dir.filePath(QStringLiteral("asked-qos.txt"));
        QFile::remove(target);
        if (save)
            e.prompt.fileNames << target;
        bool closed = false;
        if (command == u"close")
            closed = e.w->close();
        else
            QVERIFY(trigger(e, command.toLatin1().constData()));
        QVERIFY(!e.prompt.log.isEmpty());
        QCOMPARE(e.prompt.log.first().kind, QStringLiteral("yesnocancel"));
        QCOMPARE(e.prompt.log.first().text, QStringLiteral("Soll noch gespeichert werden?"));
        QTEST(e.doc().Down1()->ClassCount() == 1, "kept");
        QCOMPARE(QFile::exists(target), save);
        if (command == u"close")
            QCOMPARE(closed, answer == int(UserPrompt::Answer::No) || save);
        e.prompt.yesNoCancel << UserPrompt::Answer::No; // for the window going at the end
    }

    void modifiedPanelClickDismisses()
    {
        Editor e(config());
        trigger(e, "optUp");
        trigger(e, "NewMainClass");
        QVERIFY(e.markShown());
        e.child<QToolButton>("pnlModified")->click();
        QVERIFY(!e.doc().IsModified());
        QVERIFY(!e.markShown());
        QCOMPARE(e.doc().Up1()->ClassCount(), 1); // dismissed, not undone
    }

    void settingsWrittenOnCloseAndReadOnStart()
    {
        {
            Editor e(config());
            qint32 cols = 8, rows = 6;
            e.doc().Down1()->SetGridDimensions(cols, rows);
            e.doc().Common1()->SetQoSInternetBandUp(QStringLiteral("2Mbit"));
            e.w->setGeometry(QRect(40, 50, 700, 500));
            e.w->tabStrip()->setCurrentIndex(1);
            QVERIFY(trigger(e, "Calc"));
            e.prompt.yesNoCancel << UserPrompt::Answer::No; // the line speed changed the document
            QVERIFY(e.w->close());
        }
        // Read back by a new window: what its file holds is pinned with the settings themselves.
        Editor again(config());
        QCOMPARE(again.doc().Down1()->prop().Cols, 8);
        QCOMPARE(again.doc().Common1()->QoSInternetBandUp(), QStringLiteral("2Mbit"));
        QCOMPARE(again.w->geometry(), QRect(40, 50, 700, 500));
        QVERIFY(again.child<QDockWidget>("dockClassCalculator")->isHidden());
        QVERIFY(!again.doc().IsModified()); // loading the settings is no edit
    }

    // Broken settings bring back a usable window and ask nobody anything.
    void corruptSettingsAreIgnored()
    {
        QFile ini(config());
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.write("[Down]\nCols=\nRows=viele\n[MainWindow]\nLeft=-99999999\nTop=x\nWidth=\nWindowState=\n"
                  "Calculator=\n\x01\x02=\n[Common]\nQoSInternetBandDown=99999999999kbit\n");
        ini.close();
        Editor e(config());
        QVERIFY(e.w->geometry().width() > 100);
        QVERIFY(e.prompt.log.isEmpty());
    }

    // Settings that cannot be written do not hold up closing, but the user hears of it.
    void settingsThatCannotBeWrittenAreTold()
    {
        QTemporaryDir dir;
        QFile blocker(dir.filePath(QStringLiteral("not-a-folder")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        Editor e(blocker.fileName() + QStringLiteral("/config.ini"));
        QVERIFY(e.w->close());
        QCOMPARE(e.prompt.messages().size(), 1);
        QVERIFY(e.prompt.messages().first().contains(QStringLiteral("Einstellungen")));
        QCOMPARE(e.prompt.log.first().icon, UserPrompt::Icon::Warning);
    }

    // Working in the calculator panel (its fields, labels, check box and buttons take the focus)
    // keeps the class selected and shown there.
    void theCalculatorKeepsItsClassWhileUsed_data()
    {
        QTest::addColumn<QString>("control");
        for (const char* control : {"txtNewMin", "lblAvailMin", "lblFreeMin", "cmdApply", "chlAutoApply"})
            QTest::newRow(control) << QString::fromLatin1(control);
    }
    void theCalculatorKeepsItsClassWhileUsed()
    {
        QFETCH(QString, control);
        Editor e(config());
        QVERIFY(showAndRun(e, {}));
        QoSClass* c = e.doc().Down1()->SelectedClass();
        e.w->findChild<QWidget*>(c->Name())->setFocus(Qt::MouseFocusReason);
        QWidget* target = e.w->findChild<QWidget*>(control);
        QTest::mouseClick(target->focusProxy() ? target->focusProxy() : target, Qt::LeftButton);
        QCoreApplication::processEvents();
        QVERIFY(target->isEnabled());
        QCOMPARE(e.doc().Down1()->SelectedClass(), c);
        QCOMPARE(e.w->calculator().CurrentClass(), c);
        QVERIFY(!c->Caption().isEmpty() && e.child<QLabel>("lblClass")->text().contains(c->Caption()));
    }

    // Leaving a filter's address or port list while its check fails, by Tab, by switching the
    // page or by a command of the window that would act on the value: the field keeps the
    // focus on screen, the page stays, the command does not run, and the user is told once, in
    // a message or, for too many ports, in the status line. Put right, the field lets go.
    void leavingAFieldRunsItsCheck_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("icon");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("way");
        QStringList ports;
        for (int p = 1; p <= 21; ++p)
            ports << QString::number(p);
        const QString critical = QString::number(int(UserPrompt::Icon::Critical)),
                      none = QString::number(int(UserPrompt::Icon::None));
        const QStringList fields[] = {
            {"short address", "txtIP", "10.1", "Keine gültige IP!", critical, ""},
            {"port out of range", "txtPort", "70000", "Nur werte von 0 bis 65535 sind erlaubt!", none, ""},
            {"21 ports", "txtPort", ports.join(u','), "", none, "Zuviele Ports"},
        };
        for (const QStringList& f : fields)
            for (const char* way :
                 {"Tab", "tab Allgemein", "tab Up", "optUp", "Ctrl+Tab", "Command2", "Save", "itmFileSaveAs",
                  "New", "itmFileOpen", "NewMainClass", "DeleteObject", "close"})
                QTest::addRow("%s, %s", qPrintable(f[0]), way)
                    << f[1] << f[2] << f[3] << f[4].toInt() << f[5] << QString::fromLatin1(way);
    }
    void leavingAFieldRunsItsCheck()
    {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, message);
        QFETCH(QString, status);
        QFETCH(QString, way);
        Editor e(config());
        QLineEdit* edit = typeIntoFilter(e, box.toLatin1().constData(), typed);
        QVERIFY(edit);
        QApplication::clipboard()->setText(QStringLiteral("vorher"));
        const int objects = e.doc().Down1()->ObjectCount();
        QTabBar* tabs = e.w->tabStrip()->tabBar();
        const bool command = !way.contains(u"Tab") && !way.startsWith(u"tab") && way != u"optUp";
        const auto leave = [&] {
            if (way == u"Tab")
                QTest::keyClick(edit, Qt::Key_Tab);
            else if (way.startsWith(u"tab "))
                QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(way == u"tab Up" ? 2 : 0).center());
            else if (way == u"Ctrl+Tab")
                QTest::keyClick(edit, Qt::Key_Tab, Qt::ControlModifier);
            else if (way == u"Command2")
                QTest::mouseClick(e.child<QPushButton>("Command2"), Qt::LeftButton);
            else if (way == u"close")
                e.w->close();
            else
                QVERIFY(trigger(e, way.toLatin1().constData()));
            QCoreApplication::processEvents();
        };
        leave();
        QCOMPARE(e.w->tabStrip()->currentIndex(), 1);
        QCOMPARE(QApplication::focusWidget(), edit);
        QCOMPARE(e.prompt.log.size(), message.isEmpty() ? 0 : 1); // no file dialog, no question
        if (!message.isEmpty()) {
            QVERIFY(e.prompt.log.first().text.startsWith(message));
            QTEST(int(e.prompt.log.first().icon), "icon");
        }
        if (!status.isEmpty())
            QCOMPARE(e.status(), status);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("vorher"));
        QCOMPARE(e.doc().Down1()->ObjectCount(), objects);
        QVERIFY(e.w->isVisible());

        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Backspace);
        if (!command) {
            leave();
            QVERIFY(QApplication::focusWidget() != edit);
            QCOMPARE(e.prompt.log.size(), message.isEmpty() ? 0 : 1);
        }
        e.prompt.yesNoCancel << UserPrompt::Answer::No; // for the window going at the end
    }

    // The fields of the common page refuse a paste the writer could not write; the description
    // takes line breaks and quotes, only its characters must fit the code page.
    void commonPagePastes_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<bool>("taken");
        // clang-format off
        QTest::newRow("device") << "txtQoSLocalNetDev" << "eth1" << true;
        QTest::newRow("device with a quote") << "txtQoSInternetDev" << "ppp'0" << false;
        QTest::newRow("description with lines and quotes") << "txtDescription" << "Büro's\nNetz" << true;
        QTest::newRow("description outside the code page") << "txtDescription" << "Netz → LAN" << false;
        // clang-format on
    }
    void commonPagePastes()
    {
        QFETCH(QString, box);
        QFETCH(QString, pasted);
        QFETCH(bool, taken);
        Editor e(config());
        e.w->show();
        QWidget* edit = e.child<QWidget>(box.toLatin1().constData());
        edit->setFocus();
        const QoSCommon* common = e.doc().Common1();
        const auto value = [&] {
            return box == u"txtDescription"      ? common->QoSDescription()
                   : box == u"txtQoSLocalNetDev" ? common->QoSLocalNetDev()
                                                 : common->QoSInternetDev();
        };
        const QString before = value();
        QApplication::clipboard()->setText(pasted);
        QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        QVERIFY(taken ? value().contains(pasted) : value() == before);
        QCOMPARE(e.prompt.log.size(), taken ? 0 : 1);
        if (!taken)
            QCOMPARE(e.prompt.log.first().icon, UserPrompt::Icon::Warning);
        e.prompt.yesNoCancel << UserPrompt::Answer::No;
    }

    // The window asks the session which tools can act and asks again whenever the page or its
    // selection changes; the NewObject button follows the tool it was last set to. The page
    // holds a main class 1 with the sub classes 2 (empty) and 3 (with filter 1).
    void toolsFollowPageAndSelection_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("chosen"); // from the NewObject button's menu, before selecting
        QTest::addColumn<QString>("selection");
        QTest::addColumn<bool>("newObject");
        // clang-format off
        QTest::newRow("Allgemein") << 0 << "" << "none" << false;
        QTest::newRow("Down, filter chosen, nothing selected") << 1 << "FilterSelect" << "none" << false;
        QTest::newRow("Down, filter chosen, a class selected") << 1 << "FilterSelect" << "class" << true;
        QTest::newRow("Up, sub class chosen, a connector selected") << 2 << "SubClassSelect" << "connector" << false;
        QTest::newRow("Up, main class chosen again, a filter selected") << 2 << "MainClassSelect" << "filter" << true;
        // clang-format on
    }
    void toolsFollowPageAndSelection()
    {
        QFETCH(int, tab);
        QFETCH(QString, chosen);
        QFETCH(QString, selection);
        Editor e(config());
        e.w->tabStrip()->setCurrentIndex(tab);
        ObjectPage* page = tab == 2 ? e.doc().Up1() : e.doc().Down1();
        PageScript::run(page, QStringLiteral("C S1 S1 F3"));
        page->SetSelectedObject(nullptr);
        if (!chosen.isEmpty())
            QVERIFY(trigger(e, chosen.toLatin1().constData()));
        QoSClass* empty = PageScript::cls(e.doc(), 2);
        if (selection == u"class")
            empty->SetSelected(true);
        else if (selection == u"filter")
            PageScript::flt(e.doc(), 1)->SetSelected(true);
        else if (selection == u"connector")
            empty->LineTop()->SetSelected(true);

        const EditorSession& s = e.w->session();
        const ObjectPage* shown = e.w->CurrentPage();
        const std::pair<const char*, bool> asked[] = {{"NewMainClass", s.CanNewMainClass(shown)},
                                                      {"NewSubClass", s.CanNewSubClass(shown)},
                                                      {"NewFilter", s.CanNewFilter(shown)},
                                                      {"DeleteObject", s.CanDeleteObject(shown)},
                                                      {"DefaultClass", s.CanMakeDefaultClass(shown)},
                                                      {"itmPageSize", s.CanChangePageSize(shown)},
                                                      {"Calc", s.CanShowCalculator(shown)},
                                                      {"MainClassSelect", s.CanChooseNewObject(shown)},
                                                      {"SubClassSelect", s.CanChooseNewObject(shown)},
                                                      {"FilterSelect", s.CanChooseNewObject(shown)},
                                                      {"Save", s.CanSave()}};
        for (const auto& [key, can] : asked)
            QVERIFY2(e.action(key)->isEnabled() == can, key);
        QTEST(e.action("NewObject")->isEnabled(), "newObject");
        for (const char* key : {"New", "Open", "itmFileNew", "itmFileOpen", "itmFileSaveAs", "itmFileExit",
                                "itmHelpAbout", "optDown", "optUp", "Config"})
            QVERIFY2(e.action(key)->isEnabled(), key);
        e.prompt.yesNoCancel << UserPrompt::Answer::No;
    }

    // RunPageTool runs a page tool by its key, as its button would; any other key is asked
    // about like a page command and, on an object page, named in a message.
    void runPageToolByKey_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("classes"); // made by it
        QTest::addColumn<QString>("message");
        // clang-format off
        QTest::newRow("a page tool") << "NewMainClass" << 1 << 1 << "";
        QTest::newRow("a page tool on Allgemein") << "NewMainClass" << 0 << 0 << "";
        QTest::newRow("an unknown key on Allgemein") << "Nonsense" << 0 << 0 << "";
        QTest::newRow("an unknown key on a page") << "Nonsense" << 1 << 0 << "Aktion für Button Nonsense (-1) in tbrPage nicht definiert.";
        QTest::newRow("a menu item's key") << "itmFileNew" << 2 << 0 << "Aktion für Button itmFileNew (-1) in tbrPage nicht definiert.";
        // clang-format on
    }
    void runPageToolByKey()
    {
        QFETCH(QString, key);
        QFETCH(int, tab);
        QFETCH(QString, message);
        Editor e(config());
        e.w->tabStrip()->setCurrentIndex(tab);
        e.doc().Common1()->SetQoSInternetDev(QStringLiteral("dsl0")); // a change that New would ask about
        e.w->RunPageTool(key);
        QTEST(e.doc().Down1()->ClassCount() + e.doc().Up1()->ClassCount(), "classes");
        QCOMPARE(e.prompt.messages(), message.isEmpty() ? QStringList() : QStringList{message});
        if (!message.isEmpty())
            QCOMPARE(e.prompt.log.first().icon, UserPrompt::Icon::Critical);
        QCOMPARE(e.doc().Common1()->QoSInternetDev(), QStringLiteral("dsl0"));
        e.prompt.yesNoCancel << UserPrompt::Answer::No;
    }

    // The page-tools dialog lists the buttons of tbrPage and hides those unchecked; the
    // NewObject entry stands for the drop-down button, whatever its last choice.
    void pageToolsDialogHidesButtons()
    {
        Editor e(config());
        e.w->show();
        QStringList listed;
        // Answers the dialog as soon as it is up, so that nothing waits on it.
        QTimer answer;
        connect(&answer, &QTimer::timeout, this, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            for (QCheckBox* box : dialog->findChildren<QCheckBox*>()) {
                listed << box->text();
                if (box->text().startsWith(QStringLiteral("Neues Objekt")) || box->text() == u"Löschen")
                    box->setChecked(false);
            }
            dialog->accept();
        });
        answer.start(10);
        QVERIFY(trigger(e, "Config"));
        QCOMPARE(listed,
                 (QStringList{"Neues Objekt (mit Auswahlmenü)", "Neue Hauptklasse", "Neue Unterklasse",
                              "Neuer Filter", "Löschen", "Standardklasse", "Klassenrechner", "Down", "Up"}));
        auto* bar = e.child<QToolBar>("tbrPage");
        QTRY_VERIFY(!e.child<QToolButton>("cmdNewObject")->isVisible()); // once the bar is laid out again
        QVERIFY(!bar->widgetForAction(e.action("DeleteObject"))->isVisible());
        QVERIFY(bar->widgetForAction(e.action("NewMainClass"))->isVisible());
        QVERIFY(e.action("NewObject")->isVisible()); // the action itself stays, for the key
    }

    // The calculator panel shows what the calculator decided: the figure left after the new
    // minimum in red when it warns, in the field's own colour when it does not.
    void calculatorPanelShowsTheCalculatorsAnswers_data()
    {
        QTest::addColumn<QString>("siblingMin");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("after");
        QTest::addColumn<bool>("red");
        // clang-format off
        QTest::newRow("something left") << "200kbit" << "500" << "300 kbit" << false;
        QTest::newRow("promised more than there is") << "200kbit" << "900" << "-100 kbit" << true;
        // clang-format on
    }
    void calculatorPanelShowsTheCalculatorsAnswers()
    {
        QFETCH(QString, siblingMin);
        QFETCH(QString, typed);
        QFETCH(bool, red);
        Document doc;
        PageScript::run(doc.Down1(), QStringLiteral("C S1 S1"));
        PageScript::cls(doc, 1)->SetQoSMinBandWidth(QStringLiteral("1000kbit"));
        PageScript::cls(doc, 1)->SetQoSMaxBandWidth(QStringLiteral("1000kbit"));
        PageScript::cls(doc, 2)->SetQoSMinBandWidth(QStringLiteral("300kbit"));
        PageScript::cls(doc, 3)->SetQoSMinBandWidth(siblingMin);
        ClassCalculator calc;
        ClassCalculatorPanel panel(&calc);
        const auto* after = panel.findChild<QLineEdit*>(QStringLiteral("txtNewMinAfter"));
        QVERIFY(after->text().isEmpty()); // no class yet
        calc.SetQoSClass(PageScript::cls(doc, 2));
        calc.NewMin()->SetValue(QStringLiteral("999999")); // red first: the colour must come back
        calc.NewMin()->SetValue(typed);
        QTEST(after->text(), "after");
        const QColor text = after->palette().color(QPalette::Text);
        QCOMPARE(text == QColor(0xc0, 0, 0), red);
        if (!red)
            QCOMPARE(text, panel.palette().color(QPalette::Text));
        QCOMPARE(after->accessibleDescription(), after->text());
        const std::pair<const char*, QString> figures[] = {{"txtUsesMin", calc.UsesMinText()},
                                                           {"txtAvailableMin", calc.AvailableMinText()},
                                                           {"txtFreeMin", calc.FreeMinText()},
                                                           {"txtParentMax", calc.ParentMaxText()}};
        for (const auto& [name, shown] : figures)
            QCOMPARE(panel.findChild<QLineEdit*>(QString::fromLatin1(name))->text(), shown);
        QCOMPARE(panel.findChild<QLabel*>(QStringLiteral("lblClass"))->text(), calc.HeadingText());
    }

    // With auto apply on, a click on another box hands the typed minimum to the class shown
    // until then, as the calculator's arrows do.
    void calculatorAppliesWhenAnotherBoxIsClicked()
    {
        Editor e(config());
        QVERIFY(showAndRun(e, {"NewSubClass", "NewSubClass"}));
        QoSClass* first = PageScript::cls(e.doc(), 2);
        QoSClass* second = PageScript::cls(e.doc(), 3);
        const auto click = [&](QoSClass* c) {
            QWidget* box = e.w->findChild<QWidget*>(c->Name());
            QVERIFY(box);
            QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(box->width() / 2, 4));
            QCoreApplication::processEvents();
        };
        click(first);
        QCOMPARE(e.w->calculator().CurrentClass(), first);
        e.child<QCheckBox>("chlAutoApply")->click();
        QLineEdit* newMin = e.child<QWidget>("txtNewMin")->findChild<QLineEdit*>();
        newMin->setFocus();
        newMin->selectAll();
        QTest::keyClicks(newMin, QStringLiteral("450"));
        click(second);
        QCOMPARE(e.w->calculator().CurrentClass(), second);
        QCOMPARE(first->QoSMinBandWidthKBit(), 450);
        QVERIFY(second->QoSMinBandWidthKBit() != 450);
        e.prompt.yesNoCancel << UserPrompt::Answer::No;
    }

    void everyControlIsNamed()
    {
        Editor e(config());
        QStringList unnamed;
        for (QWidget* w : e.w->findChildren<QWidget*>()) {
            const bool control = qobject_cast<QAbstractButton*>(w) || qobject_cast<QLineEdit*>(w) ||
                                 qobject_cast<QComboBox*>(w) || qobject_cast<QPlainTextEdit*>(w);
            if (!control || w->objectName().startsWith(QStringLiteral("qt_")))
                continue; // Qt's own scroll and title buttons
            const auto* button = qobject_cast<QAbstractButton*>(w);
            if (w->accessibleName().isEmpty() && (!button || button->text().isEmpty()))
                unnamed << w->objectName() + u'/' + QString::fromLatin1(w->metaObject()->className());
        }
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(u' ')));
        for (const char* bar : {"Toolbar1", "tbrPage"})
            for (QAction* a : e.child<QToolBar>(bar)->actions())
                QVERIFY2(a->isSeparator() || qobject_cast<QWidgetAction*>(a) || !a->toolTip().isEmpty(),
                         qPrintable(a->objectName()));
        // The status line reads as what it says now.
        trigger(e, "itmFileOpen");
        QCOMPARE(e.status(), QStringLiteral("Datei öffnen abgebrochen."));
        QCOMPARE(e.child<QLabel>("pnlStatus")->accessibleName(), e.status());
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
