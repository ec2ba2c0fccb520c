#include "inputs/bandwidthfield.h"
#include "inputs/palettecolor.h"
#include "model/history.h"
#include "model/qosclassbox.h"
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
#include <QSignalSpy>
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
    static QColor numberBackground(QWidget* bandwidth)
    {
        return child<QLineEdit>(bandwidth, "txtMin")->palette().color(QPalette::Base);
    }

private slots:
    void editingTheTitle_data()
    {
        QTest::addColumn<QString>("start"); // "F2" or "double click"
        QTest::addColumn<QString>("end");   // "Enter", "leave" or "Escape"
        QTest::addColumn<int>("changes");
        QTest::addColumn<QString>("caption");
        QTest::newRow("F2, Enter") << "F2"
                                   << "Enter" << 1 << "Telefon";
        QTest::newRow("double click, leaving the field") << "double click"
                                                         << "leave" << 1 << "Telefon";
        QTest::newRow("Escape keeps the caption") << "F2"
                                                  << "Escape" << 0 << "alt";
    }
    void editingTheTitle()
    {
        QFETCH(QString, start);
        QFETCH(QString, end);
        QFETCH(int, changes);
        QFETCH(QString, caption);
        PageViewFixture f(QStringLiteral("C C"));
        f.cls(1)->SetCaption(QStringLiteral("alt"));
        QoSObjectBox* box = f.box(f.cls(1));
        TittleBar* title = box->titleBar();
        QSignalSpy change(title, &TittleBar::Change);
        box->focusControl()->setFocus();
        if (start == u"F2")
            QTest::keyClick(box->focusControl(), Qt::Key_F2);
        else
            QTest::mouseDClick(title, Qt::LeftButton);
        QVERIFY(title->IsEditing());
        QLineEdit* editor = title->editor();
        QCOMPARE(editor->text(), QStringLiteral("alt"));
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, QStringLiteral("Telefon"));
        if (end == u"Enter")
            QTest::keyClick(editor, Qt::Key_Return);
        else if (end == u"Escape")
            QTest::keyClick(editor, Qt::Key_Escape);
        else
            f.box(f.cls(2))->focusControl()->setFocus();
        f.settle();
        QVERIFY(!title->IsEditing());
        QCOMPARE(change.count(), changes);
        QCOMPARE(f.cls(1)->Caption(), caption);
        QCOMPARE(box->accessibleName(), caption);
    }

    // A caption cut with an ellipsis is read whole in the tool tip where the mouse rests: on the
    // title, whose label lets the mouse through.
    void aLongCaptionShowsWholeInItsToolTip_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<bool>("tip");
        QTest::newRow("short") << "Telefon" << false;
        QTest::newRow("long") << "Telefonanlage im Büro mit sehr langem Namen" << true;
    }
    void aLongCaptionShowsWholeInItsToolTip()
    {
        QFETCH(QString, caption);
        QFETCH(bool, tip);
        PageViewFixture f(QStringLiteral("C"));
        f.cls(1)->SetCaption(caption);
        QoSObjectBox* box = f.box(f.cls(1));
        TittleBar* title = box->titleBar();
        QString shown;
        for (QWidget* w = box->childAt(title->geometry().center()); w && shown.isEmpty();
             w = w->parentWidget())
            shown = w->toolTip();
        QCOMPARE(shown, tip ? caption : QString());
    }

    void theTitleBarsColoursFollowTheScheme()
    {
        TittleBar bar;
        bar.SetActive(true);
        auto* label = bar.findChild<QLabel*>(QStringLiteral("Label2"));
        QCOMPARE(label->palette().color(QPalette::Window),
                 bar.palette().color(QPalette::Active, QPalette::Highlight));
        bar.SetActive(false);
        const QColor inactive = label->palette().color(QPalette::Window);
        QVERIFY(inactive != bar.palette().color(QPalette::Active, QPalette::Highlight));
        QPalette scheme = bar.palette();
        scheme.setColor(QPalette::Active, QPalette::Highlight, QColor(0x20, 0x80, 0x20));
        bar.setPalette(scheme);
        bar.SetActive(true);
        QCOMPARE(label->palette().color(QPalette::Window), QColor(0x20, 0x80, 0x20));
    }

    void theBoxKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("deletes");
        QTest::newRow("Ctrl+C copies nothing") << int(Qt::Key_C) << int(Qt::ControlModifier) << false;
        QTest::newRow("Ctrl+V pastes nothing") << int(Qt::Key_V) << int(Qt::ControlModifier) << false;
        QTest::newRow("Ctrl+X cuts") << int(Qt::Key_X) << int(Qt::ControlModifier) << true;
        QTest::newRow("Ctrl+Alt+X is not Ctrl+X")
            << int(Qt::Key_X) << int(Qt::ControlModifier | Qt::AltModifier) << false;
        QTest::newRow("Delete") << int(Qt::Key_Delete) << int(Qt::NoModifier) << true;
        QTest::newRow("Shift+Delete") << int(Qt::Key_Delete) << int(Qt::ShiftModifier) << true;
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

    void theBoxMenu_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("entries");
        QTest::newRow("class") << "C"
                               << "itmEditCut itmEditCopy itmEditPaste itmEditDelete - itmEditDuplicate "
                                  "itmEditCopyProperties itmEditPasteProperties - itmEditCaption";
        QTest::newRow("filter") << "C F1"
                                << "itmEditCut itmEditCopy itmEditPaste itmEditDelete - itmEditDuplicate "
                                   "itmEditCopyProperties itmEditPasteProperties itmFilterProperties - "
                                   "itmEditCaption";
    }
    void theBoxMenu()
    {
        QFETCH(QString, script);
        QFETCH(QString, entries);
        PageViewFixture f(script);
        QoSObject* object = f.page->ContainedObjects().last();
        f.doc.SetModified(false);
        std::unique_ptr<QMenu> menu(f.box(object)->createContextMenu(nullptr));
        QStringList names;
        for (QAction* item : menu->actions())
            names << (item->isSeparator() ? QStringLiteral("-") : item->objectName());
        QCOMPARE(names.join(u' '), entries);
        // Everything but cut and delete leaves the document as it was.
        for (QAction* item : menu->actions())
            if (!item->isSeparator() && item->objectName() != u"itmEditCut" &&
                item->objectName() != u"itmEditDelete" && item->objectName() != u"itmEditCaption")
                item->trigger();
        QVERIFY(!f.doc.IsModified());
        QCOMPARE(f.page->ObjectCount(), script.count(u' ') + 1);
        menu->findChild<QAction*>(QStringLiteral("itmEditCut"))->trigger();
        QCOMPARE(f.page->ObjectCount(), script.count(u' '));
    }

    void classFieldsEditTheClass()
    {
        PageViewFixture f(QStringLiteral("C"));
        QoSClass* c = f.cls(1);
        f.doc.SetModified(false);
        QoSObjectBox* box = f.box(c);
        auto* min = child<QLineEdit>(child<QWidget>(box, "txtMin"), "txtMin");
        min->selectAll();
        QTest::keyClicks(min, QStringLiteral("512"));
        QCOMPARE(c->QoSMinBandWidth(), QStringLiteral("512kbit"));
        QVERIFY(f.doc.IsModified());
        auto* direction = child<QLabel>(box, "lblDirection");
        QCOMPARE(direction->text(), QStringLiteral("down"));
        const QList<QFrame*> marks = box->findChildren<QFrame*>(QStringLiteral("fraDefaultClass"));
        QCOMPARE(marks.size(), 2);
        QVERIFY(!marks[0]->isVisibleTo(box));
        c->SetDefaultClass(true);
        QVERIFY(marks[0]->isVisibleTo(box) && marks[1]->isVisibleTo(box));
        QCOMPARE(f.doc.Common1()->QoSInternetDefaultDown(), QString::number(c->ClassIdx()));
    }

    void filterFieldsEditTheFilter()
    {
        PageViewFixture f(QStringLiteral("C F1"));
        QoSFilter* filter = f.flt(1);
        QoSObjectBox* box = f.box(filter);
        const int recorded = f.doc.history()->count();
        auto* port = child<QLineEdit>(box, "txtPort");
        QTest::keyClicks(port, QStringLiteral("80"));
        // The first port needs a type: the filter makes it "client", and the box shows it.
        QCOMPARE(filter->QoSPort(), QStringLiteral("80"));
        QCOMPARE(filter->QoSType(), QStringLiteral("client"));
        QCOMPARE(child<QLineEdit>(box, "txtType")->text(), QStringLiteral("client"));
        QVERIFY(f.doc.history()->count() > recorded);
        QCOMPARE(f.doc.history()->Items().last().ObjectName, filter->Name());
        // Stepping the type to "" and leaving the field with ports brings "client" back. The
        // field steps from its own counter, which the filter's "client" did not move.
        auto* type = child<QLineEdit>(box, "txtType");
        type->setFocus();
        for (int i = 0; i < 3; ++i) // "client", "server", ""
            QTest::mouseClick(child<QToolButton>(box, "cmdType"), Qt::LeftButton);
        QCOMPARE(filter->QoSType(), QString());
        child<QLineEdit>(box, "txtIP")->setFocus();
        QCOMPARE(filter->QoSType(), QStringLiteral("client"));
        QTest::keyClicks(child<QLineEdit>(box, "txtIP"), QStringLiteral("10.0.0.1"));
        QCOMPARE(filter->QoSIP(), QStringLiteral("10.0.0.1"));
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
            QVERIFY(QApplication::activePopupWidget());
            QCOMPARE(filter->QoSType(), QString());
            QApplication::activePopupWidget()->close();
        } else {
            other.show();
            QApplication::setActiveWindow(&other);
        }
        QTEST(filter->QoSType(), "type");
    }

    // Priority, type and option are the object's fields: set in the model they show in the
    // box, changed in the box they reach the model, mark the document modified and, for a
    // filter, enter the history.
    void theChoiceFieldsShowTheModel_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("route"); // "model", "button", "key" or "menu"
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("shown");
        // clang-format off
        QTest::newRow("prio set in the model") << "prio" << "model" << "2" << "2";
        QTest::newRow("prio: the plus button") << "prio" << "button" << "" << "1";
        QTest::newRow("prio: a digit typed") << "prio" << "key" << "3" << "3";
        QTest::newRow("type set in the model") << "type" << "model" << "server" << "server";
        QTest::newRow("type: the step button") << "type" << "button" << "" << "client";
        QTest::newRow("type: chosen from its menu") << "type" << "menu" << "server" << "server";
        QTest::newRow("option set in the model") << "option" << "model" << "ICMP" << "ICMP";
        QTest::newRow("option: an arrow key") << "option" << "key" << "" << "TOSMC";
        QTest::newRow("option: chosen from its menu") << "option" << "menu" << "TOSMR" << "TOSMR";
        // clang-format on
    }
    void theChoiceFieldsShowTheModel()
    {
        QFETCH(QString, field);
        QFETCH(QString, route);
        QFETCH(QString, input);
        QFETCH(QString, shown);
        PageViewFixture f(QStringLiteral("C F1"));
        QoSClass* c = f.cls(1);
        QoSFilter* filter = f.flt(1);
        const bool prio = field == u"prio", type = field == u"type";
        QoSObjectBox* box = f.box(prio ? static_cast<QoSObject*>(c) : filter);
        f.doc.SetModified(false);
        const int recorded = f.doc.history()->count();
        auto* text = child<QLineEdit>(box, prio ? "txtPrio" : type ? "txtType" : "txtOption");
        if (route == u"model") {
            if (prio)
                c->SetQoSPrio(input);
            else if (type)
                filter->SetQoSType(input);
            else
                filter->SetQoSOption(input);
        } else if (route == u"button") {
            QTest::mouseClick(child<QToolButton>(box, prio ? "cmdPrioInc" : "cmdType"), Qt::LeftButton);
        } else if (route == u"key") {
            text->setFocus();
            if (prio)
                QTest::keyClicks(text, input);
            else
                QTest::keyClick(text, Qt::Key_Down);
        } else {
            auto* menu = child<QMenu>(box, type ? "mnuType" : "mnuOptions");
            for (QAction* item : menu->actions())
                if (item->text() == input)
                    item->trigger();
        }
        QCOMPARE(text->text(), shown);
        QCOMPARE(prio ? c->QoSPrio() : type ? filter->QoSType() : filter->QoSOption(), shown);
        QVERIFY(f.doc.IsModified());
        const QList<HistoryItem>& history = f.doc.history()->Items();
        QCOMPARE(history.size(), recorded + (prio ? 0 : 1));
        if (!prio) {
            QCOMPARE(history.last().ObjectName, filter->Name());
            QCOMPARE(history.last().PropertyName,
                     type ? QStringLiteral("QoSType") : QStringLiteral("QoSOption"));
            QCOMPARE(history.last().Value.toString(), shown);
        }
    }

    // The check button's verdict, and the colours kept true without it.
    void coloursTurnRedAndBack()
    {
        PageViewFixture f;
        f.doc.Common1()->SetQoSInternetBandDown(QStringLiteral("1000kbit"));
        QoSClass* a = f.page->AddClass(QStringLiteral("0"), {.minBandwidth = QStringLiteral("400kbit"),
                                                             .maxBandwidth = QStringLiteral("1000kbit"),
                                                             .direction = QStringLiteral("down"),
                                                             .prio = QStringLiteral("0"),
                                                             .caption = QStringLiteral("A")});
        QoSClass* b = f.page->AddClass(QStringLiteral("0"), {.minBandwidth = QStringLiteral("400kbit"),
                                                             .maxBandwidth = QStringLiteral("1000kbit"),
                                                             .direction = QStringLiteral("down"),
                                                             .prio = QStringLiteral("0"),
                                                             .caption = QStringLiteral("B")});
        f.settle();
        const QColor white(Qt::white);
        const QColor red = PaletteColor(Colors::LightRed, QPalette());
        QWidget* minA = child<QWidget>(f.box(a), "txtMin");
        QWidget* minB = child<QWidget>(f.box(b), "txtMin");
        QCOMPARE(numberBackground(minA), white);
        auto* number = child<QLineEdit>(minB, "txtMin");
        number->selectAll();
        QTest::keyClicks(number, QStringLiteral("700"));
        f.settle();
        QCOMPARE(numberBackground(minA), red);
        QCOMPARE(numberBackground(minB), red);
        number->selectAll();
        QTest::keyClicks(number, QStringLiteral("600"));
        f.settle();
        QCOMPARE(numberBackground(minA), white);
        QCOMPARE(numberBackground(minB), white);
        // The check button still checks: a colour set wrongly by hand is put right.
        a->MinField()->SetIsValid(false);
        QTest::mouseClick(child<QToolButton>(f.box(a), "cmdCheck"), Qt::LeftButton);
        QVERIFY(a->MinField()->IsValid());
    }

    // The unit of a class bandwidth opens the unit menu, never the box's edit menu, whose
    // first entry would cut the class. A locked bandwidth offers neither.
    void theUnitMenuOfAClassBox_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("locked");
        // clang-format off
        QTest::newRow("right click") << "right click" << false;
        QTest::newRow("menu key") << "menu key" << false;
        QTest::newRow("right click on a locked field") << "right click" << true;
        // clang-format on
    }
    void theUnitMenuOfAClassBox()
    {
        QFETCH(QString, how);
        QFETCH(bool, locked);
        PageViewFixture f(QStringLiteral("C"));
        QoSObjectBox* box = f.box(f.cls(1));
        QWidget* max = child<QWidget>(box, "txtMax");
        auto* lock = child<QCheckBox>(max, "chkLocked");
        QVERIFY(lock->isVisibleTo(box));
        if (locked)
            QTest::mouseClick(lock, Qt::LeftButton);
        QCOMPARE(f.cls(1)->MaxField()->Locked(), locked);
        auto* unit = child<QLabel>(max, "lblMinUnit");
        if (how == u"right click") {
            // Through the window, as a real click comes: the press brings a context-menu event.
            QWindow* window = f.view->window()->windowHandle();
            const QPoint at = unit->mapTo(f.view->window(), unit->rect().center());
            QTest::mousePress(window, Qt::RightButton, {}, at);
            QTest::mouseRelease(window, Qt::RightButton, {}, at);
        } else {
            unit->setFocus(Qt::TabFocusReason);
            QTest::keyClick(unit, Qt::Key_Menu);
        }
        QWidget* popup = QApplication::activePopupWidget();
        QCOMPARE(popup, locked ? nullptr : static_cast<QWidget*>(child<QMenu>(max, "mnuUnits")));
        if (popup)
            popup->close();
        QCOMPARE(f.page->ObjectCount(), 1);
    }

    // The lock boxes make the class box wider; every field still fits its box, and every box
    // its cell.
    void boxesHoldTheirFields()
    {
        PageViewFixture f(QStringLiteral("C F1"));
        for (QoSObject* object : f.page->ContainedObjects()) {
            QoSObjectBox* box = f.box(object);
            QVERIFY(box);
            for (QWidget* field : box->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
                if (!field->isHidden())
                    QVERIFY2(box->rect().contains(field->geometry()), qPrintable(field->objectName()));
            QVERIFY(box->width() * 15 <= f.page->prop().ColWidth);
            QVERIFY(box->height() * 15 <= f.page->prop().RowHeight);
        }
        QoSObjectBox* box = f.box(f.cls(1));
        for (const char* name : {"txtMin", "txtMax"}) {
            QWidget* bandwidth = child<QWidget>(box, name);
            QVERIFY(bandwidth->sizeHint().width() <= bandwidth->width());
            const QRect lock =
                child<QCheckBox>(bandwidth, "chkLocked")->geometry().translated(bandwidth->pos());
            QVERIFY(lock.right() < child<QToolButton>(box, "cmdCheck")->x());
        }
    }

    // A caption that could not be written is refused where it is pasted.
    void aPastedCaptionIsChecked_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QString>("caption");
        // clang-format off
        QTest::newRow("fits") << "Telefon" << "Telefon";
        QTest::newRow("quote") << "Bob's" << "alt";
        QTest::newRow("line break") << "Tele\nfon" << "alt";
        // clang-format on
    }
    void aPastedCaptionIsChecked()
    {
        QFETCH(QString, pasted);
        PageViewFixture f(QStringLiteral("C"));
        f.cls(1)->SetCaption(QStringLiteral("alt"));
        TittleBar* title = f.box(f.cls(1))->titleBar();
        title->Edit();
        QApplication::clipboard()->setText(pasted);
        QTest::keyClick(title->editor(), Qt::Key_Insert, Qt::ShiftModifier);
        QTest::keyClick(title->editor(), Qt::Key_Return);
        QTEST(f.cls(1)->Caption(), "caption");
        QCOMPARE(f.prompt.log.size(), f.cls(1)->Caption() == u"alt" ? 1 : 0);
        if (!f.prompt.log.isEmpty())
            QCOMPARE(f.prompt.log.first().icon, UserPrompt::Icon::Warning);
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
        QTest::newRow("scrolled away after two steps") << 2 << "scroll" << "-" << "server" << "";
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
        host.resize(400, 200);
        host.show();
        std::unique_ptr<QoSFilterBox> own;
        auto makeBox = [&]() -> QWidget* {
            if (away == u"box") {
                own = std::make_unique<QoSFilterBox>(filter, nullptr, &host);
                own->show();
                return own.get();
            }
            return f.box(filter);
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
            f.settle();
        } else if (away == u"view") {
            f.view = new ObjectPageView(f.page);
            f.view->resize(1000, 760);
            f.view->show();
            f.settle();
        }
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
