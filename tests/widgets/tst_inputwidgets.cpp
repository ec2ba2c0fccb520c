#include "app/statusbarline.h"
#include "document/scriptedprompt.h"
#include "inputs/inputbandwidth.h"
#include "inputs/inputdirection.h"
#include "inputs/inputip.h"
#include "inputs/inputoption.h"
#include "inputs/inputport.h"
#include "inputs/inputprio.h"
#include "inputs/inputtype.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

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

    void lockedFieldShowsNoUnitMenu()
    {
        InputBandwidth w;
        Host host(&w);
        QTest::mouseClick(child<QCheckBox>(&w, "chkLocked"), Qt::LeftButton);
        QVERIFY(w.field()->Locked());
        QTest::mouseRelease(child<QLabel>(&w, "lblMinUnit"), Qt::RightButton);
        QVERIFY(!child<QMenu>(&w, "mnuUnits")->isVisible());
        auto* txtMin = child<QLineEdit>(&w, "txtMin");
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

    // A value that does not fit is refused where it is typed: the field keeps the old one.
    void numbersThatDoNotFitAreRefusedWhileTyped()
    {
        ScriptedPrompt prompt;
        RecordingStatus line;
        InputBandwidth bandwidth;
        bandwidth.setPrompt(&prompt);
        bandwidth.field()->SetBandwidth(QStringLiteral("768kbit"));
        auto* number = child<QLineEdit>(&bandwidth, "txtMin");
        number->setFocus();
        // The seventh 9 would make 7689999999, beyond 32 bits.
        QTest::keyClicks(number, QStringLiteral("9999999"));
        QCOMPARE(bandwidth.field()->Bandwidth(), QStringLiteral("768999999kbit"));
        qDebug() << prompt.messages() << number->toolTip();
        QCOMPARE(prompt.messages().size(), 1);
        QVERIFY(prompt.messages().first().contains(QStringLiteral("Zahlenbereich")));
        QCOMPARE(number->text(), QStringLiteral("768999999"));

        InputPort port;
        port.setStatusLine(&line);
        port.field()->SetPort(QStringLiteral("1-2"));
        auto* ports = child<QLineEdit>(&port, "txtPort");
        QTest::keyClicks(ports, QStringLiteral("0000000000"));
        QCOMPARE(port.field()->Port(), QStringLiteral("1-2000000000"));
        QCOMPARE(ports->text(), QStringLiteral("1-2000000000"));
        QVERIFY(line.statusTexts.contains(QStringLiteral("Zuviele Ports")));
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

    void directionClickOnlyReports()
    {
        InputDirection w;
        Host host(&w);
        QSignalSpy spy(&w, &InputDirection::Change);
        auto* label = child<QLabel>(&w, "lblDirection");
        QCOMPARE(label->text(), QStringLiteral("down"));
        QTest::mouseClick(label, Qt::LeftButton);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(label->text(), QStringLiteral("down"));
        w.field()->SetText(QStringLiteral("up"));
        QCOMPARE(label->text(), QStringLiteral("up"));
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
        QTest::newRow("direction") << "direction" << "up" << "up" << "Richtung";
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
        } else if (widget == u"direction") {
            auto* w = new InputDirection(&host);
            w->field()->SetText(value);
            label = child<QLabel>(w, "lblDirection");
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
