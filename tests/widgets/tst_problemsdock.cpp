#include "app/editorsession.h"
#include "mainwindowfixture.h"
#include "model/objectpage.h"
#include "model/qosclass.h"

#include <QDockWidget>
#include <QListWidget>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

// The dock "Prüfung" in the real main window, offscreen: its rows lead to their boxes, the
// status bar counts the problems as they come and go, and the dock comes back as it was left.
class TestProblemsDock : public QObject
{
    Q_OBJECT

    struct Editor : MainWindowFixture
    {
        using MainWindowFixture::MainWindowFixture;
        QAction* tool() const { return child<QAction>("Problems"); }
        QListWidget* list() const { return child<QListWidget>("lstProblems"); }
        QLabel* count() const { return child<QLabel>("lblProblems"); }
        bool show() const { return MainWindowFixture::show(QSize(1200, 900)); }
        QoSClass* cls(const QString& caption) const
        {
            for (QoSObject* o : doc().Objects())
                if (o->Caption() == caption)
                    return qobject_cast<QoSClass*>(o);
            return nullptr;
        }
    };

    QTemporaryDir m_dir;
    QString config() const { return m_dir.filePath(QStringLiteral("config.ini")); }

    // Down: "bulk" may take more than the line; Up: "voip" as well; the filter announced is missing.
    QString overbooked() const
    {
        const QString path = m_dir.filePath(QStringLiteral("overbooked-qos.txt"));
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write("QOS_INTERNET_BAND_DOWN='1000kbit'\nQOS_INTERNET_BAND_UP='100kbit'\nQOS_CLASS_N='3'\n"
                       "QOS_CLASS_1_PARENT='0'\nQOS_CLASS_1_MINBANDWIDTH='500kbit'\n"
                       "QOS_CLASS_1_MAXBANDWIDTH='1000kbit'\n"
                       "QOS_CLASS_2_PARENT='0'\nQOS_CLASS_2_MINBANDWIDTH='100kbit'\n"
                       "QOS_CLASS_2_MAXBANDWIDTH='2000kbit'\n#QOS_CLASS_2_CAPTION='bulk'\n"
                       "QOS_CLASS_3_PARENT='0'\nQOS_CLASS_3_MINBANDWIDTH='50kbit'\n"
                       "QOS_CLASS_3_MAXBANDWIDTH='200kbit'\nQOS_CLASS_3_DIRECTION='up'\n"
                       "#QOS_CLASS_3_CAPTION='voip'\nQOS_FILTER_N='1'\n");
        return path;
    }

    static int rowOf(const QListWidget* list, const QString& caption)
    {
        for (int i = 0; i < list->count(); ++i)
            if (list->item(i)->text().contains(QStringLiteral("\"%1\"").arg(caption)))
                return i;
        return -1;
    }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init() { QFile::remove(config()); }

    // A click or Enter on a row shows the box's page and selects the box, from any page.
    void aRowLeadsToItsBox_data()
    {
        QTest::addColumn<bool>("enter");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("tab");
        QTest::newRow("click, a box on Down") << false << "bulk" << 1;
        QTest::newRow("Enter, a box on Up") << true << "voip" << 2;
    }
    void aRowLeadsToItsBox()
    {
        QFETCH(bool, enter);
        QFETCH(QString, caption);
        QFETCH(int, tab);
        Editor e(config());
        QVERIFY(e.show());
        e.tool()->trigger();
        QVERIFY(e.list()->isVisible());
        QTRY_VERIFY(e.list()->hasFocus()); // shown from the menu, the list takes the keyboard
        e.w->session().OpenFile(overbooked());
        e.w->tabStrip()->setCurrentIndex(tab == 1 ? 2 : 1); // the other page
        QTRY_COMPARE(e.list()->count(), 3);
        const int row = rowOf(e.list(), caption);
        QVERIFY(row >= 0);
        if (enter) {
            e.list()->setFocus();
            e.list()->setCurrentRow(row);
            QTest::keyClick(e.list(), Qt::Key_Return);
        } else {
            const QRect rect = e.list()->visualItemRect(e.list()->item(row));
            QTest::mouseClick(e.list()->viewport(), Qt::LeftButton, {}, rect.center());
        }
        QCOMPARE(e.w->tabStrip()->currentIndex(), tab);
        QVERIFY(e.cls(caption)->Selected());
        QCOMPARE(e.cls(caption)->GetObjectPage()->SelectedObject(), e.cls(caption));
    }

    // The status bar names the number of problems, and follows every change; "Neu" also forgets
    // what the import of the last file had to tell.
    void theCountFollowsChanges()
    {
        Editor e(config());
        QVERIFY(e.show());
        QCOMPARE(e.count()->text(), QStringLiteral("Keine Probleme"));
        e.w->session().OpenFile(overbooked());
        QTRY_COMPARE(e.count()->text(), QStringLiteral("3 Probleme"));
        e.cls(QStringLiteral("bulk"))->SetQoSMaxBandWidth(QStringLiteral("1000kbit"));
        e.cls(QStringLiteral("voip"))->SetQoSMaxBandWidth(QStringLiteral("100kbit"));
        QTRY_COMPARE(e.count()->text(), QStringLiteral("1 Problem"));
        QCOMPARE(e.count()->accessibleName(), e.count()->text());
        QVERIFY(!e.count()->accessibleDescription().isEmpty());
        e.prompt.yesNoCancel << UserPrompt::Answer::No;
        QVERIFY(e.w->session().New());
        QTRY_COMPARE(e.count()->text(), QStringLiteral("Keine Probleme"));
    }

    // The dock comes back as it was left, hidden by default.
    void theDockIsRemembered()
    {
        {
            Editor e(config());
            QVERIFY(e.child<QDockWidget>("dockProblems")->isHidden());
            QVERIFY(e.show());
            e.tool()->trigger();
            QVERIFY(e.w->close());
        }
        Editor again(config());
        QVERIFY(!again.child<QDockWidget>("dockProblems")->isHidden());
        QVERIFY(again.tool()->isChecked());
    }
};

QTEST_MAIN(TestProblemsDock)
#include "tst_problemsdock.moc"
