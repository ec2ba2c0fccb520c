#include "app/editorsession.h"
#include "mainwindowfixture.h"
#include "model/objectpage.h"
#include "model/qosobject.h"
#include "model/qosobjectbox.h"
#include "page/objectpageview.h"

#include <QLineEdit>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

// The find bar of the real window, driven by its keys on the offscreen platform over a small
// router's file: a phone (192.168.1.20) with a filter on each page, web ports 80 and 443 down.
class TestFindBar : public QObject
{
    Q_OBJECT

    struct Editor : MainWindowFixture
    {
        explicit Editor(const QString& config) : MainWindowFixture(config) { show(QSize(1200, 900)); }
        // The status window of the import takes the activation away.
        bool open() const
        {
            if (!w->session().OpenFile(QStringLiteral(TARNWICK_SAMPLES "/home-router.qos.txt")))
                return false;
            QApplication::setActiveWindow(w.get());
            return QTest::qWaitForWindowActive(w.get());
        }
        QToolBar* bar() const { return child<QToolBar>("tbrFind"); }
        QLineEdit* field() const { return child<QLineEdit>("txtFind"); }
        QString selected() const
        {
            ObjectPage* page = w->CurrentPage();
            QoSObject* o = page ? page->SelectedObject() : nullptr;
            return o ? o->Name() : QString();
        }
        // Keys as a user presses them, to whatever holds the focus: "Ctrl+F", "F3", "Shift+F3",
        // "Enter", "Shift+Enter", "Esc", or a text to type.
        void press(const QString& keys) const
        {
            const QHash<QString, QKeyCombination> named{
                {QStringLiteral("Ctrl+F"), Qt::CTRL | Qt::Key_F},
                {QStringLiteral("F3"), QKeyCombination(Qt::Key_F3)},
                {QStringLiteral("Shift+F3"), Qt::SHIFT | Qt::Key_F3},
                {QStringLiteral("Enter"), QKeyCombination(Qt::Key_Return)},
                {QStringLiteral("Shift+Enter"), Qt::SHIFT | Qt::Key_Return},
                {QStringLiteral("Esc"), QKeyCombination(Qt::Key_Escape)}};
            for (const QString& key : keys.split(u' ', Qt::SkipEmptyParts)) {
                QWidget* to = QApplication::focusWidget() ? QApplication::focusWidget() : w.get();
                if (const auto k = named.find(key); k != named.end())
                    QTest::keyClick(to, k->key(), k->keyboardModifiers());
                else
                    QTest::keyClicks(to, key);
                QCoreApplication::processEvents();
            }
        }
    };

    QTemporaryDir m_dir;
    QString config() const { return m_dir.filePath(QStringLiteral("config.ini")); }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void keys_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("selected");
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("status");

        const QString phone = QStringLiteral("Ctrl+F 192.168.1.20 Enter");
        QTest::newRow("Enter finds a port") << "Ctrl+F 443 Enter"
                                            << "QoSFilter3" << 1 << "Treffer 1 von 1: „443“";
        QTest::newRow("F3 goes over to Up") << phone + " F3"
                                            << "QoSFilter4" << 2 << "Treffer 2 von 2: „192.168.1.20“";
        QTest::newRow("F3 past the last goes round")
            << phone + " F3 F3"
            << "QoSFilter1" << 1 << "Treffer 1 von 2: „192.168.1.20“ (wieder am Anfang)";
        QTest::newRow("Shift+F3 before the first goes round")
            << phone + " Shift+F3"
            << "QoSFilter4" << 2 << "Treffer 2 von 2: „192.168.1.20“ (wieder am Ende)";
        QTest::newRow("Shift+Enter steps back") << "Ctrl+F 192.168.1 Shift+Enter"
                                                << "QoSFilter4" << 2 << "Treffer 2 von 2: „192.168.1“";
        QTest::newRow("F3 with the bar closed") << phone + " Esc F3"
                                                << "QoSFilter4" << 2 << "Treffer 2 von 2: „192.168.1.20“";
        QTest::newRow("Esc stays on the box found") << phone + " F3 Esc"
                                                    << "QoSFilter4" << 2 << "Treffer 2 von 2: „192.168.1.20“";
        QTest::newRow("F3 before any search opens the bar") << "F3 80 Enter"
                                                            << "QoSFilter2" << 1 << "Treffer 1 von 1: „80“";
        QTest::newRow("no match") << "Ctrl+F xyz Enter"
                                  << "" << 0 << "Nichts gefunden: „xyz“";
    }
    void keys()
    {
        QFETCH(QString, keys);
        QFETCH(int, tab);
        Editor e(config());
        QVERIFY(e.open());
        e.w->tabStrip()->setCurrentIndex(0);
        e.press(keys);
        QCOMPARE(e.w->tabStrip()->currentIndex(), tab);
        QTEST(e.selected(), "selected");
        QTEST(e.status(), "status");
        // Typing goes on in the bar while it is open; closed, the focus is on the box found.
        if (e.bar()->isVisible())
            QCOMPARE(QApplication::focusWidget(), e.field());
        else if (tab > 0)
            QVERIFY(e.w->findChild<ObjectPageView*>(e.w->CurrentPage()->Name())
                        ->isAncestorOf(QApplication::focusWidget()));
    }

    // A port being typed that its field refuses keeps the focus: neither the bar nor a step of
    // the search takes it away.
    void aRefusingFieldKeepsTheFocus_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::newRow("F3") << "F3";
        QTest::newRow("Ctrl+F") << "Ctrl+F";
    }
    void aRefusingFieldKeepsTheFocus()
    {
        QFETCH(QString, keys);
        Editor e(config());
        QVERIFY(e.open());
        e.press(QStringLiteral("Ctrl+F class Enter Esc")); // class 1, on Down
        QoSObject* filter = e.w->document().Object(QStringLiteral("QoSFilter3"));
        QVERIFY(e.w->ShowObject(filter));
        auto* view = e.w->findChild<ObjectPageView*>(e.w->CurrentPage()->Name());
        auto* port = view->box(filter->Name())->findChild<QLineEdit*>(QStringLiteral("txtPort"));
        QVERIFY(port);
        port->setFocus();
        port->selectAll();
        QTest::keyClicks(port, QStringLiteral("70000"));
        e.prompt.clear();
        const QString status = e.status();
        e.press(keys);
        QCOMPARE(QApplication::focusWidget(), port);
        QCOMPARE(e.status(), status); // no word of a match that is not shown
        QCOMPARE(e.selected(), QStringLiteral("QoSFilter3"));
        QVERIFY(!e.bar()->isVisible());
        QCOMPARE(e.prompt.log.size(), 1);
        QVERIFY(e.prompt.log.first().text.startsWith(QStringLiteral("Nur werte von 0 bis 65535")));
    }
};

QTEST_MAIN(TestFindBar)
#include "tst_findbar.moc"
