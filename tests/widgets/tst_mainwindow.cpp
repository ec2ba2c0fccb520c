#include "app/appproperties.h"
#include "app/classcalculatorpanel.h"
#include "app/editorsession.h"
#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "base/scriptedprompt.h"
#include "file/qoswriter.h"
#include "model/classcalculator.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"
#include "model/qosfilter.h"
#include "model/qosobjectbox.h"
#include "page/objectpageview.h"
#include "pagescript.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
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

    struct Editor
    {
        ScriptedPrompt prompt;
        std::unique_ptr<frmMain> w;

        explicit Editor(const QString& config) : w(std::make_unique<frmMain>(&prompt, config)) {}
        Document& doc() const { return w->document(); }
        QAction* action(const char* key) const { return w->findChild<QAction*>(QString::fromLatin1(key)); }
        template <typename T> T* child(const char* name) const
        {
            return w->findChild<T*>(QString::fromLatin1(name));
        }
        QString status() const { return child<QLabel>("pnlStatus")->text(); }
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

    // A page as its picture: every box with its cell and the cell of its parent, in cell order.
    static QString picture(ObjectPage* page)
    {
        QStringList out;
        for (QoSObject* o : page->ObjectsInWriteOrder()) {
            const QoSClass* parent = o->ParentQoSObject();
            out << QStringLiteral("%1@%2,%3<%4 %5")
                       .arg(o->IsClass() ? QStringLiteral("C") : QStringLiteral("F"))
                       .arg(o->MatrixX())
                       .arg(o->MatrixY())
                       .arg(parent ? QStringLiteral("%1,%2").arg(parent->MatrixX()).arg(parent->MatrixY())
                                   : QStringLiteral("-"))
                       .arg(o->Caption());
        }
        return out.join(u' ');
    }

    static QByteArray read(const QString& path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }

    // Shows the window with a class and a filter on "Down" and types into the filter's box.
    static QLineEdit* typeIntoFilter(const Editor& e, const char* box, const QString& typed)
    {
        e.w->resize(1200, 1000); // the filter's row in sight
        e.w->show();
        QApplication::setActiveWindow(e.w.get());
        if (!QTest::qWaitForWindowActive(e.w.get()))
            return nullptr;
        trigger(e, "optDown");
        trigger(e, "NewMainClass");
        trigger(e, "NewFilter");
        QCoreApplication::processEvents();
        QoSObject* filter = nullptr;
        for (QoSObject* o : e.doc().Down1()->ContainedObjects())
            if (!o->IsClass())
                filter = o;
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
        QVERIFY(bar);
        bar->installEventFilter(&count);
        QElapsedTimer clock;
        clock.start();
        constexpr int Steps = 5000;
        for (int step = 1; step <= Steps; ++step) {
            status.SetMessage(QStringLiteral("Import...Filter %1").arg(step));
            status.SetProgress(step, Steps);
        }
        QCOMPARE(status.message(), QStringLiteral("Import...Filter 5000"));
        // At most one repaint for every 40 ms the loop took, and the first.
        QVERIFY2(count.paints <= clock.elapsed() / 40 + 2, qPrintable(QString::number(count.paints)));
        QTest::qWait(60);
        status.SetProgress(Steps, Steps);
        QCOMPARE(bar->value(), Steps);
        QCOMPARE(status.findChild<QLabel*>(QStringLiteral("lblMessage"))->text(),
                 QStringLiteral("Import...Filter 5000"));
        status.Close();
    }

    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        qputenv("SOURCE_DATE_EPOCH", "1700000000"); // the writer's date line stays the same
    }

    void init() { QFile::remove(config()); }

    void buildSaveReopen()
    {
        Editor e(config());
        QCOMPARE(e.w->tabStrip()->currentIndex(), 0);
        QVERIFY(!e.action("NewMainClass")->isEnabled()); // "Allgemein" has no boxes
        QVERIFY(!e.action("Save")->isEnabled());         // nothing to save yet

        // The line speeds typed on the common page.
        QLineEdit* down = e.child<QWidget>("txtQoSInternetBandDown")->findChild<QLineEdit*>();
        down->selectAll();
        QTest::keyClicks(down, QStringLiteral("4000"));
        QCOMPARE(e.doc().Common1()->QoSInternetBandDown(), QStringLiteral("4000kbit"));
        QTest::keyClicks(e.child<QLineEdit>("txtQoSInternetDev"), QStringLiteral("x"));
        QCOMPARE(e.doc().Common1()->QoSInternetDev(), QStringLiteral("ppp0x"));
        QVERIFY(e.markShown());

        // Down: a main class, two sub classes, a filter under each, reached with the calculator.
        QVERIFY(trigger(e, "optDown"));
        QCOMPARE(e.w->CurrentPage(), e.doc().Down1());
        QVERIFY(!e.action("NewSubClass")->isEnabled());
        QVERIFY(trigger(e, "NewMainClass"));
        QoSClass* main = e.doc().Down1()->SelectedClass();
        QVERIFY(main);
        QCOMPARE(main->QoSMaxBandWidth(), QStringLiteral("4000kbit"));
        QCOMPARE(e.w->calculator().CurrentClass(), main);
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
        second->SetCaption(QStringLiteral("Rest"));
        qobject_cast<QoSFilter*>(second->ChildQoSObjects().first())->SetQoSPort(QStringLiteral("80,443"));

        // Up: a main class with one sub class and a filter; it is the default class.
        QVERIFY(trigger(e, "optUp"));
        QCOMPARE(e.w->tabStrip()->currentIndex(), 2);
        QVERIFY(trigger(e, "MainClassSelect"));
        QVERIFY(trigger(e, "NewSubClass"));
        e.child<QToolButton>("cmdMoveDown")->click();
        QVERIFY(trigger(e, "NewFilter"));
        QVERIFY(trigger(e, "DefaultClass"));
        QCOMPARE(e.doc().Up1()->ClassCount(), 2);

        // Named in their title bars: a class without a name is given one when the file is read.
        int n = 0;
        for (QoSObject* o : e.doc().Objects())
            if (o->IsClass() && o->Caption().isEmpty())
                o->SetCaption(QStringLiteral("Klasse %1").arg(++n));
        const QString before[] = {picture(e.doc().Down1()), picture(e.doc().Up1())};
        QCOMPARE(before[0].count(u'F'), 3);

        // Save: the mark goes, the title names the file.
        const QString path = m_dir.filePath(QStringLiteral("office-qos.txt"));
        e.prompt.fileNames << path;
        QVERIFY(e.action("Save")->isEnabled());
        QVERIFY(trigger(e, "Save"));
        QVERIFY(!e.doc().IsModified());
        QVERIFY(!e.markShown());
        QVERIFY(!e.action("Save")->isEnabled());
        QCOMPARE(e.w->windowTitle(), QStringLiteral("office-qos.txt[*] – Tarnwick"));
        const QByteArray saved = read(path);
        QVERIFY(saved.contains("QOS_INTERNET_DEV='ppp0x'"));

        // Open it again in the same window: the same picture, the same bytes.
        e.prompt.fileNames << path;
        QVERIFY(trigger(e, "itmFileOpen"));
        QVERIFY(e.prompt.messages().isEmpty());
        QCOMPARE(picture(e.doc().Down1()), before[0]);
        QCOMPARE(picture(e.doc().Up1()), before[1]);
        QCOMPARE(e.doc().Common1()->QoSInternetBandDown(), QStringLiteral("4000kbit"));
        QCOMPARE(ExportQoSBytes(e.doc()), saved);
        QVERIFY(!e.doc().IsModified());
        QCOMPARE(e.w->session().RecentFiles().first(), path);
    }

    void cancelPathsSayItInTheStatusBar()
    {
        Editor e(config());
        QVERIFY(trigger(e, "itmFileOpen"));
        QCOMPARE(e.status(), QStringLiteral("Datei öffnen abgebrochen."));
        QVERIFY(trigger(e, "itmFileSaveAs"));
        QCOMPARE(e.status(), QStringLiteral("Datei speichern unter abgebrochen."));
        QCOMPARE(e.prompt.log.size(), 2); // the two dialogs, nothing else
    }

    void saveQuestion_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("kept"); // the document still holds its class
        QTest::addColumn<bool>("saved");
        const int yes = int(UserPrompt::Answer::Yes), no = int(UserPrompt::Answer::No),
                  cancel = int(UserPrompt::Answer::Cancel);
        for (const char* command : {"itmFileNew", "New", "itmFileOpen", "close"}) {
            const QByteArray c(command);
            // Open clears only once a file was chosen; here its dialog is cancelled.
            const bool keeps = c == "close" || c == "itmFileOpen";
            // clang-format off
            QTest::addRow("%s: yes saves", command) << QString::fromLatin1(c) << yes << keeps << true;
            QTest::addRow("%s: no", command) << QString::fromLatin1(c) << no << keeps << false;
            QTest::addRow("%s: cancel", command) << QString::fromLatin1(c) << cancel << true << false;
            // clang-format on
        }
    }
    void saveQuestion()
    {
        QFETCH(QString, command);
        QFETCH(int, answer);
        Editor e(config());
        trigger(e, "optDown");
        trigger(e, "NewMainClass");
        e.prompt.yesNoCancel << UserPrompt::Answer(answer);
        const QString target = m_dir.filePath(QStringLiteral("asked-qos.txt"));
        QFile::remove(target);
        e.prompt.fileNames << target; // for the save after "yes"
        bool closed = false;
        if (command == u"close")
            closed = e.w->close();
        else
            QVERIFY(trigger(e, command.toLatin1().constData()));
        QVERIFY(!e.prompt.log.isEmpty());
        QCOMPARE(e.prompt.log.first().kind, QStringLiteral("yesnocancel"));
        QCOMPARE(e.prompt.log.first().text, QStringLiteral("Soll noch gespeichert werden?"));
        QTEST(e.doc().Down1()->ClassCount() == 1, "kept");
        QTEST(QFile::exists(target), "saved");
        if (command == u"close")
            QCOMPARE(closed, answer != int(UserPrompt::Answer::Cancel));
    }

    void modifiedPanelClickDismisses()
    {
        Editor e(config());
        trigger(e, "optUp");
        trigger(e, "NewMainClass");
        QVERIFY(e.markShown());
        QCOMPARE(e.child<QToolButton>("pnlModified")->toolTip(), QStringLiteral("Datei wurde geändert"));
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
            trigger(e, "Calc");
            e.prompt.yesNoCancel << UserPrompt::Answer::No; // the line speed changed the document
            QVERIFY(e.w->close());
        }
        const QByteArray ini = read(config());
        QVERIFY(ini.contains("[Down]\nCols=8\nRows=6\n"));
        QVERIFY(ini.contains("QoSInternetBandUp=2Mbit"));
        QVERIFY(ini.contains("Left=600\nTop=750\nWidth=10500\nHeight=7500\nCalculator=0"));

        Editor again(config());
        QCOMPARE(again.doc().Down1()->prop().Cols, 8);
        QCOMPARE(again.doc().Common1()->QoSInternetBandUp(), QStringLiteral("2Mbit"));
        QCOMPARE(again.w->geometry(), QRect(40, 50, 700, 500));
        QVERIFY(again.child<QDockWidget>("dockClassCalculator")->isHidden());
        QVERIFY(!again.doc().IsModified()); // loading the settings is no edit
    }

    // Settings that cannot be written do not hold up closing, but the user hears of it.
    void settingsThatCannotBeWrittenAreTold()
    {
        const QString blocker = m_dir.filePath(QStringLiteral("not-a-folder"));
        write(blocker, "x");
        {
            Editor e(blocker + QStringLiteral("/config.ini"));
            QVERIFY(e.w->close());
            QCOMPARE(e.prompt.messages().size(), 1);
            QVERIFY(e.prompt.messages().first().contains(QStringLiteral("Einstellungen")));
            QCOMPARE(e.prompt.log.first().icon, UserPrompt::Icon::Warning);
        }
        QFile::remove(blocker);
    }

    // Working in the calculator panel (its fields, labels, check box and buttons take the focus)
    // keeps the class selected and shown there.
    void theCalculatorKeepsItsClassWhileUsed_data()
    {
        QTest::addColumn<QString>("control");
        QTest::newRow("new minimum") << "txtNewMin";
        QTest::newRow("available label") << "lblAvailMin";
        QTest::newRow("free label") << "lblFreeMin";
        QTest::newRow("apply") << "cmdApply";
        QTest::newRow("auto apply") << "chlAutoApply";
    }
    void theCalculatorKeepsItsClassWhileUsed()
    {
        QFETCH(QString, control);
        Editor e(config());
        e.w->show();
        QApplication::setActiveWindow(e.w.get());
        QVERIFY(QTest::qWaitForWindowActive(e.w.get()));
        QVERIFY(trigger(e, "optDown"));
        QVERIFY(trigger(e, "NewMainClass"));
        QoSClass* c = e.doc().Down1()->SelectedClass();
        QVERIFY(c);
        QCoreApplication::processEvents();
        QWidget* box = e.w->findChild<QWidget*>(c->Name());
        QVERIFY(box);
        box->setFocus(Qt::MouseFocusReason);
        QWidget* target = e.w->findChild<QWidget*>(control);
        QVERIFY(target);
        QWidget* focusable = target->focusProxy() ? target->focusProxy() : target;
        QTest::mouseClick(focusable, Qt::LeftButton);
        QCoreApplication::processEvents();
        QVERIFY(target->isEnabled());
        QCOMPARE(e.doc().Down1()->SelectedClass(), c);
        QCOMPARE(e.w->calculator().CurrentClass(), c);
        QVERIFY(e.child<QLabel>("lblClass")
                    ->text()
                    .contains(c->Caption().isEmpty() ? QStringLiteral("(ohne Titel)") : c->Caption()));
    }

    void corruptSettingsAreIgnored()
    {
        write(config(),
              QByteArray(
                  "[Down]\nCols=\nRows=viele\n[MainWindow]\nLeft=-99999999\nTop=x\nWidth=\n"
                  "WindowState=\nCalculator=\n\x01\x02=\n[Common]\nQoSInternetBandDown=99999999999kbit\n"));
        Editor e(config());
        QCOMPARE(e.doc().Down1()->prop().Cols, 6);
        QCOMPARE(e.doc().Down1()->prop().Rows, 5);
        QVERIFY(e.action("Calc")->isChecked());
        QVERIFY(e.w->geometry().width() > 100);
        QVERIFY(!e.w->isMaximized());
        QVERIFY(e.prompt.log.isEmpty()); // and nobody was asked anything
    }

    // Leaving a field by switching the page runs the field's check: the page stays while the
    // check fails, the user is told once, and the focus is back in the field on screen.
    void aPageSwitchRunsTheFieldsCheck_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("way");
        QStringList ports;
        for (int p = 1; p <= 21; ++p)
            ports << QString::number(p);
        const struct
        {
            const char* name;
            QString box, typed, message, status;
        } fields[] = {
            {"short address", QStringLiteral("txtIP"), QStringLiteral("10.1"),
             QStringLiteral("Keine gültige IP!"), QString()},
            {"port out of range", QStringLiteral("txtPort"), QStringLiteral("70000"),
             QStringLiteral("Nur werte von 0 bis 65535 sind erlaubt!"), QString()},
            {"21 ports", QStringLiteral("txtPort"), ports.join(u','), QString(),
             QStringLiteral("Zuviele Ports")},
        };
        for (const auto& f : fields)
            for (const char* way : {"tab Allgemein", "tab Up", "optUp", "Ctrl+Tab"})
                QTest::addRow("%s, %s", f.name, way) << f.box << f.typed << f.message << f.status << way;
    }
    void aPageSwitchRunsTheFieldsCheck()
    {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, message);
        QFETCH(QString, status);
        QFETCH(QString, way);
        Editor e(config());
        QLineEdit* edit = typeIntoFilter(e, box.toLatin1().constData(), typed);
        QVERIFY(edit);
        QTabBar* tabs = e.w->tabStrip()->tabBar();
        const auto switchPage = [&] {
            if (way == u"tab Allgemein")
                QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
            else if (way == u"tab Up")
                QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(2).center());
            else if (way == u"optUp")
                trigger(e, "optUp");
            else
                QTest::keyClick(edit, Qt::Key_Tab, Qt::ControlModifier);
            QCoreApplication::processEvents();
        };
        switchPage();
        QCOMPARE(e.w->tabStrip()->currentIndex(), 1);
        QCOMPARE(QApplication::focusWidget(), edit);
        QCOMPARE(e.prompt.messages().size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty())
            QVERIFY(e.prompt.messages().first().startsWith(message));
        if (!status.isEmpty())
            QCOMPARE(e.status(), status);

        // Put right, the field lets the page go.
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Backspace);
        switchPage();
        QVERIFY(e.w->tabStrip()->currentIndex() != 1);
        QCOMPARE(e.prompt.messages().size(), message.isEmpty() ? 0 : 1);
    }

    // A command of the window that would act on the value asks the field first, and does not
    // run while its check fails.
    void commandsAskTheFocusedField_data()
    {
        QTest::addColumn<QString>("command");
        for (const char* command : {"Command2", "Save", "itmFileSaveAs", "New", "itmFileOpen", "NewMainClass",
                                    "DeleteObject", "close"})
            QTest::newRow(command) << QString::fromLatin1(command);
    }
    void commandsAskTheFocusedField()
    {
        QFETCH(QString, command);
        Editor e(config());
        QLineEdit* edit = typeIntoFilter(e, "txtIP", QStringLiteral("10.1"));
        QVERIFY(edit);
        QApplication::clipboard()->setText(QStringLiteral("vorher"));
        const int objects = e.doc().Down1()->ObjectCount();
        if (command == u"Command2")
            QTest::mouseClick(e.child<QPushButton>("Command2"), Qt::LeftButton);
        else if (command == u"close")
            QVERIFY(!e.w->close());
        else
            QVERIFY(trigger(e, command.toLatin1().constData()));
        QCoreApplication::processEvents();
        QCOMPARE(e.prompt.log.size(), 1); // the address's message, no file dialog, no question
        QVERIFY(e.prompt.log.first().text.startsWith(QStringLiteral("Keine gültige IP!")));
        QCOMPARE(QApplication::focusWidget(), edit);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("vorher"));
        QCOMPARE(e.doc().Down1()->ObjectCount(), objects);
        QVERIFY(e.w->isVisible());
        e.prompt.yesNoCancel << UserPrompt::Answer::No; // for the window going at the end
        edit->clear();
    }

    // The fields of the common page refuse a paste the writer could not write; the description
    // takes line breaks and quotes, only its characters must fit the code page.
    void commonPagePastes_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<bool>("taken");
        // clang-format off
        QTest::newRow("device") << "txtQoSInternetDev" << "ppp1" << true;
        QTest::newRow("device with a quote") << "txtQoSLocalNetDev" << "eth'0" << false;
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
        const QString before = e.doc().Common1()->QoSDescription() + e.doc().Common1()->QoSInternetDev() +
                               e.doc().Common1()->QoSLocalNetDev();
        QApplication::clipboard()->setText(pasted);
        QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        const QString after = e.doc().Common1()->QoSDescription() + e.doc().Common1()->QoSInternetDev() +
                              e.doc().Common1()->QoSLocalNetDev();
        QCOMPARE(after.contains(pasted), taken);
        QCOMPARE(after == before, !taken);
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
        QTest::newRow("Down, main class by default") << 1 << "" << "none" << true;
        QTest::newRow("Down, filter chosen, nothing selected") << 1 << "FilterSelect" << "none" << false;
        QTest::newRow("Down, filter chosen, a class selected") << 1 << "FilterSelect" << "class" << true;
        QTest::newRow("Up, sub class chosen, a filter selected") << 2 << "SubClassSelect" << "filter" << false;
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
        else
            page->SetSelectedObject(nullptr);

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

    // RunPageTool runs a page tool by its key; any other key is asked about like a page
    // command and, on an object page, named in a message.
    void runPageToolByKey_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("classes"); // made by it
        QTest::addColumn<QString>("message");
        // clang-format off
        QTest::newRow("a page tool") << "NewMainClass" << 1 << 1 << "";
        QTest::newRow("the NewObject button") << "NewObject" << 2 << 1 << "";
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
        QTest::newRow("exactly used up") << "200kbit" << "800" << "0 kbit" << false;
        QTest::newRow("promised more than there is") << "200kbit" << "900" << "-100 kbit" << true;
        QTest::newRow("overflow") << "1302kbit" << "2147483647" << "Überlauf" << true;
        // clang-format on
    }
    void calculatorPanelShowsTheCalculatorsAnswers()
    {
        QFETCH(QString, siblingMin);
        QFETCH(QString, typed);
        QFETCH(bool, red);
        Document doc;
        QoSClass* parent =
            doc.Down1()->AddClass(QStringLiteral("0"), {.minBandwidth = QStringLiteral("1000kbit"),
                                                        .maxBandwidth = QStringLiteral("1000kbit"),
                                                        .direction = QStringLiteral("down"),
                                                        .prio = QStringLiteral("0")});
        QoSClass* c = doc.Down1()->AddClass(parent, {.minBandwidth = QStringLiteral("300kbit"),
                                                     .direction = QStringLiteral("down"),
                                                     .prio = QStringLiteral("0")});
        doc.Down1()->AddClass(
            parent,
            {.minBandwidth = siblingMin, .direction = QStringLiteral("down"), .prio = QStringLiteral("0")});
        ClassCalculator calc;
        ClassCalculatorPanel panel(&calc);
        const auto* after = panel.findChild<QLineEdit*>(QStringLiteral("txtNewMinAfter"));
        QVERIFY(after->text().isEmpty()); // no class yet
        calc.SetQoSClass(c);
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
        e.w->resize(1200, 1000);
        e.w->show();
        QApplication::setActiveWindow(e.w.get());
        QVERIFY(QTest::qWaitForWindowActive(e.w.get()));
        QVERIFY(trigger(e, "optDown"));
        QVERIFY(trigger(e, "NewMainClass"));
        QVERIFY(trigger(e, "NewSubClass"));
        QVERIFY(trigger(e, "NewSubClass"));
        QoSClass* main = e.doc().Down1()->SelectedClass();
        QoSClass* first = qobject_cast<QoSClass*>(main->ChildQoSObjects().first());
        QoSClass* second = qobject_cast<QoSClass*>(main->ChildQoSObjects().last());
        QCoreApplication::processEvents();
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
        QCOMPARE(e.child<QLabel>("pnlStatus")->accessibleName(), QStringLiteral("Datei öffnen abgebrochen."));
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
