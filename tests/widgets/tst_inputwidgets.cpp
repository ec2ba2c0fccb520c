#include "app/statusbarline.h"
#include "base/scriptedprompt.h"
#include "inputs/inputbandwidth.h"
#include "inputs/inputip.h"
#include "inputs/inputoption.h"
#include "inputs/inputport.h"
#include "inputs/inputprio.h"
#include "inputs/inputtype.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>

namespace {

template <typename T> T* child(QWidget* parent, const char* name)
{
    T* found = parent->findChild<T*>(QString::fromLatin1(name));
    if (!found)
        qFatal("no child %s", name);
    return found;
}

// Captions of a menu in order, a separator as "-".
QStringList captions(QMenu* menu)
{
    QStringList out;
    for (QAction* a : menu->actions())
        out << (a->isSeparator() ? QStringLiteral("-") : a->text());
    return out;
}

QAction* item(QMenu* menu, const QString& caption)
{
    for (QAction* a : menu->actions())
        if (a->text() == caption)
            return a;
    qFatal("no menu item");
    return nullptr;
}

// A window with the field under test and a second box to move the focus to. A field that
// lives on the test's stack is handed back before the window goes.
struct Host
{
    QWidget window;
    QLineEdit* other;
    QWidget* field;
    bool owns;
    explicit Host(QWidget* field, bool owns = false) : field(field), owns(owns)
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(field);
        other = new QLineEdit(&window);
        layout->addWidget(other);
        window.show();
        QApplication::setActiveWindow(&window);
    }
    ~Host()
    {
        if (!owns)
            field->setParent(nullptr);
    }
};

} // namespace

class TestInputWidgets : public QObject
{
    Q_OBJECT
private slots:
    void typedKeysAreFiltered_data()
    {
        // clang-format off
        QTest::addColumn<QString>("widget");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("text");
        QTest::newRow("bandwidth: digits only") << "bandwidth" << "txtMin" << "12a.5-" << "125";
        QTest::newRow("ip: octet above 255 refused") << "ip" << "txtIP" << "192.168.0.259" << "192.168.0.25";
        QTest::newRow("ip: fifth part refused") << "ip" << "txtIP" << "1.2.3.4.5" << "1.2.3.45";
        QTest::newRow("ip: mask digits only") << "ip" << "txtMaskBits" << "2x4" << "24";
        QTest::newRow("port: list characters") << "port" << "txtPort" << "21, 80a-x" << "21,80-";
        QTest::newRow("prio: digit above 3 dropped") << "prio" << "txtPrio" << "7" << "0";
        QTest::newRow("prio: digit replaces") << "prio" << "txtPrio" << "12" << "2";
        QTest::newRow("prio: plus and minus step") << "prio" << "txtPrio" << "+++-" << "2";
        QTest::newRow("type: no free text") << "type" << "txtType" << "abc" << "";
        QTest::newRow("option: no free text") << "option" << "txtOption" << "x," << "";
        // clang-format on
    }
    void typedKeysAreFiltered()
    {
        QFETCH(QString, widget);
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, text);
        QWidget* field = nullptr;
        if (widget == u"bandwidth") {
            auto* w = new InputBandwidth;
            w->field()->SetValue(QString());
            field = w;
        } else if (widget == u"ip") {
            field = new InputIP;
        } else if (widget == u"port") {
            field = new InputPort;
        } else if (widget == u"prio") {
            field = new InputPrio;
        } else if (widget == u"type") {
            field = new InputType;
        } else {
            field = new InputOption;
        }
        Host host(field, true);
        auto* edit = field->findChild<QLineEdit*>(box);
        QVERIFY(edit);
        edit->setFocus();
        QTest::keyClicks(edit, typed);
        QCOMPARE(edit->text(), text);
    }

    void bandwidthUnitMenu()
    {
        InputBandwidth w;
        ScriptedPrompt prompt;
        w.setPrompt(&prompt);
        w.field()->SetBandwidth(QStringLiteral("2048kbit"));
        Host host(&w);
        auto* menu = child<QMenu>(&w, "mnuUnits");
        auto* change = child<QMenu>(&w, "mnuChange");
        const QStringList units = QStringLiteral("bit,kbit,mbit,gbit,-,bps,kbps,mbps,gbps").split(u',');
        QCOMPARE(captions(change), units);
        QCOMPARE(captions(menu), QStringList{QStringLiteral("Umwandeln zu...")} + units);

        QSignalSpy spy(&w, &InputBandwidth::Change);
        QTest::mouseRelease(child<QLabel>(&w, "lblMinUnit"), Qt::RightButton);
        QVERIFY(menu->isVisible());
        item(change, QStringLiteral("mbit"))->trigger();
        menu->hide();
        QCOMPARE(child<QLineEdit>(&w, "txtMin")->text(), QStringLiteral("2"));
        QCOMPARE(child<QLabel>(&w, "lblMinUnit")->text(), QStringLiteral("mbit"));
        QCOMPARE(spy.count(), 1);
        item(menu, QStringLiteral("kbps"))->trigger();
        QCOMPARE(w.field()->Bandwidth(), QStringLiteral("2kbps"));
        QCOMPARE(spy.count(), 2);
        QVERIFY(prompt.log.isEmpty());
    }

    // A keyboard user tabs from the number to the unit and opens its menu there.
    void unitMenuFromTheKeyboard_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("menu key") << int(Qt::Key_Menu) << int(Qt::NoModifier);
        QTest::newRow("Shift+F10") << int(Qt::Key_F10) << int(Qt::ShiftModifier);
    }
    void unitMenuFromTheKeyboard()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        InputBandwidth w;
        Host host(&w);
        auto* number = child<QLineEdit>(&w, "txtMin");
        number->setFocus();
        QTest::keyClick(number, Qt::Key_Tab);
        auto* unit = child<QLabel>(&w, "lblMinUnit");
        QCOMPARE(QApplication::focusWidget(), unit);
        QTest::keyClick(unit, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(QApplication::activePopupWidget(), child<QMenu>(&w, "mnuUnits"));
        child<QMenu>(&w, "mnuUnits")->close();
        // A context-menu event of the keyboard, as some desktops send one, opens it too.
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, unit->rect().center(),
                                  unit->mapToGlobal(unit->rect().center()));
        QApplication::sendEvent(unit, &menuKey);
        QVERIFY(menuKey.isAccepted());
        QCOMPARE(QApplication::activePopupWidget(), child<QMenu>(&w, "mnuUnits"));
        child<QMenu>(&w, "mnuUnits")->close();
    }

    // A locked field keeps its value: no edits, no paste, no unit menu, and Tab passes the unit.
    void lockedFieldTakesNoEdits()
    {
        InputBandwidth w;
        w.field()->SetBandwidth(QStringLiteral("768kbit"));
        Host host(&w);
        QTest::mouseClick(child<QCheckBox>(&w, "chkLocked"), Qt::LeftButton);
        QVERIFY(w.field()->Locked());
        auto* unit = child<QLabel>(&w, "lblMinUnit");
        QTest::mouseRelease(unit, Qt::RightButton);
        QTest::keyClick(unit, Qt::Key_Menu);
        QVERIFY(!child<QMenu>(&w, "mnuUnits")->isVisible());
        auto* txtMin = child<QLineEdit>(&w, "txtMin");
        txtMin->setFocus();
        QTest::keyClicks(txtMin, QStringLiteral("12"));
        QApplication::clipboard()->setText(QStringLiteral("5"));
        QTest::keyClick(txtMin, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(w.field()->Bandwidth(), QStringLiteral("768kbit"));
        QTest::keyClick(txtMin, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), child<QCheckBox>(&w, "chkLocked"));
        QCOMPARE(txtMin->palette().color(QPalette::Base), QColor(192, 192, 192));
        w.field()->SetIsValid(false);
        QCOMPARE(txtMin->palette().color(QPalette::Base), QColor(255, 128, 128));
    }

    void ipSlashMovesToMask()
    {
        InputIP w;
        Host host(&w);
        auto* ip = child<QLineEdit>(&w, "txtIP");
        ip->setFocus();
        QTest::keyClicks(ip, QStringLiteral("192.168.0.1/"));
        QCOMPARE(QApplication::focusWidget(), child<QLineEdit>(&w, "txtMaskBits"));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("24"));
        QCOMPARE(w.field()->Text(), QStringLiteral("192.168.0.1/24"));
    }

    void ipLeaveCheck_data()
    {
        // clang-format off
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("kept");
        QTest::newRow("three parts") << "192.168.0" << true;
        QTest::newRow("octet 256") << "1.2.3.256" << true;
        QTest::newRow("good") << "192.168.0.1" << false;
        QTest::newRow("empty") << "" << false;
        // clang-format on
    }
    void ipLeaveCheck()
    {
        QFETCH(QString, address);
        QFETCH(bool, kept);
        InputIP w;
        ScriptedPrompt prompt;
        w.setPrompt(&prompt);
        w.field()->SetAddress(address);
        Host host(&w);
        auto* ip = child<QLineEdit>(&w, "txtIP");
        ip->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), ip);
        host.other->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        QCOMPARE(QApplication::focusWidget(), kept ? static_cast<QWidget*>(ip) : host.other);
        QCOMPARE(prompt.log.size(), kept ? 1 : 0);
        if (kept) {
            QCOMPARE(prompt.log.first().text, QStringLiteral("Keine gültige IP!\n\nRichtiges Format:    "
                                                             "123.123.123.123\nbzw.:                       "
                                                             "123.123.123.123/24"));
            QCOMPARE(prompt.log.first().icon, UserPrompt::Icon::Critical);
        }
    }

    void ipEditMenu()
    {
        InputIP w;
        Host host(&w);
        auto* menu = child<QMenu>(&w, "mnuEdit");
        QCOMPARE(captions(menu), QStringLiteral("Rü&ckgängig,-,&Ausschneiden,&Kopieren,Ein&fügen,&Löschen,-,"
                                                "Alles &markieren")
                                     .split(u','));
        QApplication::clipboard()->setText(QStringLiteral("10.0.0.0/8/9"));
        QTest::mouseRelease(child<QLineEdit>(&w, "txtIP"), Qt::RightButton);
        QVERIFY(menu->isVisible());
        QVERIFY(!item(menu, QStringLiteral("&Kopieren"))->isEnabled());
        item(menu, QStringLiteral("Ein&fügen"))->trigger();
        menu->hide();
        QCOMPARE(child<QLineEdit>(&w, "txtIP")->text(), QStringLiteral("10.0.0.0"));
        QCOMPARE(child<QLineEdit>(&w, "txtMaskBits")->text(), QStringLiteral("8"));
        QTest::mouseRelease(child<QLineEdit>(&w, "txtMaskBits"), Qt::RightButton);
        item(menu, QStringLiteral("&Ausschneiden"))->trigger();
        menu->hide();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("10.0.0.0/8"));
        QCOMPARE(w.field()->Text(), QString());
    }

    void ipCtrlVSplitsTheText()
    {
        InputIP w;
        Host host(&w);
        QApplication::clipboard()->setText(QStringLiteral("172.16.0.0/12"));
        auto* ip = child<QLineEdit>(&w, "txtIP");
        ip->setFocus();
        QTest::keyClick(ip, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(w.field()->Address(), QStringLiteral("172.16.0.0"));
        QCOMPARE(w.field()->MaskBits(), QStringLiteral("12"));
    }

    void portLeaveCheck_data()
    {
        // clang-format off
        QTest::addColumn<QString>("port");
        QTest::addColumn<bool>("kept");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("message");
        QTest::newRow("21 ports") << "1-21" << true << "Zuviele Ports" << "";
        QTest::newRow("20 ports") << "1-20" << false << "" << "";
        QTest::newRow("out of range") << "70000" << true << "" << "Nur werte von 0 bis 65535 sind erlaubt!";
        QTest::newRow("only the first is checked") << "21,70000" << false << "" << "";
        // clang-format on
    }
    void portLeaveCheck()
    {
        QFETCH(QString, port);
        QFETCH(bool, kept);
        QFETCH(QString, status);
        QFETCH(QString, message);
        InputPort w;
        ScriptedPrompt prompt;
        RecordingStatus line;
        w.setPrompt(&prompt);
        w.setStatusLine(&line);
        w.field()->SetPort(port);
        Host host(&w);
        auto* box = child<QLineEdit>(&w, "txtPort");
        box->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), box);
        host.other->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        QCOMPARE(QApplication::focusWidget(), kept ? static_cast<QWidget*>(box) : host.other);
        QCOMPARE(line.statusTexts, status.isEmpty() ? QStringList() : QStringList{status});
        QCOMPARE(prompt.messages(), message.isEmpty() ? QStringList() : QStringList{message});
        if (!message.isEmpty())
            QCOMPARE(prompt.log.first().icon, UserPrompt::Icon::None);
    }

    // A number that does not fit is refused where it is typed: the field keeps the old one and
    // says why in the status line and the tooltip, without a box in the middle of typing. The
    // notice goes once the number is fine again; a number pasted whole still gets the box.
    void bandwidthOutOfRange()
    {
        ScriptedPrompt prompt;
        RecordingStatus line;
        InputBandwidth bandwidth;
        bandwidth.setPrompt(&prompt);
        bandwidth.setStatusLine(&line);
        bandwidth.field()->SetBandwidth(QStringLiteral("768kbit"));
        Host host(&bandwidth);
        auto* number = child<QLineEdit>(&bandwidth, "txtMin");
        number->setFocus();
        number->setCursorPosition(1);
        // The seventh 9 would make 7999999968, beyond 32 bits; the caret stays where it was.
        QTest::keyClicks(number, QStringLiteral("9999999"));
        QCOMPARE(bandwidth.field()->Bandwidth(), QStringLiteral("799999968kbit"));
        QCOMPARE(number->text(), QStringLiteral("799999968"));
        QCOMPARE(number->cursorPosition(), 7);
        QVERIFY(prompt.log.isEmpty());
        QCOMPARE(line.statusTexts.size(), 1);
        QVERIFY(line.statusTexts.last().contains(QStringLiteral("Zahlenbereich")));
        QCOMPARE(number->toolTip(), line.statusTexts.last());

        QTest::keyClick(number, Qt::Key_Backspace);
        QCOMPARE(line.statusTexts.last(), QString());
        QCOMPARE(number->toolTip(), QString());

        QApplication::clipboard()->setText(QStringLiteral("99999999999"));
        number->selectAll();
        QTest::keyClick(number, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(number->text(), QStringLiteral("79999968"));
        QCOMPARE(prompt.messages().size(), 1);
        QVERIFY(prompt.messages().first().contains(QStringLiteral("Zahlenbereich")));
        QCOMPARE(prompt.log.first().icon, UserPrompt::Icon::Warning);
        QCOMPARE(line.statusTexts.last(), QString());
    }

    // A list beyond 32 bits of ports is refused as too many; the notice goes once the list
    // fits again, but not when the status line has said something else since.
    void tooManyPortsNotice_data()
    {
        QTest::addColumn<bool>("otherMessage");
        QTest::newRow("fixed list clears the notice") << false;
        QTest::newRow("a later message stays") << true;
    }
    void tooManyPortsNotice()
    {
        QFETCH(bool, otherMessage);
        RecordingStatus line;
        InputPort port;
        port.setStatusLine(&line);
        port.field()->SetPort(QStringLiteral("1-2"));
        Host host(&port);
        auto* ports = child<QLineEdit>(&port, "txtPort");
        ports->setFocus();
        QTest::keyClicks(ports, QStringLiteral("0000000000"));
        QCOMPARE(port.field()->Port(), QStringLiteral("1-2000000000"));
        QCOMPARE(line.statusTexts, QStringList{QStringLiteral("Zuviele Ports")});
        if (otherMessage)
            line.SetStatusText(QStringLiteral("Datei gespeichert."));
        ports->selectAll();
        QTest::keyClicks(ports, QStringLiteral("21"));
        QCOMPARE(line.statusTexts.last(), otherMessage ? QStringLiteral("Datei gespeichert.") : QString());
    }

    // Every way of pasting goes through the field's rule: the priority takes what typing could,
    // an address is split, and a text the writer would refuse is refused at once.
    void pasteRoutes_data()
    {
        QTest::addColumn<QString>("widget");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("route");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("refused");
        const struct
        {
            const char* widget;
            const char* box;
            const char* text;
            const char* value;
            bool refused;
        } cases[] = {
            {"prio", "txtPrio", "1hello", "1", false},
            {"ip", "txtIP", "9.9.9.9/16", "9.9.9.9/16", false},
            {"ip", "txtMaskBits", "9.9.9.9/16", "9.9.9.9/16", false},
            {"ip", "txtIP", "9.9.9.9\n", "", true},
            {"port", "txtPort", "21,80", "21,80", false},
            {"port", "txtPort", "21\n80", "", true},
            {"bandwidth", "txtMin", "512", "512kbit", false},
            {"bandwidth", "txtMin", "5'", "kbit", true},
            {"type", "txtType", "server", "server", false},
            {"option", "txtOption", "ICMP", "ICMP", false},
        };
        for (const auto& c : cases) {
            for (const char* route : {"menu", "Ctrl+V", "Shift+Insert", "middle button", "drop"}) {
                const QByteArray r(route);
                // The mask box discards a typed Ctrl+V; the type's menu is its list of types.
                if ((qstrcmp(c.box, "txtMaskBits") == 0 && r == "Ctrl+V") ||
                    (qstrcmp(c.box, "txtType") == 0 && r == "menu"))
                    continue;
                QTest::addRow("%s %s: %s", c.box, c.refused ? "refused" : "taken", route)
                    << c.widget << c.box << route << QString::fromUtf8(c.text) << c.value << c.refused;
            }
        }
    }
    void pasteRoutes()
    {
        QFETCH(QString, widget);
        QFETCH(QString, box);
        QFETCH(QString, route);
        QFETCH(QString, text);
        QFETCH(bool, refused);
        ScriptedPrompt prompt;
        QWidget* field = nullptr;
        std::function<QString()> value;
        if (widget == u"prio") {
            auto* w = new InputPrio;
            value = [w] { return w->field()->Value(); };
            field = w;
        } else if (widget == u"ip") {
            auto* w = new InputIP;
            w->setPrompt(&prompt);
            value = [w] { return w->field()->Text(); };
            field = w;
        } else if (widget == u"port") {
            auto* w = new InputPort;
            w->setPrompt(&prompt);
            value = [w] { return w->field()->Port(); };
            field = w;
        } else if (widget == u"bandwidth") {
            auto* w = new InputBandwidth;
            w->setPrompt(&prompt);
            w->field()->SetValue(QString());
            value = [w] { return w->field()->Bandwidth(); };
            field = w;
        } else if (widget == u"type") {
            auto* w = new InputType;
            value = [w] { return w->field()->Text(); };
            field = w;
        } else {
            auto* w = new InputOption;
            value = [w] { return w->field()->Text(); };
            field = w;
        }
        Host host(field, true);
        auto* edit = child<QLineEdit>(field, box.toLatin1().constData());
        edit->setFocus();
        QClipboard* clipboard = QApplication::clipboard();
        if (route == u"menu") {
            clipboard->setText(text);
            QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, edit->rect().center(),
                                      edit->mapToGlobal(edit->rect().center()));
            QApplication::sendEvent(edit, &menuKey);
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QVERIFY(menu);
            auto* paste = menu->findChild<QAction*>(QStringLiteral("itmEditPaste"));
            QVERIFY(paste && paste->isEnabled());
            paste->trigger();
            menu->close();
        } else if (route == u"Ctrl+V") {
            clipboard->setText(text);
            QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        } else if (route == u"Shift+Insert") {
            clipboard->setText(text);
            QTest::keyClick(edit, Qt::Key_Insert, Qt::ShiftModifier);
        } else if (route == u"middle button") {
            if (!clipboard->supportsSelection())
                QSKIP("no selection clipboard on this platform");
            clipboard->setText(text, QClipboard::Selection);
            QTest::mouseClick(edit, Qt::MiddleButton);
        } else {
            QMimeData data;
            data.setText(text);
            // A drop goes to the widget that took the drag when it entered.
            QDragEnterEvent enter(edit->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(edit, &enter);
            QDropEvent drop(QPointF(edit->rect().center()), Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(edit, &drop);
            QVERIFY(drop.isAccepted());
        }
        QTEST(value(), "value");
        QCOMPARE(prompt.log.size(), refused ? 1 : 0);
        if (refused) {
            QVERIFY(prompt.log.first().text.startsWith(QStringLiteral("Der Text wird nicht eingefügt")));
            QCOMPARE(prompt.log.first().icon, UserPrompt::Icon::Warning);
        }
    }

    void portCountShown()
    {
        InputPort w;
        QSignalSpy spy(&w, &InputPort::Change);
        w.field()->SetPort(QStringLiteral("6000-6010"));
        QCOMPARE(child<QLabel>(&w, "lblFilterCount")->text(), QStringLiteral("11"));
        QCOMPARE(spy.count(), 1);
    }

    void typeButtonAndDoubleClickStep()
    {
        InputType w;
        Host host(&w);
        QSignalSpy spy(&w, &InputType::Change);
        auto* button = child<QToolButton>(&w, "cmdType");
        auto* box = child<QLineEdit>(&w, "txtType");
        QStringList seen;
        for (int i = 0; i < 3; ++i) {
            QTest::mouseClick(button, Qt::LeftButton);
            seen << box->text();
        }
        QCOMPARE(seen, QStringLiteral("client,server,").split(u','));
        QTest::mouseDClick(box, Qt::LeftButton);
        QCOMPARE(box->text(), QStringLiteral("client"));
        QCOMPARE(spy.count(), 4);
        QCOMPARE(captions(child<QMenu>(&w, "mnuType")), QStringLiteral("client,server").split(u','));
    }

    void optionMenuAndKeys()
    {
        InputOption w;
        Host host(&w);
        QSignalSpy spy(&w, &InputOption::Change);
        auto* menu = child<QMenu>(&w, "mnuOptions");
        QCOMPARE(captions(menu), QStringLiteral("ACK,ICMP,TOSMD,TOSMT,TOSMR,TOSMC").split(u','));
        QTest::mouseClick(child<QToolButton>(&w, "cmdOption"), Qt::LeftButton);
        QVERIFY(menu->isVisible());
        item(menu, QStringLiteral("TOSMR"))->trigger();
        menu->hide();
        auto* box = child<QLineEdit>(&w, "txtOption");
        QCOMPARE(box->text(), QStringLiteral("TOSMR"));
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(box->text(), QStringLiteral("TOSMC"));
        QTest::keyClick(box, Qt::Key_Delete);
        QCOMPARE(box->text(), QString());
        QCOMPARE(spy.count(), 3);
        QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
        QVERIFY(menu->isVisible());
        menu->hide();
    }

    void prioButtonsAndClearKeys()
    {
        InputPrio w;
        Host host(&w);
        QSignalSpy spy(&w, &InputPrio::Change);
        auto* box = child<QLineEdit>(&w, "txtPrio");
        QTest::mouseClick(child<QToolButton>(&w, "cmdPrioDec"), Qt::LeftButton);
        QCOMPARE(box->text(), QStringLiteral("3"));
        QTest::mouseClick(child<QToolButton>(&w, "cmdPrioInc"), Qt::LeftButton);
        QCOMPARE(box->text(), QStringLiteral("0"));
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Space);
        QCOMPARE(box->text(), QString());
        QCOMPARE(spy.count(), 3);
    }

    // The boxes of a class or filter bind to the fields their object owns.
    void boundToAnExternalField()
    {
        auto* shared = new BandwidthField;
        shared->SetBandwidth(QStringLiteral("10Mbit"));
        InputBandwidth a(shared);
        InputBandwidth b;
        b.setField(shared);
        QTest::keyClicks(child<QLineEdit>(&a, "txtMin"), QStringLiteral("0"));
        QCOMPARE(shared->Value(), QStringLiteral("100"));
        QCOMPARE(child<QLineEdit>(&b, "txtMin")->text(), QStringLiteral("100"));
        delete shared;
        QCOMPARE(b.field()->Bandwidth(), QStringLiteral("0kbit")); // back on its own field
        QTest::keyClicks(child<QLineEdit>(&b, "txtMin"), QStringLiteral("5"));
        QCOMPARE(b.field()->Value(), QStringLiteral("05"));
    }

    // A label whose text changes is read by that text; the fixed words saying what it is
    // become its description.
    void changingLabelsReadTheirText_data()
    {
        QTest::addColumn<QString>("widget");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("description");
        // clang-format off
        QTest::newRow("unit") << "bandwidth" << "10Mbit" << "Mbit" << "Einheit";
        QTest::newRow("port count") << "port" << "21,80,6000-6010" << "13" << "Anzahl Ports";
        QTest::newRow("status line") << "status" << "Datei öffnen abgebrochen." << "Datei öffnen abgebrochen." << "Statuszeile";
        QTest::newRow("empty status line") << "status" << "" << "Statuszeile" << "Statuszeile";
        // clang-format on
    }
    void changingLabelsReadTheirText()
    {
        QFETCH(QString, widget);
        QFETCH(QString, value);
        QFETCH(QString, name);
        QFETCH(QString, description);
        QWidget host;
        QLabel* label = nullptr;
        if (widget == u"bandwidth") {
            auto* w = new InputBandwidth(&host);
            w->field()->SetBandwidth(value);
            label = child<QLabel>(w, "lblMinUnit");
        } else if (widget == u"port") {
            auto* w = new InputPort(&host);
            w->field()->SetPort(value);
            label = child<QLabel>(w, "lblFilterCount");
        } else {
            auto* bar = new QStatusBar(&host);
            StatusBarLine line(bar);
            line.SetStatusText(QStringLiteral("vorher"));
            line.SetStatusText(value);
            label = bar->findChild<QLabel*>(QStringLiteral("pnlStatus"));
        }
        QCOMPARE(label->accessibleName(), name);
        QCOMPARE(label->accessibleDescription(), description);
    }
};

QTEST_MAIN(TestInputWidgets)
#include "tst_inputwidgets.moc"
