#include "app/statusbarline.h"
#include "base/scriptedprompt.h"
#include "inputs/inputbandwidth.h"
#include "inputs/inputip.h"
#include "inputs/inputport.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QVBoxLayout>

// The input fields on their own, outside the boxes: their menus, drops, the notices of the
// status line, and what a screen reader is told. Typing and pasting into the fields of a box
// is tested with the boxes, leaving a field with the window.
namespace {

template <typename T> T* child(QWidget* parent, const char* name)
{
    T* found = parent->findChild<T*>(QString::fromLatin1(name));
    if (!found)
        qFatal("no child %s", name);
    return found;
}

QAction* item(QMenu* menu, const QString& caption)
{
    for (QAction* a : menu->actions())
        if (a->text() == caption)
            return a;
    qFatal("no menu item");
    return nullptr;
}

// A shown, active window around the field under test.
struct Host
{
    QWidget window;
    explicit Host(QWidget* field)
    {
        (new QVBoxLayout(&window))->addWidget(field);
        window.show();
        QApplication::setActiveWindow(&window);
    }
};

} // namespace

class TestInputWidgets : public QObject
{
    Q_OBJECT
private slots:
    // A text dropped on a field outside the boxes (the common page, the calculator) goes through
    // the field's rule, as a paste does.
    void aDroppedText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("messages");
        // clang-format off
        QTest::newRow("a number") << "512" << "512kbit" << 0;
        QTest::newRow("a quote the writer would refuse") << "5'" << "kbit" << 1;
        // clang-format on
    }
    void aDroppedText()
    {
        QFETCH(QString, text);
        ScriptedPrompt prompt;
        auto* w = new InputBandwidth;
        w->setPrompt(&prompt);
        w->field()->SetValue(QString());
        Host host(w);
        auto* edit = child<QLineEdit>(w, "txtMin");
        QMimeData data;
        data.setText(text);
        // A drop goes to the widget that took the drag when it entered.
        QDragEnterEvent enter(edit->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(edit, &enter);
        QDropEvent drop(QPointF(edit->rect().center()), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(edit, &drop);
        QVERIFY(drop.isAccepted());
        QTEST(w->field()->Bandwidth(), "value");
        QTEST(int(prompt.log.size()), "messages");
    }

    // The unit's menu converts the number, or only names another unit.
    void theUnitMenu()
    {
        ScriptedPrompt prompt;
        auto* w = new InputBandwidth;
        w->setPrompt(&prompt);
        w->field()->SetBandwidth(QStringLiteral("2048kbit"));
        Host host(w);
        QSignalSpy change(w, &InputBandwidth::Change);
        auto* menu = child<QMenu>(w, "mnuUnits");
        QTest::mouseRelease(child<QLabel>(w, "lblMinUnit"), Qt::RightButton);
        QVERIFY(menu->isVisible());
        item(child<QMenu>(w, "mnuChange"), QStringLiteral("mbit"))->trigger();
        menu->hide();
        QCOMPARE(child<QLineEdit>(w, "txtMin")->text(), QStringLiteral("2"));
        QCOMPARE(child<QLabel>(w, "lblMinUnit")->text(), QStringLiteral("mbit"));
        item(menu, QStringLiteral("kbps"))->trigger();
        QCOMPARE(w->field()->Bandwidth(), QStringLiteral("2kbps"));
        QCOMPARE(change.count(), 2);
        QVERIFY(prompt.log.isEmpty());
    }

    // The address's own menu: copy and cut take the whole address from either of its boxes.
    void theAddressMenu()
    {
        auto* w = new InputIP;
        Host host(w);
        auto* menu = child<QMenu>(w, "mnuEdit");
        auto* mask = child<QLineEdit>(w, "txtMaskBits");
        QTest::mouseRelease(mask, Qt::RightButton);
        QVERIFY(menu->isVisible());
        QVERIFY(!child<QAction>(menu, "itmEditCopy")->isEnabled()); // nothing to copy yet
        menu->hide();
        w->field()->SetText(QStringLiteral("10.0.0.0/8"));
        QTest::mouseRelease(mask, Qt::RightButton);
        child<QAction>(menu, "itmEditCut")->trigger();
        menu->hide();
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("10.0.0.0/8"));
        QCOMPARE(w->field()->Text(), QString());
    }

    // A number that does not fit is refused where it is typed: the field keeps the old one and
    // says why in the status line and the tooltip, without a box in the middle of typing. The
    // notice goes once the number is fine again; a number pasted whole still gets the box.
    void bandwidthOutOfRange()
    {
        ScriptedPrompt prompt;
        RecordingStatus line;
        auto* bandwidth = new InputBandwidth;
        bandwidth->setPrompt(&prompt);
        bandwidth->setStatusLine(&line);
        bandwidth->field()->SetBandwidth(QStringLiteral("768kbit"));
        Host host(bandwidth);
        auto* number = child<QLineEdit>(bandwidth, "txtMin");
        number->setFocus();
        number->setCursorPosition(1);
        // The seventh 9 would make 7999999968, beyond 32 bits; the caret stays where it was.
        QTest::keyClicks(number, QStringLiteral("9999999"));
        QCOMPARE(bandwidth->field()->Bandwidth(), QStringLiteral("799999968kbit"));
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
        auto* port = new InputPort;
        port->setStatusLine(&line);
        Host host(port);
        auto* ports = child<QLineEdit>(port, "txtPort");
        ports->setFocus();
        QTest::keyClicks(ports, QStringLiteral("1-20000000000"));
        QCOMPARE(port->field()->Port(), QStringLiteral("1-2000000000"));
        QCOMPARE(line.statusTexts, QStringList{QStringLiteral("Zuviele Ports")});
        if (otherMessage)
            line.SetStatusText(QStringLiteral("Datei gespeichert."));
        ports->selectAll();
        QTest::keyClicks(ports, QStringLiteral("21"));
        QCOMPARE(line.statusTexts.last(), otherMessage ? QStringLiteral("Datei gespeichert.") : QString());
    }

    // The boxes of a class or filter bind to the fields their object owns, and fall back to
    // their own field when that one goes.
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
        QCOMPARE(b.field()->Bandwidth(), QStringLiteral("0kbit"));
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
            label = child<QLabel>(bar, "pnlStatus");
        }
        QTEST(label->accessibleName(), "name");
        QTEST(label->accessibleDescription(), "description");
        if (widget != u"status")
            QCOMPARE(label->text(), label->accessibleName());
    }
};

QTEST_MAIN(TestInputWidgets)
#include "tst_inputwidgets.moc"
