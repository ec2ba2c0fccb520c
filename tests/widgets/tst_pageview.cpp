#include "file/qosreader.h"
#include "model/plugbottom.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"
#include "page/pagerenderer.h"
#include "page/qosconnectorview.h"
#include "page/spatialindex.h"
#include "pageviewfixture.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QRandomGenerator>
#include <QScrollBar>

#include <algorithm>

// The page on screen: selection by focus, dragging and dropping, plugs, lines, the page's
// own commands, and the view keeping step with the core.
class TestPageView : public QObject
{
    Q_OBJECT

    static QString cell(const QoSObject* o)
    {
        return QStringLiteral("%1,%2").arg(o->MatrixX()).arg(o->MatrixY());
    }
    static QoSObject* named(PageViewFixture& f, const QString& shortName)
    {
        const int n = shortName.mid(1).toInt();
        return shortName.startsWith(u'C') ? static_cast<QoSObject*>(f.cls(n)) : f.flt(n);
    }

private slots:
    void focusSelectsAndDeselects()
    {
        PageViewFixture f(QStringLiteral("C C"));
        QoSObjectBox* a = f.box(f.cls(1));
        QoSObjectBox* b = f.box(f.cls(2));
        a->focusControl()->setFocus();
        QVERIFY(f.cls(1)->Selected());
        QCOMPARE(f.page->SelectedObject(), f.cls(1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); // on to a field of the same box
        QVERIFY(a->isAncestorOf(QApplication::focusWidget()));
        QVERIFY(f.cls(1)->Selected());
        b->findChild<QWidget*>(QStringLiteral("txtMax"))->setFocus();
        QVERIFY(!f.cls(1)->Selected());
        QVERIFY(f.cls(2)->Selected());
        QCOMPARE(f.page->SelectedObject(), f.cls(2));
        QTest::mouseClick(f.view->pane(), Qt::LeftButton, {}, QPoint(f.view->pane()->width() - 5, 5));
        QVERIFY(!f.cls(2)->Selected());
        QCOMPARE(f.page->SelectedObject(), nullptr);
        QTest::mouseClick(a->titleBar(), Qt::LeftButton);
        QVERIFY(f.cls(1)->Selected());
        QVERIFY(a->titleBar()->IsActive());
        QVERIFY(!b->titleBar()->IsActive());
    }

    void dragToAFreeCell_data()
    {
        QTest::addColumn<QPoint>("corner"); // where the box's top-left corner is let go, in page pixels
        QTest::addColumn<QString>("expected");
        QTest::newRow("into the middle of a cell") << QPoint(2, 3) << "2,3";
        // The corner decides, even when most of the box hangs over the neighbouring cell.
        QTest::newRow("the top-left corner decides") << QPoint(-1, -1) << "3,2";
    }
    void dragToAFreeCell()
    {
        QFETCH(QPoint, corner);
        QFETCH(QString, expected);
        PageViewFixture f(QStringLiteral("C S1"));
        QoSClass* child = f.cls(2);
        f.doc.SetModified(false);
        const QPoint target = corner.x() >= 0 ? f.cellCorner(corner.x(), corner.y()) + QPoint(6, 6)
                                              : f.cellCorner(4, 3) - QPoint(3, 3);
        f.drag(child, target);
        QCOMPARE(cell(child), expected);
        QVERIFY(f.doc.IsModified());
        QVERIFY(f.prompt.messages().isEmpty());
        // Put back to the centre of its new cell, on screen as in the core.
        const ObjectPageProperties& p = f.page->prop();
        QCOMPARE(child->Left(), child->MatrixX() * double(p.ColWidth) + (p.ColWidth - child->Width()) / 2.0);
        QCOMPARE(f.box(child)->geometry().topLeft(),
                 QPoint(int(child->Left() / 15), int(child->Top() / 15)) - f.view->scrollPosition());
    }

    void aDraggedBoxStaysOnThePage()
    {
        PageViewFixture f(QStringLiteral("C S1"));
        QoSObjectBox* b = f.box(f.cls(2));
        TittleBar* title = b->titleBar();
        QTest::mousePress(title, Qt::LeftButton, {}, QPoint(8, 4));
        QTest::mouseMove(b, QPoint(-400, -400));
        QTest::mouseMove(b, b->mapFromGlobal(f.view->pane()->mapToGlobal(QPoint(-300, -300))));
        QCOMPARE(f.cls(2)->Left(), 0.0);
        QCOMPARE(f.cls(2)->Top(), 0.0);
        QCOMPARE(b->pos(), -f.view->scrollPosition());
        QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(8, 4));
        f.settle();
        // Let go over its own parent: a class does not go below its own child; back it goes.
        QCOMPARE(cell(f.cls(2)), QStringLiteral("0,1"));
    }

    void aDrop_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("parentAfter"); // of the dragged box, "" for none
        // clang-format off
        QTest::newRow("filter on a filter") << "C C F1 F2" << "F1" << "F2" << "Anhängen nicht möglich! TODO" << "C1";
        QTest::newRow("filter on a class with sub classes") << "C S1 C F3" << "F1" << "C1"
                                                            << "Anhängen nicht möglich! Klasse hat Unterklassen." << "C3";
        QTest::newRow("class on a class with filters") << "C C F2" << "C1" << "C2"
                                                       << "Anhängen nicht möglich. Klasse hat untergeordnete Filter." << "";
        QTest::newRow("class on a filter goes back without a word") << "C C F2" << "C1" << "F1" << "" << "";
        QTest::newRow("filter on another class is hung under it") << "C C F1" << "F1" << "C2" << "" << "C2";
        QTest::newRow("class on another class is hung under it") << "C C" << "C2" << "C1" << "" << "C1";
        QTest::newRow("class on its grandchild swaps them") << "C S1 S2" << "C1" << "C3" << "" << "C3";
        // clang-format on
    }
    void aDrop()
    {
        QFETCH(QString, script);
        QFETCH(QString, dragged);
        QFETCH(QString, target);
        QFETCH(QString, message);
        QFETCH(QString, parentAfter);
        PageViewFixture f(script);
        QoSObject* moving = named(f, dragged);
        QoSObject* onto = named(f, target);
        const QString before = cell(moving);
        f.drag(moving, f.cellCorner(onto->MatrixX(), onto->MatrixY()) + QPoint(4, 4));
        QCOMPARE(f.prompt.messages().join(u'|'), message);
        QCOMPARE(cell(moving), before); // every drop on a box puts the dragged box back
        QCOMPARE(moving->ParentQoSObject() ? PageScript::shortName(moving->ParentQoSObject()) : QString(),
                 parentAfter);
        QCOMPARE(bool(moving->LineTop()), !parentAfter.isEmpty());
        QCOMPARE(!f.view->lineOnPane(QStringLiteral("LineTop") + moving->Name()).isNull(),
                 !parentAfter.isEmpty());
    }

    // A file may put two boxes into one cell. Pressing and releasing the later one without a
    // move is a click: it selects the box and must not drop it on the box found in its cell.
    void aClickOnABoxThatSharesItsCell_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("clicked"); // moved into the cell of the first box of its kind
        QTest::addColumn<QString>("parent");  // of the clicked box, before and after
        QTest::newRow("a filter on another filter's cell") << "C F1 F1"
                                                           << "F2"
                                                           << "C1";
        QTest::newRow("a main class on another main class's cell") << "C C"
                                                                   << "C2"
                                                                   << "";
    }
    void aClickOnABoxThatSharesItsCell()
    {
        QFETCH(QString, script);
        QFETCH(QString, clicked);
        QFETCH(QString, parent);
        PageViewFixture f(script);
        QoSObject* first = named(f, clicked.left(1) + u'1');
        QoSObject* moved = named(f, clicked);
        moved->SetMatrixX(first->MatrixX());
        moved->SetMatrixY(first->MatrixY());
        f.settle();
        QCOMPARE(f.page->ObjectAt(first->MatrixX(), first->MatrixY()), first);
        f.doc.SetModified(false);

        QoSObjectBox* b = f.box(moved);
        QVERIFY(b);
        QTest::mouseClick(b->titleBar(), Qt::LeftButton, {}, QPoint(8, 4));
        f.settle();
        QCOMPARE(f.page->SelectedObject(), moved);
        QCOMPARE(f.prompt.messages().join(u'|'), QString());
        QCOMPARE(cell(moved), cell(first));
        QCOMPARE(moved->ParentQoSObject() ? PageScript::shortName(moved->ParentQoSObject()) : QString(),
                 parent);
        QVERIFY(!f.doc.IsModified());
    }

    void aPlug_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("plug");   // the class whose plug is dragged
        QTest::addColumn<QString>("target"); // the box it is dropped on
        QTest::addColumn<bool>("offered");   // whether the box shows a drop effect
        QTest::addColumn<QString>("parentAfter");
        // clang-format off
        QTest::newRow("a filter goes under a class without sub classes") << "C C F1" << "C2" << "F1" << true << "C2";
        QTest::newRow("a class with sub classes takes no filter") << "C S1 C F3" << "C1" << "F1" << true << "C3";
        QTest::newRow("a class goes under a class") << "C C" << "C1" << "C2" << true << "C1";
        QTest::newRow("a class with filters takes no class") << "C C F1" << "C1" << "C2" << true << "";
        QTest::newRow("a class never goes below its own child") << "C S1" << "C2" << "C1" << true << "";
        QTest::newRow("a box refuses its own name") << "C" << "C1" << "C1" << false << "";
        // clang-format on
    }
    void aPlug()
    {
        QFETCH(QString, script);
        QFETCH(QString, plug);
        QFETCH(QString, target);
        QFETCH(bool, offered);
        QFETCH(QString, parentAfter);
        PageViewFixture f(script);
        QoSObjectBox* box = f.box(named(f, target));
        QMimeData data;
        data.setData(PlugBottom::MimeType(), named(f, plug)->Name().toUtf8());
        const QPoint at = box->rect().center();
        QDragEnterEvent enter(at, Qt::LinkAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box, &enter);
        QCOMPARE(enter.isAccepted(), offered);
        if (offered) {
            QDropEvent drop(at, Qt::LinkAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(box, &drop);
        }
        f.settle();
        QoSObject* o = named(f, target);
        QCOMPARE(o->ParentQoSObject() ? PageScript::shortName(o->ParentQoSObject()) : QString(), parentAfter);
        QVERIFY(f.prompt.messages().isEmpty()); // the members refuse without a word
    }

    void linesFollowBothBoxes()
    {
        PageViewFixture f(QStringLiteral("C S1"));
        QoSClass* parent = f.cls(1);
        QoSClass* child = f.cls(2);
        f.drag(child, f.cellCorner(2, 2) + QPoint(6, 6));
        f.drag(parent, f.cellCorner(4, 0) + QPoint(6, 6));
        const QLine line = f.view->lineOnPane(QStringLiteral("LineTop") + child->Name());
        QVERIFY(!line.isNull());
        // The line joins the middle of the parent's bottom edge and the middle of the child's top.
        const QRect top = f.box(parent)->geometry();
        const QRect bottom = f.box(child)->geometry();
        QVERIFY2(qAbs(line.p1().x() - top.center().x()) <= 1,
                 qPrintable(QStringLiteral("%1 %2").arg(line.p1().x()).arg(top.center().x())));
        QCOMPARE(line.p1().y(), top.bottom() + 1);
        QVERIFY(qAbs(line.p2().x() - bottom.center().x()) <= 1);
        QCOMPARE(line.p2().y(), bottom.top());
        // And it is drawn there.
        const QImage shown = f.view->pane()->grab().toImage();
        const QPoint middle = line.center() * shown.devicePixelRatio();
        QCOMPARE(shown.pixelColor(middle), f.view->palette().color(QPalette::WindowText));
    }

    // A file read while the page is shown: every line in sight is drawn, also those of a class
    // whose filters' lines lie on each other.
    void linesOfAFileReadWhileShown()
    {
        PageViewFixture f;
        f.view->resize(590, 470); // the right column of boxes half out of sight
        f.settle();
        QFile sample(QStringLiteral(TARNWICK_SAMPLES "/home-router.qos.txt"));
        QVERIFY(sample.open(QIODevice::ReadOnly));
        QVERIFY(ImportQoSBytes(f.doc, sample.readAll()).complete);
        f.settle();
        const QImage shown = f.view->pane()->grab().toImage();
        int checked = 0;
        for (QoSObject* o : f.page->ContainedObjects()) {
            if (!o->LineTop())
                continue;
            const QLine line = f.view->lineOnPane(o->LineTop()->Name());
            const QPoint below = line.p1() + QPoint(0, 4); // in the gap under the parent
            if (!f.view->pane()->rect().contains(below))
                continue;
            QCOMPARE(shown.pixelColor(below * shown.devicePixelRatio()),
                     f.view->palette().color(QPalette::WindowText));
            ++checked;
        }
        QVERIFY(checked >= 3);
    }

    // Two filters of one class: the line of the second runs down behind the first.
    void whatAClickHits_data()
    {
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("selected"); // the box or line selected afterwards, "" for none
        QTest::newRow("the gap below the class: the shorter of two lines on each other") << "below class"
                                                                                         << "LineTopF1";
        QTest::newRow("between the filters: the one line there") << "between filters"
                                                                 << "LineTopF2";
        QTest::newRow("a box over a line takes the click") << "on first filter"
                                                           << "F1";
        QTest::newRow("beside the lines the page clears the selection") << "beside"
                                                                        << "";
    }
    void whatAClickHits()
    {
        QFETCH(QString, where);
        QFETCH(QString, selected);
        PageViewFixture f(QStringLiteral("C F1 F1"));
        f.view->pressLine(f.flt(1)->LineTop()); // something to clear
        const QLine first = f.view->lineOnPane(QStringLiteral("LineTopQoSFilter1"));
        const QLine second = f.view->lineOnPane(QStringLiteral("LineTopQoSFilter2"));
        QPoint at;
        if (where == u"below class")
            at = first.p1() + QPoint(0, 12);
        else if (where == u"between filters")
            at = QPoint(second.p2().x(), f.box(f.flt(1))->geometry().bottom() + 6);
        else if (where == u"on first filter")
            at = f.box(f.flt(1))->geometry().center() + QPoint(0, 20);
        else
            at = first.p1() + QPoint(30, 12);
        QWidget* hit = f.view->pane()->childAt(at);
        QTest::mouseClick(hit ? hit : f.view->pane(), Qt::LeftButton, {},
                          hit ? hit->mapFrom(f.view->pane(), at) : at);
        f.settle();
        QStringList now;
        if (QoSObject* o = f.page->SelectedObject(); o && o->Selected())
            now << PageScript::shortName(o);
        for (QoSObject* o : f.page->ContainedObjects())
            if (o->LineTop() && o->LineTop()->Selected())
                now << QStringLiteral("LineTop") + PageScript::shortName(o);
        QCOMPARE(now.join(u' '), selected);
        // The selected line has the keyboard, under its accessible name.
        if (selected.startsWith(u"LineTop")) {
            QWidget* focus = QApplication::focusWidget();
            QVERIFY(focus);
            QCOMPARE(focus->accessibleName(), QStringLiteral("Verbindung"));
            // Named by the caption of the box below it, or by its control name without one.
            QCOMPARE(focus->accessibleDescription(),
                     QStringLiteral("Verbindung zu QoSFilter") + selected.back());
        }
        QCOMPARE(f.view->connectorWidgetCount(), selected.startsWith(u"LineTop") ? 1 : 0);
    }

    // The end marks of a selected line lie beside the box edges, where no box covers them.
    void aSelectedLineShowsItsEndMarks()
    {
        PageViewFixture f(QStringLiteral("C S1"));
        const QString name = QStringLiteral("LineTop") + f.cls(2)->Name();
        const QLine line = f.view->lineOnPane(name);
        const QImage before = f.view->grab().toImage();
        f.view->pressLine(f.cls(2)->LineTop());
        f.settle();
        QVERIFY(f.cls(2)->LineTop()->Selected());
        const QImage shown = f.view->grab().toImage();
        const QColor highlight = f.view->palette().color(QPalette::Highlight);
        for (const bool atStart : {true, false}) {
            const QPointF mark = QoSConnectorView::markCentre(line, atStart) + QPointF(1, 0);
            const QPoint at = (f.view->pane()->mapTo(f.view, mark.toPoint())) * shown.devicePixelRatio();
            QCOMPARE(shown.pixelColor(at), highlight);
            QVERIFY(before.pixelColor(at) != highlight);
            QVERIFY(!f.view->pane()->childAt(mark.toPoint()));
        }
    }

    void deletingALine_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("deletes");
        QTest::newRow("Delete") << int(Qt::Key_Delete) << int(Qt::NoModifier) << true;
        QTest::newRow("Ctrl+X") << int(Qt::Key_X) << int(Qt::ControlModifier) << true;
        QTest::newRow("Ctrl+Shift+X is not cut")
            << int(Qt::Key_X) << int(Qt::ControlModifier | Qt::ShiftModifier) << false;
    }
    void deletingALine()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(bool, deletes);
        PageViewFixture f(QStringLiteral("C F1"));
        const QString name = QStringLiteral("LineTop") + f.flt(1)->Name();
        const QLine line = f.view->lineOnPane(name);
        QTest::mouseClick(f.view->pane(), Qt::LeftButton, {}, line.center());
        QVERIFY(f.flt(1)->LineTop()->Selected());
        QCOMPARE(f.page->SelectedConnector(), f.flt(1)->LineTop());
        QCOMPARE(QApplication::focusWidget(), f.view->connectorView(name));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        f.settle();
        QCOMPARE(f.page->ObjectCount(), 2); // both boxes stay
        QCOMPARE(!f.flt(1)->LineTop(), deletes);
        QCOMPARE(f.flt(1)->ParentQoSObject() == nullptr, deletes);
        QCOMPARE(f.cls(1)->ChildQoSObjects().isEmpty(), deletes);
        QCOMPARE(f.view->lineOnPane(name).isNull(), deletes);
        QCOMPARE(f.view->connectorView(name) == nullptr, deletes);
        if (deletes)
            QCOMPARE(QApplication::focusWidget(), f.view->pane());
        // A click elsewhere deselects the line and takes its widget away.
        QTest::mouseClick(f.view->pane(), Qt::LeftButton, {}, QPoint(f.view->pane()->width() - 5, 5));
        f.settle();
        QVERIFY(!f.flt(1)->LineTop() || !f.flt(1)->LineTop()->Selected());
        QCOMPARE(f.view->connectorWidgetCount(), 0);
    }

    void theLineMenu()
    {
        PageViewFixture f(QStringLiteral("C F1"));
        const QString name = QStringLiteral("LineTop") + f.flt(1)->Name();
        const QPoint at = f.view->lineOnPane(name).center();
        QContextMenuEvent click(QContextMenuEvent::Mouse, at, f.view->pane()->mapToGlobal(at));
        QApplication::sendEvent(f.view->pane(), &click);
        QVERIFY(f.flt(1)->LineTop()->Selected()); // the line's own menu, for the line
        QMenu* shown = f.view->findChild<QMenu*>();
        QVERIFY(shown);
        QVERIFY(shown->findChild<QAction*>(QStringLiteral("itmEditDelete")));
        shown->close();
        QoSConnectorView* line = f.view->connectorView(name);
        QVERIFY(line);
        std::unique_ptr<QMenu> menu(line->createContextMenu(nullptr));
        QStringList entries;
        for (QAction* group : menu->actions())
            for (QAction* item : group->menu()->actions())
                entries << group->text() + u'/' + item->text().section(u'\t', 0, 0) +
                               (item->isEnabled() ? "" : " (aus)");
        QCOMPARE(entries, QStringList({"&Bearbeiten/&Löschen", "&Bearbeiten/&Alle Löschen (aus)",
                                       "&Beziehung/&Eigenschaften (aus)"}));
        menu->findChild<QAction*>(QStringLiteral("itmEditDelete"))->trigger();
        QVERIFY(!f.flt(1)->ParentQoSObject());
    }

    void theLineLightsUpUnderTheMouse()
    {
        PageViewFixture f(QStringLiteral("C S1"));
        const QString name = QStringLiteral("LineTop") + f.cls(2)->Name();
        const QLine line = f.view->lineOnPane(name);
        QVERIFY(!f.view->isLineHighlighted(name));
        // Beside the line the page is hit, on it the line.
        QTest::mouseMove(f.view->pane(), line.p1() + QPoint(12, 6));
        QVERIFY(!f.view->isLineHighlighted(name));
        QTest::mouseMove(f.view->pane(), line.p1() + QPoint(0, 6));
        QVERIFY(f.view->isLineHighlighted(name));
        // Its timer puts it back.
        QTRY_VERIFY_WITH_TIMEOUT(!f.view->isLineHighlighted(name), 3000);
    }

    void theViewKeepsStepWithTheCore()
    {
        PageViewFixture f(QStringLiteral("C S1 F2 C F3"));
        QCOMPARE(f.view->boxWidgetCount(), 5);
        const QStringList lines{"LineTopQoSClass2", "LineTopQoSFilter1", "LineTopQoSFilter2"};
        for (const QString& line : lines)
            QVERIFY2(!f.view->lineOnPane(line).isNull(), qPrintable(line));
        f.doc.SetModified(false);
        QVERIFY(f.doc.ClearDocument());
        f.settle();
        QCOMPARE(f.view->boxWidgetCount(), 0);
        for (const QString& line : lines)
            QVERIFY(f.view->lineOnPane(line).isNull());
        QCOMPARE(f.view->pane()->findChildren<QoSObjectBox*>().size(), 0);
        PageScript::run(f.page, QStringLiteral("C"));
        f.settle();
        QCOMPARE(f.view->boxWidgetCount(), 1);
        QoSClass* fresh = qobject_cast<QoSClass*>(f.page->ContainedObjects().first());
        QCOMPARE(fresh->Name(), QStringLiteral("QoSClass4")); // the counter lives on
        QVERIFY(f.box(fresh));
        // Deleting, moving and linking in the core show at once.
        PageScript::run(f.page, QStringLiteral("S4"));
        f.settle();
        QoSObject* sub = f.page->ContainedObjects().last();
        const QString subLine = QStringLiteral("LineTop") + sub->Name();
        QVERIFY(!f.view->lineOnPane(subLine).isNull());
        sub->SetMatrixX(3);
        QCOMPARE(f.box(sub)->x(), int(sub->Left() / 15) - f.view->scrollPosition().x());
        QVERIFY(qAbs(f.view->lineOnPane(subLine).p2().x() - f.box(sub)->geometry().center().x()) <= 1);
        sub->EditDelete();
        f.settle();
        QCOMPARE(f.view->boxWidgetCount(), 1);
        QVERIFY(f.view->lineOnPane(subLine).isNull());
    }

    void thePageMenu()
    {
        const bool up = true;
        PageViewFixture f(QString(), up);
        std::unique_ptr<QMenu> menu(f.view->createPageMenu(nullptr));
        QStringList names;
        for (QAction* item : menu->actions())
            names << item->objectName();
        QCOMPARE(names, QStringList({"itmEditNewClass", "itmEditNewFilter", "", "itmObjectPageProperties"}));
        menu->actions().at(0)->trigger();
        f.settle();
        QCOMPARE(f.page->ClassCount(), 1);
        auto* c = qobject_cast<QoSClass*>(f.page->ContainedObjects().first());
        QCOMPARE(c->QoSDirection(), up ? QStringLiteral("up") : QStringLiteral("down"));
        QVERIFY(c->Selected());
        QVERIFY(f.box(c)->isAncestorOf(QApplication::focusWidget()));
        // A filter from the page's own menu never has a class.
        menu->actions().at(1)->trigger();
        f.settle();
        QCOMPARE(f.prompt.messages(),
                 QStringList{"Hinzufügen nicht möglich. Filter hat keine übergeordnete Klasse"});
    }

    void thePageSize()
    {
        PageViewFixture f;
        f.prompt.inputs = QStringList{QStringLiteral("10"), QStringLiteral("10, 8")};
        f.view->PageSizeCommand();
        QCOMPARE(f.prompt.inputDefaults, QStringList({"6, 5", "6, 5"}));
        QCOMPARE(PageScript::size(f.page), QStringLiteral("10x8"));
        const ObjectPageProperties& p = f.page->prop();
        QCOMPARE(f.view->pageSize(), QSize(10 * p.ColWidth / 15, 8 * p.RowHeight / 15));
        QCOMPARE(f.view->horizontalScrollBar()->maximum(),
                 std::max(0, f.view->pageSize().width() - f.view->pane()->width()));
    }

    // A page read as millions of columns wide is shown up to the last column a box can take,
    // and only the visible part is ever drawn or built.
    void aPageFarLargerThanAnyScreen()
    {
        PageViewFixture f;
        qint32 cols = 2000000000, rows = 5;
        f.page->SetGridDimensions(cols, rows);
        QoSClass* far = f.page->AddClass(QStringLiteral("0"), {.direction = QStringLiteral("down"),
                                                               .caption = QStringLiteral("weit"),
                                                               .x = qint16(32767),
                                                               .y = qint16(0)});
        f.settle();
        const ObjectPageProperties& p = f.page->prop();
        QCOMPARE(f.view->pageSize().width(), int(32768LL * p.ColWidth / 15));
        QVERIFY(!f.box(far));
        f.view->ensureVisible(far);
        f.settle();
        QVERIFY(f.box(far));
        QVERIFY(f.box(far)->geometry().intersects(f.view->pane()->rect()));
        QCOMPARE(f.view->boxWidgetCount(), 1);
        const QImage shown = f.view->grab().toImage();
        QCOMPARE(shown.size(), f.view->size() * shown.devicePixelRatio());
        QString error;
        QVERIFY(RenderObjectPage(f.page, &error).isNull());
        QVERIFY2(error.contains(u"zu groß"), qPrintable(error));
    }

    void widgetsOnlyNearTheVisiblePart()
    {
        PageViewFixture f(QString(QStringLiteral("C ")).repeated(40));
        QoSClass* first = f.cls(1);
        QoSClass* last = f.cls(40);
        QVERIFY(f.box(first));
        QVERIFY(!f.box(last));
        QVERIFY(f.view->boxWidgetCount() < 15);
        f.box(first)->focusControl()->setFocus(); // a box with the focus is never dropped
        f.view->setScrollPosition(QPoint(f.view->horizontalScrollBar()->maximum(), 0));
        f.settle();
        QVERIFY(f.box(last));
        QVERIFY(f.box(first));
        QVERIFY(!f.box(f.cls(2)));
        QVERIFY(f.view->boxWidgetCount() < 16);
    }

    // The editor lets the interface repaint at every step of a long import. The boxes read
    // so far have no places until the import ends, so no widget may be made for them then:
    // a widget for every box would make reading a large file take minutes.
    void readingAFileMakesWidgetsOnlyAtTheEnd()
    {
        class Repainting : public StatusWindow
        {
        public:
            explicit Repainting(ObjectPageView* view) : m_view(view) {}
            void Show(const QString&, const QString&) override {}
            void SetCaption(const QString&) override {}
            void SetMessage(const QString&) override
            {
                QCoreApplication::processEvents();
                most = qMax(most, m_view->boxWidgetCount());
            }
            void SetProgress(int, int) override {}
            void Close() override {}
            int most = 0;

        private:
            ObjectPageView* m_view;
        };
        PageViewFixture f;
        Repainting status(f.view);
        f.doc.setStatusWindow(&status);
        QByteArray file = "QOS_CLASS_N='200'\n";
        for (int n = 1; n <= 200; ++n)
            file += "QOS_CLASS_" + QByteArray::number(n) + "_PARENT='" + QByteArray::number(n > 1 ? 1 : 0) +
                    "'\n";
        QVERIFY(ImportQoSBytes(f.doc, file).complete);
        QCOMPARE(status.most, 0);
        f.settle();
        QVERIFY(f.box(f.page->ObjectAt(0, 0)));
        QVERIFY(f.view->boxWidgetCount() > 0 && f.view->boxWidgetCount() < 40);
        f.doc.setStatusWindow(nullptr);
    }

    void boxesFitTheirCells_data()
    {
        QTest::addColumn<int>("pointSize");
        QTest::addColumn<bool>("whileShown"); // the font changes while the page is on screen
        QTest::newRow("the default font") << 0 << false;
        QTest::newRow("a large font") << 16 << false;
        QTest::newRow("a large font chosen while the page is shown") << 16 << true;
    }
    void boxesFitTheirCells()
    {
        QFETCH(int, pointSize);
        QFETCH(bool, whileShown);
        const QFont before = QApplication::font();
        QFont large = before;
        large.setPointSize(pointSize ? pointSize : before.pointSize());
        if (pointSize && !whileShown)
            QApplication::setFont(large);
        {
            PageViewFixture f(QStringLiteral("C S1 S1 F2 F2 F3 C F4"));
            if (whileShown) {
                QApplication::setFont(large);
                f.settle();
            }
            f.view->realizeAll();
            const ObjectPageProperties& p = f.page->prop();
            const QList<QoSObjectBox*> boxes = f.view->pane()->findChildren<QoSObjectBox*>();
            QCOMPARE(boxes.size(), 8);
            for (QoSObjectBox* b : boxes) {
                const QoSObject* o = b->object();
                const QRect cellRect(int(o->MatrixX() * p.ColWidth / 15.0),
                                     int(o->MatrixY() * p.RowHeight / 15.0), p.ColWidth / 15,
                                     p.RowHeight / 15);
                QVERIFY2(cellRect.contains(b->geometry().translated(f.view->scrollPosition())),
                         qPrintable(o->Name()));
                for (QoSObjectBox* other : boxes)
                    QVERIFY(other == b || !other->geometry().intersects(b->geometry()));
                // Every field lies wholly inside its box, and no text is cut: each text box and
                // label is at least as large as it needs to be.
                for (QWidget* w : b->findChildren<QWidget*>()) {
                    if (!w->isVisibleTo(b))
                        continue;
                    const QString what = o->Name() + u' ' + w->objectName();
                    if (w->parentWidget() == b)
                        QVERIFY2(b->rect().contains(w->geometry()), qPrintable(what));
                    const QSize need = w->minimumSizeHint();
                    if (auto* edit = qobject_cast<QLineEdit*>(w)) {
                        const int text = edit->fontMetrics().horizontalAdvance(edit->text());
                        QVERIFY2(edit->height() >= need.height() && text <= edit->contentsRect().width() - 4,
                                 qPrintable(what));
                    } else if (qobject_cast<QLabel*>(w) && w->objectName() != u"Label2") {
                        QVERIFY2(w->height() >= need.height() && w->width() >= need.width(),
                                 qPrintable(what));
                    }
                }
            }
        }
        QApplication::setFont(before);
    }

    void theDragShowsWhereTheBoxLands_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<QPoint>("cell"); // where the box's top-left corner is let go
        QTest::addColumn<int>("look");
        using Look = ObjectPageView::DropLook;
        // clang-format off
        QTest::newRow("a free cell") << "C C" << "C2" << QPoint(4, 2) << int(Look::Lands);
        QTest::newRow("its own cell") << "C C" << "C2" << QPoint(1, 0) << int(Look::Lands);
        QTest::newRow("a class it would hang under") << "C C" << "C2" << QPoint(0, 0) << int(Look::Links);
        QTest::newRow("a filter on a filter is refused") << "C C F1 F2" << "F1" << QPoint(1, 4) << int(Look::Refused);
        QTest::newRow("a class in a filter row is refused") << "C C" << "C2" << QPoint(3, 4) << int(Look::Refused);
        QTest::newRow("a class on a filter goes back") << "C C F1" << "C2" << QPoint(0, 4) << int(Look::Refused);
        // clang-format on
    }
    void theDragShowsWhereTheBoxLands()
    {
        QFETCH(QString, script);
        QFETCH(QString, dragged);
        QFETCH(QPoint, cell);
        QFETCH(int, look);
        PageViewFixture f(script);
        QoSObjectBox* b = f.box(named(f, dragged));
        TittleBar* title = b->titleBar();
        const QPoint grab = title->pos() + QPoint(8, 4);
        QTest::mousePress(title, Qt::LeftButton, {}, grab - title->pos());
        QCOMPARE(int(f.view->dropTargetLook()), int(ObjectPageView::DropLook::None));
        const QPoint from = b->mapToGlobal(grab);
        const QPoint to = f.view->pane()->mapToGlobal(f.cellCorner(cell.x(), cell.y()) + QPoint(4, 4) + grab);
        for (int i = 1; i <= 4; ++i)
            QTest::mouseMove(b, b->mapFromGlobal(from + (to - from) * i / 4));
        QCOMPARE(int(f.view->dropTargetLook()), look);
        const QPoint corner = f.cellCorner(cell.x(), cell.y());
        QCOMPARE(f.view->dropTargetRect().topLeft(), corner);
        QCOMPARE(f.view->dropTargetRect().bottomRight(), f.cellCorner(cell.x() + 1, cell.y() + 1));
        // Drawn around the cell, in the margin its box leaves free.
        const QImage shown = f.view->pane()->grab().toImage();
        const QPoint edge = (corner - f.view->scrollPosition() + QPoint(f.page->prop().ColWidth / 30, 1)) *
                            shown.devicePixelRatio();
        QVERIFY(shown.pixelColor(edge) != f.view->pane()->palette().color(QPalette::Base));
        QTest::mouseRelease(b, Qt::LeftButton, {}, b->mapFromGlobal(to));
        f.settle();
        QCOMPARE(int(f.view->dropTargetLook()), int(ObjectPageView::DropLook::None));
    }

    // Tab from the page walks every box once, in the order of the picture, also the boxes
    // out of sight, and comes back to the page; Shift+Tab walks them backwards.
    void tabReachesEveryBoxInPictureOrder_data()
    {
        QTest::addColumn<bool>("forward");
        QTest::newRow("Tab") << true;
        QTest::newRow("Shift+Tab") << false;
    }
    void tabReachesEveryBoxInPictureOrder()
    {
        QFETCH(bool, forward);
        PageViewFixture f(QString(QStringLiteral("C ")).repeated(12) +
                          QStringLiteral("S1 S1 F13 F14 F12 F12"));
        QStringList expected;
        for (const QoSObject* o : f.page->ObjectsInWriteOrder())
            expected << PageScript::shortName(o);
        if (!forward)
            std::reverse(expected.begin(), expected.end());
        QVERIFY(!f.box(f.page->ObjectsInWriteOrder().at(11))); // out of sight at first
        f.view->pane()->setFocus();
        QStringList reached;
        for (int press = 0; press < 1000; ++press) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab,
                            forward ? Qt::NoModifier : Qt::ShiftModifier);
            f.settle();
            QWidget* focus = QApplication::focusWidget();
            if (focus == f.view->pane())
                break;
            QoSObjectBox* b = nullptr;
            for (QWidget* w = focus; w && !b; w = w->parentWidget())
                b = qobject_cast<QoSObjectBox*>(w);
            QVERIFY2(b, qPrintable(focus ? focus->objectName() : QStringLiteral("nothing")));
            const QString name = PageScript::shortName(b->object());
            if (reached.isEmpty() || reached.last() != name) {
                reached << name;
                // The box with the focus is selected and in sight.
                QVERIFY(b->object()->Selected());
                QVERIFY(b->geometry().intersects(f.view->pane()->rect()));
            }
        }
        QCOMPARE(reached, expected);
        QCOMPARE(QApplication::focusWidget(), f.view->pane());
    }

    // A selected line stands just before the box below it.
    void tabFromASelectedLine_data()
    {
        QTest::addColumn<bool>("forward");
        QTest::addColumn<QString>("reached");
        QTest::newRow("Tab goes to the box below the line") << true << "F1";
        QTest::newRow("Shift+Tab to the box before that one") << false << "C2";
    }
    void tabFromASelectedLine()
    {
        QFETCH(bool, forward);
        QFETCH(QString, reached);
        PageViewFixture f(QStringLiteral("C C F1"));
        f.view->pressLine(f.flt(1)->LineTop());
        QCOMPARE(QApplication::focusWidget(), f.view->connectorView(QStringLiteral("LineTopQoSFilter1")));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab,
                        forward ? Qt::NoModifier : Qt::ShiftModifier);
        f.settle();
        QoSObject* o = named(f, reached);
        QVERIFY(f.box(o)->isAncestorOf(QApplication::focusWidget()));
        QVERIFY(o->Selected());
        QVERIFY(!f.flt(1)->LineTop()->Selected());
    }

    // A loop that scrolls and never returns to the event loop still has only the widgets of
    // what it shows: the ones it scrolled past are gone, not waiting to be deleted.
    void scrollingInALoopKeepsNoDroppedWidgets()
    {
        PageViewFixture f(QString(QStringLiteral("C ")).repeated(60));
        int most = 0;
        for (int pass = 0; pass < 4; ++pass) {
            f.view->setScrollPosition(QPoint(0, 0));
            do {
                QCoreApplication::sendPostedEvents(); // everything but the deferred deletes
                most = std::max(
                    most,
                    int(f.view->pane()->findChildren<QoSObjectBox*>(Qt::FindDirectChildrenOnly).size()));
            } while (f.view->scrollBy(QPoint(f.view->pane()->width() / 2, 0)));
        }
        QVERIFY2(most < 3 * f.view->boxWidgetCount() + 10, qPrintable(QString::number(most)));
        QCOMPARE(f.view->droppedWidgetCount(), 0);
    }

    // The index of boxes and lines answers every area as looking at each rectangle would:
    // small and huge rectangles, negative places, moves between buckets, removals.
    void spatialIndexAgreesWithAPlainSearch()
    {
        QRandomGenerator random(20240917);
        SpatialIndex<int> index;
        QHash<int, QRect> plain;
        const auto someRect = [&random] {
            const int side = 1 << random.bounded(18); // from one pixel to a quarter million
            return QRect(random.bounded(-300, 200000), random.bounded(-300, 200000), 1 + random.bounded(side),
                         1 + random.bounded(side));
        };
        for (int step = 0; step < 4000; ++step) {
            const int key = random.bounded(600);
            if (random.bounded(5) == 0) {
                index.remove(key);
                plain.remove(key);
            } else {
                const QRect r = someRect();
                index.insert(key, r);
                plain.insert(key, r);
            }
            if (step % 20 != 0)
                continue;
            const QRect area =
                step % 400 == 0 ? QRect(-1000000, -1000000, 2000000000, 2000000000) : someRect();
            QList<int> found = index.findIn(area);
            std::sort(found.begin(), found.end());
            QList<int> expected;
            for (auto it = plain.cbegin(); it != plain.cend(); ++it)
                if (it->intersects(area))
                    expected << it.key();
            std::sort(expected.begin(), expected.end());
            QCOMPARE(found, expected);
            QCOMPARE(index.size(), plain.size());
        }
    }

    void aPicture()
    {
        PageViewFixture f(QStringLiteral("C S1 F2"));
        QString error;
        const QImage image = RenderObjectPage(f.page, &error);
        QVERIFY(error.isEmpty());
        QCOMPARE(image.size(), f.view->pageSize());
    }
};

QTEST_MAIN(TestPageView)
#include "tst_pageview.moc"
