#include "inputs/bandwidthfield.h"
#include "inputs/palettecolor.h"
#include "model/history.h"
#include "model/qoscommon.h"
#include "model/qosfilterbox.h"
#include "pageviewfixture.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QToolButton>
#include <QWindow>

// The class and filter boxes: the title bar, the box's keys and menu, edits that go through
// the core, colours that stay true, and what a screen reader is told.
class TestBoxes : public QObject
{
    Q_OBJECT

    template <typename T> static T* child(QWidget* parent, const char* name)
    {
        T* found = parent->findChild<T*>(QString::fromLatin1(name));
        if (!found)
            qFatal("no child %s", name);
        return found;
    }
    // The text box of a field: the field itself, or the box inside a bandwidth.
    static QLineEdit* textOf(QWidget* box, const QString& field)
    {
        auto* w = box->findChild<QWidget*>(field);
        return qobject_cast<QLineEdit*>(w) ? qobject_cast<QLineEdit*>(w) : w->findChild<QLineEdit*>();
    }
    // The class 1 or the filter 1 of the page, whichever has the property.
    static QoSObject* owner(PageViewFixture& f, const QByteArray& property)
    {
        if (QoSClass::staticMetaObject.indexOfProperty(property) >= 0)
            return f.cls(1);
        return f.flt(1);
    }
    static QColor numberBackground(QoSObjectBox* box)
    {
        return textOf(box, QStringLiteral("txtMin"))->palette().color(QPalette::Base);
    }

private slots:
    void editingTheTitle_data()
    {
        QTest::addColumn<QString>("start"); // "F2" or "double click"
        QTest::addColumn<QString>("input"); // typed, or after "paste:" pasted with Shift+Insert
        QTest::addColumn<QString>("end");   // "Enter", "leave" or "Escape"
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("messages");
        // clang-format off
        QTest::newRow("F2, Enter") << "F2" << "Telefon" << "Enter" << "Telefon" << 0;
        QTest::newRow("double click, leaving the field") << "double click" << "Telefon" << "leave" << "Telefon" << 0;
        QTest::newRow("Escape keeps the caption") << "F2" << "Telefon" << "Escape" << "alt" << 0;
        QTest::newRow("a pasted caption") << "F2" << "paste:Telefon" << "Enter" << "Telefon" << 0;
        QTest::newRow("a pasted quote could not be written") << "F2" << "paste:Bob's" << "Enter" << "alt" << 1;
        // clang-format on
    }
    void editingTheTitle()
    {
        QFETCH(QString, start);
        QFETCH(QString, input);
        QFETCH(QString, end);
        QFETCH(int, messages);
        PageViewFixture f(QStringLiteral("C C"));
        f.cls(1)->SetCaption(QStringLiteral("alt"));
        QoSObjectBox* box = f.box(f.cls(1));
        TittleBar* title = box->titleBar();
        box->focusControl()->setFocus();
        if (start == u"F2")
            QTest::keyClick(box->focusControl(), Qt::Key_F2);
        else
            QTest::mouseDClick(title, Qt::LeftButton);
        QLineEdit* editor = title->editor();
        QVERIFY(editor);
        QCOMPARE(editor->text(), QStringLiteral("alt"));
        if (input.startsWith(u"paste:")) {
            QApplication::clipboard()->setText(input.mid(6));
            QTest::keyClick(editor, Qt::Key_Insert, Qt::ShiftModifier);
        } else {
            QTest::keyClicks(editor, input); // over the whole caption, which starts selected
        }
        if (end == u"Enter")
            QTest::keyClick(editor, Qt::Key_Return);
        else if (end == u"Escape")
            QTest::keyClick(editor, Qt::Key_Escape);
        else
            f.box(f.cls(2))->focusControl()->setFocus();
        f.settle();
        QVERIFY(!title->IsEditing());
        QTEST(f.cls(1)->Caption(), "caption");
        QCOMPARE(box->accessibleName(), f.cls(1)->Caption());
        QCOMPARE(f.prompt.log.size(), messages);
        if (messages)
            QCOMPARE(f.prompt.log.first().icon, UserPrompt::Icon::Warning);
    }

    // A caption cut with an ellipsis is read whole in the tool tip where the mouse rests: on the
    // title, whose label lets the mouse through.
    void aLongCaptionShowsWholeInItsToolTip()
    {
        PageViewFixture f(QStringLiteral("C"));
        QoSObjectBox* box = f.box(f.cls(1));
        const auto tip = [box] {
            QString shown;
            for (QWidget* w = box->childAt(box->titleBar()->geometry().center()); w && shown.isEmpty();
                 w = w->parentWidget())
                shown = w->toolTip();
            return shown;
        };
        const QString caption = QStringLiteral("Telefonanlage im Büro mit sehr langem Namen");
        f.cls(1)->SetCaption(caption);
        QCOMPARE(tip(), caption);
        f.cls(1)->SetCaption(QStringLiteral("Telefon"));
        QCOMPARE(tip(), QString());
    }

    // The active title takes the scheme's selection colour, also when the scheme changes.
    void theTitleBarsColoursFollowTheScheme()
    {
        TittleBar bar;
        const auto shown = [&bar] {
            return child<QLabel>(&bar, "Label2")->palette().color(QPalette::Window);
        };
        bar.SetActive(false);
        QVERIFY(shown() != bar.palette().color(QPalette::Active, QPalette::Highlight));
        bar.SetActive(true);
        QCOMPARE(shown(), bar.palette().color(QPalette::Active, QPalette::Highlight));
        QPalette scheme = bar.palette();
        scheme.setColor(QPalette::Active, QPalette::Highlight, QColor(0x20, 0x80, 0x20));
        bar.setPalette(scheme);
        QCOMPARE(shown(), QColor(0x20, 0x80, 0x20));
    }

    void theBoxKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("deletes");
        // clang-format off
        QTest::newRow("Ctrl+C copies nothing") << int(Qt::Key_C) << int(Qt::ControlModifier) << false;
        QTest::newRow("Ctrl+V pastes nothing") << int(Qt::Key_V) << int(Qt::ControlModifier) << false;
        QTest::newRow("Ctrl+X cuts") << int(Qt::Key_X) << int(Qt::ControlModifier) << true;
        QTest::newRow("Ctrl+Alt+X is not Ctrl+X") << int(Qt::Key_X) << int(Qt::ControlModifier | Qt::AltModifier) << false;
        QTest::newRow("Delete") << int(Qt::Key_Delete) << int(Qt::NoModifier) << true;
        QTest::newRow("Shift+Delete") << int(Qt::Key_Delete) << int(Qt::ShiftModifier) << true;
        // clang-format on
    }
    void theBoxKeys()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(bool, deletes);
        PageViewFixture f(QStringLiteral("C S1 S1"));
        f.doc.SetModified(false);
        QoSObjectBox* box = f.box(f.cls(2));
        box->focusControl()->setFocus();
        QTest::keyClick(box->focusControl(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        f.settle();
        QCOMPARE(f.cls(2) == nullptr, deletes);
        QCOMPARE(f.doc.IsModified(), deletes);
        if (deletes) {
            // The focus goes to the page, not on to the next box: a second Delete deletes nothing.
            QCOMPARE(QApplication::focusWidget(), f.view->pane());
            QCOMPARE(f.page->SelectedObject(), nullptr);
            QCOMPARE(f.view->boxWidgetCount(), 2);
        }
    }

    // Everything on a box's menu but cut, delete and the title leaves the document as it was;
    // cut takes the box away.
    void theBoxMenu()
    {
        PageViewFixture f(QStringLiteral("C F1"));
        f.doc.SetModified(false);
        std::unique_ptr<QMenu> menu(f.box(f.flt(1))->createContextMenu(nullptr));
        QStringList names;
        for (QAction* item : menu->actions()) {
            names << item->objectName();
            if (!QStringList{"", "itmEditCut", "itmEditDelete", "itmEditCaption"}.contains(
                    item->objectName()))
                item->trigger();
        }
        QVERIFY(names.contains(QStringLiteral("itmFilterProperties")));
        QVERIFY(!f.doc.IsModified());
        QCOMPARE(f.page->ObjectCount(), 2);
        menu->findChild<QAction*>(QStringLiteral("itmEditCut"))->trigger();
        QCOMPARE(f.page->ObjectCount(), 1);
    }

    // Whatever is typed or pasted into a box's field (by its menu, Ctrl+V, Shift+Insert or the
    // middle button) goes through the field's rule and reaches its object, which marks the
    // document and, for a filter, enters the history. Typed keys go wherever the focus is, so
    // that the slash of an address moves on to the mask; a paste the writer would refuse is
    // refused at once. (A drop on a box is the box's, for its plugs.)
    void typingAndPastingReachTheObject_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("route");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("property");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("shown"); // in the field's text boxes
        QTest::addColumn<int>("messages");
        const struct
        {
            const char *field, *routes, *text, *property, *value, *shown;
            int messages;
        } cases[] = {
            // clang-format off
            {"txtMin", "typed", "5a1.2", "QoSMinBandWidth", "512kbit", "512", 0},
            {"txtPrio", "typed", "17+", "QoSPrio", "2", "2", 0},
            {"txtPort", "typed", "21, 80a-x", "QoSPort", "21,80-", "21,80-", 0},
            {"txtIP", "typed", "10.0.0.1/2x4", "QoSIP", "10.0.0.1/24", "10.0.0.1|24", 0},
            {"txtType", "typed", "abc", "QoSType", "", "", 0},
            {"txtOption", "typed", "x,", "QoSOption", "", "", 0},
            {"txtPrio", "pasted", "1hello", "QoSPrio", "1", "1", 0},
            {"txtIP", "pasted", "9.9.9.9/16", "QoSIP", "9.9.9.9/16", "9.9.9.9|16", 0},
            {"txtMaskBits", "pasted", "9.9.9.9/16", "QoSIP", "9.9.9.9/16", "9.9.9.9|16", 0},
            {"txtIP", "pasted", "9.9.9.9\n", "QoSIP", "", "|", 1},
            {"txtPort", "pasted", "21,80", "QoSPort", "21,80", "21,80", 0},
            {"txtPort", "pasted", "21\n80", "QoSPort", "", "", 1},
            {"txtMin", "pasted", "512", "QoSMinBandWidth", "512kbit", "512", 0},
            {"txtMin", "pasted", "5'", "QoSMinBandWidth", "kbit", "", 1},
            {"txtType", "pasted", "server", "QoSType", "server", "server", 0},
            {"txtOption", "pasted", "ICMP", "QoSOption", "ICMP", "ICMP", 0},
            // clang-format on
        };
        for (const auto& c : cases) {
            const QStringList routes = qstrcmp(c.routes, "typed") == 0
                                           ? QStringList{"typed"}
                                           : QStringList{"menu", "Ctrl+V", "Shift+Insert", "middle button"};
            for (const QString& route : routes) {
                // The mask box discards a typed Ctrl+V; the type's menu is its list of types.
                if ((qstrcmp(c.field, "txtMaskBits") == 0 && route == u"Ctrl+V") ||
                    (qstrcmp(c.field, "txtType") == 0 && route == u"menu"))
                    continue;
                QTest::addRow("%s %s: %s", c.field, c.text, qPrintable(route))
                    << c.field << route << QString::fromUtf8(c.text) << c.property << c.value << c.shown
                    << c.messages;
            }
        }
    }
    void typingAndPastingReachTheObject()
    {
        QFETCH(QString, field);
        QFETCH(QString, route);
        QFETCH(QString, text);
        QFETCH(QString, property);
        QFETCH(QString, value);
        QFETCH(int, messages);
        PageViewFixture f(QStringLiteral("C F1"));
        f.cls(1)->MinField()->SetValue(QString());
        f.doc.SetModified(false);
        const int recorded = f.doc.history()->count();
        const QByteArray name = property.toLatin1();
        QoSObject* object = owner(f, name);
        const QString before = object->property(name).toString();
        QLineEdit* edit = textOf(f.box(object), field);
        edit->setFocus();
        edit->selectAll();
        QClipboard* clipboard = QApplication::clipboard();
        clipboard->setText(text);
        if (route == u"typed") {
            for (const QChar c : text)
                QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
        } else if (route == u"menu") {
            QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(), edit->mapToGlobal(QPoint()));
            QApplication::sendEvent(edit, &menuKey);
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QVERIFY(menu);
            auto* paste = menu->findChild<QAction*>(QStringLiteral("itmEditPaste"));
            QVERIFY(paste && paste->isEnabled());
            paste->trigger();
            menu->close();
        } else if (route == u"Ctrl+V") {
            QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        } else if (route == u"Shift+Insert") {
            QTest::keyClick(edit, Qt::Key_Insert, Qt::ShiftModifier);
        } else {
            if (!clipboard->supportsSelection())
                QSKIP("no selection clipboard on this platform");
            clipboard->setText(text, QClipboard::Selection);
            QTest::mouseClick(edit, Qt::MiddleButton);
        }
        QCOMPARE(object->property(name).toString(), value);
        QStringList shown;
        for (QLineEdit* box : edit->parentWidget()->findChildren<QLineEdit*>())
            shown << box->text();
        QTEST(shown.join(u'|'), "shown");
        QCOMPARE(f.doc.IsModified(), value != before);
        QCOMPARE(f.doc.history()->count() > recorded, !object->IsClass() && value != before);
        QCOMPARE(f.prompt.log.size(), messages);
        if (messages) {
            QVERIFY(f.prompt.log.first().text.startsWith(QStringLiteral("Der Text wird nicht eingefügt")));
            QCOMPARE(f.prompt.log.first().icon, UserPrompt::Icon::Warning);
        }
    }

    void theClassBoxShowsItsDirectionAndDefault()
    {
        PageViewFixture f(QStringLiteral("C"), true);
        QoSObjectBox* box = f.box(f.cls(1));
        QCOMPARE(child<QLabel>(box, "lblDirection")->text(), QStringLiteral("up"));
        const QList<QFrame*> marks = box->findChildren<QFrame*>(QStringLiteral("fraDefaultClass"));
        QCOMPARE(marks.size(), 2);
        QVERIFY(!marks[0]->isVisibleTo(box));
        f.cls(1)->SetDefaultClass(true);
        QVERIFY(marks[0]->isVisibleTo(box) && marks[1]->isVisibleTo(box));
    }

    // A port list needs a type: leaving the type field empty makes it "client", but the type's
    // own menu or another window taking the focus is no leaving.
    void leavingTheTypeField_data()
    {
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("type");
        // clang-format off
        QTest::newRow("Tab to the address") << "address" << "client";
        QTest::newRow("the type menu opens") << "menu" << "";
        QTest::newRow("another window") << "window" << "";
        // clang-format on
    }
    void leavingTheTypeField()
    {
        QFETCH(QString, to);
        PageViewFixture f(QStringLiteral("C F1"));
        QoSFilter* filter = f.flt(1);
        filter->SetQoSPort(QStringLiteral("80"));
        filter->SetQoSType(QString());
        QoSObjectBox* box = f.box(filter);
        auto* type = child<QLineEdit>(box, "txtType");
        type->setFocus();
        QVERIFY(type->hasFocus());
        QWidget other;
        if (to == u"address") {
            child<QLineEdit>(box, "txtIP")->setFocus(Qt::TabFocusReason);
        } else if (to == u"menu") {
            QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, type->rect().center(),
                                      type->mapToGlobal(type->rect().center()));
            QApplication::sendEvent(type, &menuKey);
            QCOMPARE(QApplication::activePopupWidget(), child<QMenu>(box, "mnuType"));
            QCOMPARE(filter->QoSType(), QString());
            QApplication::activePopupWidget()->close();
        } else {
            other.show();
            QApplication::setActiveWindow(&other);
        }
        QTEST(filter->QoSType(), "type");
    }

    // Priority, type and option are the object's fields: set in the model they show in the
    // box, changed in the box (a button, keys, a double click, a menu) they reach the model,
    // mark the document modified and, for a filter, enter the history. A route that opens a
    // list chooses what the box is to show from it.
    void theChoiceFieldsShowTheModel_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("route"); // "model", "click", "keys", "double click" or "menu"
        QTest::addColumn<QString>("input"); // the value, the button or the keys
        QTest::addColumn<QString>("shown");
        // clang-format off
        QTest::newRow("prio set in the model") << "txtPrio" << "model" << "2" << "2";
        QTest::newRow("prio: the plus button") << "txtPrio" << "click" << "cmdPrioInc" << "1";
        QTest::newRow("prio: the minus button") << "txtPrio" << "click" << "cmdPrioDec" << "3";
        QTest::newRow("prio: a digit typed") << "txtPrio" << "keys" << "3" << "3";
        QTest::newRow("prio: Space clears") << "txtPrio" << "keys" << "Space" << "";
        QTest::newRow("type set in the model") << "txtType" << "model" << "server" << "server";
        QTest::newRow("type: the step button") << "txtType" << "click" << "cmdType" << "client";
        QTest::newRow("type: a double click steps") << "txtType" << "double click" << "" << "client";
        QTest::newRow("type: chosen from its menu") << "txtType" << "menu" << "" << "server";
        QTest::newRow("option set in the model") << "txtOption" << "model" << "ICMP" << "ICMP";
        QTest::newRow("option: an arrow key") << "txtOption" << "keys" << "Down" << "TOSMC";
        QTest::newRow("option: chosen from the list of its button") << "txtOption" << "click" << "cmdOption" << "TOSMR";
        QTest::newRow("option: chosen from the list of Alt+Down") << "txtOption" << "keys" << "Alt+Down" << "ACK";
        // clang-format on
    }
    void theChoiceFieldsShowTheModel()
    {
        QFETCH(QString, field);
        QFETCH(QString, route);
        QFETCH(QString, input);
        QFETCH(QString, shown);
        PageViewFixture f(QStringLiteral("C F1"));
        const bool prio = field == u"txtPrio";
        QoSObject* object = prio ? static_cast<QoSObject*>(f.cls(1)) : f.flt(1);
        const QByteArray property = prio ? "QoSPrio" : field == u"txtType" ? "QoSType" : "QoSOption";
        QoSObjectBox* box = f.box(object);
        f.doc.SetModified(false);
        const int recorded = f.doc.history()->count();
        auto* text = textOf(box, field);
        text->setFocus();
        if (route == u"model") {
            object->setProperty(property.constData(), input);
        } else if (route == u"click") {
            QTest::mouseClick(child<QToolButton>(box, input.toLatin1().constData()), Qt::LeftButton);
        } else if (route == u"keys") {
            QTest::keySequence(text, QKeySequence(input));
        } else if (route == u"double click") {
            QTest::mouseDClick(text, Qt::LeftButton);
        } else {
            QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(), text->mapToGlobal(QPoint()));
            QApplication::sendEvent(text, &menuKey);
        }
        if (auto* list = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            for (QAction* item : list->actions())
                if (item->text() == shown)
                    item->trigger();
            list->close();
        }
        QCOMPARE(text->text(), shown);
        QCOMPARE(object->property(property.constData()).toString(), shown);
        QVERIFY(f.doc.IsModified());
        const QList<HistoryItem>& history = f.doc.history()->Items();
        QCOMPARE(history.size(), recorded + (prio ? 0 : 1));
        if (!prio) {
            QCOMPARE(history.last().ObjectName, object->Name());
            QCOMPARE(history.last().PropertyName, QString::fromLatin1(property));
            QCOMPARE(history.last().Value.toString(), shown);
        }
    }

    // The boxes show the colours the checks decide, after every edit; the check button still
    // checks, and puts right a colour set wrongly by hand.
    void coloursTurnRedAndBack()
    {
        PageViewFixture f(QStringLiteral("C C"));
        f.doc.Common1()->SetQoSInternetBandDown(QStringLiteral("1000kbit"));
        for (QoSClass* c : {f.cls(1), f.cls(2)}) {
            c->SetQoSMinBandWidth(QStringLiteral("400kbit"));
            c->SetQoSMaxBandWidth(QStringLiteral("1000kbit"));
        }
        f.settle();
        const QColor white(Qt::white), red = PaletteColor(Colors::LightRed, QPalette());
        QoSObjectBox* a = f.box(f.cls(1));
        QoSObjectBox* b = f.box(f.cls(2));
        QCOMPARE(numberBackground(a), white);
        for (const char* typed : {"700", "600"}) {
            QLineEdit* number = textOf(b, QStringLiteral("txtMin"));
            number->selectAll();
            QTest::keyClicks(number, QString::fromLatin1(typed));
            f.settle();
            const QColor expected = qstrcmp(typed, "700") == 0 ? red : white; // 1100 of 1000, then 1000
            QCOMPARE(numberBackground(a), expected);
            QCOMPARE(numberBackground(b), expected);
        }
        f.cls(1)->MinField()->SetIsValid(false);
        QCOMPARE(numberBackground(a), red);
        QTest::mouseClick(child<QToolButton>(a, "cmdCheck"), Qt::LeftButton);
        QCOMPARE(numberBackground(a), white);
    }

    // The unit of a class bandwidth opens the unit menu, by the mouse or the keyboard, never the
    // box's edit menu, whose first entry would cut the class. A locked bandwidth takes no keys
    // and no paste, and its unit offers no menu and no Tab stop.
    void theUnitMenuOfAClassBox_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("locked");
        for (const bool locked : {false, true})
            for (const char* how : {"right click", "menu key", "Shift+F10", "keyboard menu event"})
                QTest::addRow("%s%s", how, locked ? ", locked" : "") << QString::fromLatin1(how) << locked;
    }
    void theUnitMenuOfAClassBox()
    {
        QFETCH(QString, how);
        QFETCH(bool, locked);
        PageViewFixture f(QStringLiteral("C"));
        QoSClass* c = f.cls(1);
        QWidget* max = child<QWidget>(f.box(c), "txtMax");
        auto* lock = child<QCheckBox>(max, "chkLocked");
        QVERIFY(lock->isVisibleTo(f.box(c)));
        if (locked)
            QTest::mouseClick(lock, Qt::LeftButton);
        QCOMPARE(c->MaxField()->Locked(), locked);
        const QString before = c->QoSMaxBandWidth();
        auto* number = child<QLineEdit>(max, "txtMin");
        number->setFocus();
        QTest::keyClicks(number, QStringLiteral("12"));
        QApplication::clipboard()->setText(QStringLiteral("5"));
        QTest::keyClick(number, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(c->QoSMaxBandWidth() == before, locked);
        auto* unit = child<QLabel>(max, "lblMinUnit");
        QTest::keyClick(number, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), locked ? static_cast<QWidget*>(lock) : unit);
        if (how == u"right click") {
            // Through the window, as a real click comes: the press brings a context-menu event.
            QWindow* window = f.view->window()->windowHandle();
            const QPoint at = unit->mapTo(f.view->window(), unit->rect().center());
            QTest::mousePress(window, Qt::RightButton, {}, at);
            QTest::mouseRelease(window, Qt::RightButton, {}, at);
        } else if (how == u"menu key") {
            QTest::keyClick(unit, Qt::Key_Menu);
        } else if (how == u"Shift+F10") {
            QTest::keyClick(unit, Qt::Key_F10, Qt::ShiftModifier);
        } else {
            QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(), unit->mapToGlobal(QPoint()));
            QApplication::sendEvent(unit, &menuKey);
        }
        QWidget* popup = QApplication::activePopupWidget();
        QCOMPARE(popup, locked ? nullptr : static_cast<QWidget*>(child<QMenu>(max, "mnuUnits")));
        if (popup)
            popup->close();
        QCOMPARE(f.page->ObjectCount(), 1);
    }

    void everyControlIsNamed_data()
    {
        QTest::addColumn<QString>("script");
        QTest::newRow("class box") << "C";
        QTest::newRow("filter box") << "C F1";
    }
    void everyControlIsNamed()
    {
        QFETCH(QString, script);
        PageViewFixture f(script);
        QoSObject* object = f.page->ContainedObjects().last();
        QoSObjectBox* box = f.box(object);
        object->SetCaption(QString()); // a box without a title is named by its kind
        QCOMPARE(box->accessibleName(),
                 object->IsClass() ? QStringLiteral("Klasse") : QStringLiteral("Filter"));
        object->SetCaption(QStringLiteral("Telefonie"));
        QCOMPARE(box->accessibleName(), QStringLiteral("Telefonie"));
        QCOMPARE(box->focusControl()->accessibleName(), QStringLiteral("Telefonie"));
        for (QWidget* control : box->findChildren<QWidget*>()) {
            if (qobject_cast<QMenu*>(control) || control->objectName().startsWith(u"qt_"))
                continue;
            if (auto* label = qobject_cast<QLabel*>(control); label && label->text() == u"/")
                continue;
            QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
        }
    }

    // The type's step counter is the filter's: stepping goes on where it stopped when the box
    // went away and came back, and a type set in the model meanwhile shows at once without
    // moving the counter.
    void theTypeStepsOnWhereItStopped_data()
    {
        QTest::addColumn<int>("steps");         // clicks on the type button before the box goes
        QTest::addColumn<QString>("away");      // how the box goes and comes back
        QTest::addColumn<QString>("meanwhile"); // a type set in the model while it is away
        QTest::addColumn<QString>("shown");     // what the box shows when it is back
        QTest::addColumn<QString>("next");      // after one more click
        // clang-format off
        QTest::newRow("scrolled away after one step") << 1 << "scroll" << "-" << "client" << "server";
        QTest::newRow("a box of its own deleted and made anew") << 1 << "box" << "-" << "client" << "server";
        QTest::newRow("a new page view") << 3 << "view" << "-" << "" << "client";
        QTest::newRow("client set while scrolled away") << 2 << "scroll" << "client" << "client" << "";
        QTest::newRow("server set while no box was there") << 0 << "box" << "server" << "server" << "client";
        // clang-format on
    }
    void theTypeStepsOnWhereItStopped()
    {
        QFETCH(int, steps);
        QFETCH(QString, away);
        QFETCH(QString, meanwhile);
        PageViewFixture f(QStringLiteral("C F1 ") + QStringLiteral("C ").repeated(30));
        QoSFilter* filter = f.flt(1);
        QWidget host;
        host.show();
        std::unique_ptr<QoSFilterBox> own;
        auto makeBox = [&]() -> QWidget* {
            if (away != u"box")
                return f.box(filter);
            own = std::make_unique<QoSFilterBox>(filter, nullptr, &host);
            own->show();
            return own.get();
        };
        QWidget* box = makeBox();
        for (int i = 0; i < steps; ++i)
            QTest::mouseClick(child<QToolButton>(box, "cmdType"), Qt::LeftButton);
        if (away == u"scroll") {
            f.view->pane()->setFocus();
            f.view->setScrollPosition(QPoint(f.view->horizontalScrollBar()->maximum(), 0));
            f.settle();
            QVERIFY(!f.box(filter));
        } else if (away == u"box") {
            own.reset();
        } else {
            delete f.view;
            f.view = nullptr;
        }
        if (meanwhile != u"-")
            filter->SetQoSType(meanwhile);
        if (away == u"scroll") {
            f.view->setScrollPosition(QPoint(0, 0));
        } else if (away == u"view") {
            f.view = new ObjectPageView(f.page);
            f.view->resize(1000, 760);
            f.view->show();
        }
        f.settle();
        box = makeBox();
        QVERIFY(box);
        QTEST(child<QLineEdit>(box, "txtType")->text(), "shown");
        QTest::mouseClick(child<QToolButton>(box, "cmdType"), Qt::LeftButton);
        QTEST(filter->QoSType(), "next");
        QTEST(child<QLineEdit>(box, "txtType")->text(), "next");
    }
};

QTEST_MAIN(TestBoxes)
#include "tst_boxes.moc"
