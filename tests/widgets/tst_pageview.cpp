#include "file/qosreader.h"
#include "model/plugbottom.h"
#include "model/qosconnector.h"
#include "page/qosconnectorview.h"
#include "page/spatialindex.h"
#include "pageviewfixture.h"

#include <QAction>
#include <QCheckBox>
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
    static QString parentOf(const QoSObject* o)
    {
        return o->ParentQoSObject() ? PageScript::shortName(o->ParentQoSObject()) : QString();
    }

private slots:
    // The box with the focus is the page's selection, and its title shows it; a click on the
    // empty page deselects.
    void focusSelectsAndDeselects()
    {
        PageViewFixture f(QStringLiteral("C C"));
        QoSObjectBox* a = f.box(f.cls(1));
        QoSObjectBox* b = f.box(f.cls(2));
        a->focusControl()->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); // on to a field of the same box
        QVERIFY(a->isAncestorOf(QApplication::focusWidget()));
        QCOMPARE(f.page->SelectedObject(), f.cls(1));
        b->findChild<QWidget*>(QStringLiteral("txtMax"))->setFocus();
        QCOMPARE(f.page->SelectedObject(), f.cls(2));
        QVERIFY(!f.cls(1)->Selected());
        QTest::mouseClick(f.view->pane(), Qt::LeftButton, {}, QPoint(f.view->pane()->width() - 5, 5));
        QCOMPARE(f.page->SelectedObject(), nullptr);
        QTest::mouseClick(a->titleBar(), Qt::LeftButton);
        QVERIFY(f.cls(1)->Selected());
        QVERIFY(a->titleBar()->IsActive() && !b->titleBar()->IsActive());
    }

    // A box dragged by its title: while it moves, the cell it would land in is drawn as what
    // letting go there would do; let go, the core decides, and the box ends centred in its
    // cell, on screen as in the core. Its top-left corner decides the cell, even when most of
    // the box hangs over the neighbouring one, and it never leaves the page.
    void aDraggedBox_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<QPoint>("to");    // the cell whose corner the box's corner is let go near
        QTest::addColumn<QPoint>("nudge"); // from that corner, in pixels
        QTest::addColumn<QPoint>("shown"); // the cell shown while dragging
        QTest::addColumn<int>("look");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("after"); // the dragged box's cell and parent
        const int lands = int(ObjectPageView::DropLook::Lands), links = int(ObjectPageView::DropLook::Links),
                  refused = int(ObjectPageView::DropLook::Refused);
        const QPoint in(6, 6);
        // clang-format off
        QTest::newRow("a free cell") << "C C" << "C2" << QPoint(4, 2) << in << QPoint(4, 2) << lands << "" << "4,2<";
        QTest::newRow("the top-left corner decides") << "C C" << "C2" << QPoint(4, 3) << QPoint(-3, -3) << QPoint(3, 2) << lands << "" << "3,2<";
        QTest::newRow("its own cell") << "C C" << "C2" << QPoint(1, 0) << in << QPoint(1, 0) << lands << "" << "1,0<";
        QTest::newRow("a class it hangs under") << "C C" << "C2" << QPoint(0, 0) << in << QPoint(0, 0) << links << "" << "1,0<C1";
        QTest::newRow("a filter on a filter") << "C C F1 F2" << "F1" << QPoint(1, 4) << in << QPoint(1, 4) << refused
                                              << "Anhängen nicht möglich! TODO" << "0,4<C1";
        QTest::newRow("beyond the page's corner it stays on the page") << "C S1" << "C2" << QPoint(-5, -5) << in << QPoint(0, 0) << links << "" << "0,1<C1";
        // clang-format on
    }
    void aDraggedBox()
    {
        QFETCH(QString, script);
        QFETCH(QString, dragged);
        QFETCH(QPoint, to);
        QFETCH(QPoint, nudge);
        QFETCH(QPoint, shown);
        QFETCH(int, look);
        QFETCH(QString, after);
        const int refused = int(ObjectPageView::DropLook::Refused);
        PageViewFixture f(script);
        QoSObject* moving = f.named(dragged);
        const QString before = cell(moving) + u'<' + parentOf(moving);
        f.doc.SetModified(false);
        f.drag(moving, f.cellCorner(to.x(), to.y()) + nudge, [&] {
            QCOMPARE(int(f.view->dropTargetLook()), look);
            const QPoint corner = f.cellCorner(shown.x(), shown.y());
            QCOMPARE(f.view->dropTargetRect(), QRect(corner, f.cellCorner(shown.x() + 1, shown.y() + 1)));
            // Drawn around the cell, in the margin its box leaves free.
            const QImage drawn = f.view->pane()->grab().toImage();
            const QPoint edge = corner - f.view->scrollPosition() + QPoint(f.page->prop().ColWidth / 30, 1);
            QVERIFY(drawn.pixelColor(edge * drawn.devicePixelRatio()) !=
                    f.view->pane()->palette().color(QPalette::Base));
        });
        QCOMPARE(int(f.view->dropTargetLook()), int(ObjectPageView::DropLook::None));
        QTEST(f.prompt.messages().join(u'|'), "message");
        QCOMPARE(cell(moving) + u'<' + parentOf(moving), after);
        if (look == refused || after != before) // a drop that changes nothing may still mark
            QCOMPARE(f.doc.IsModified(), look != refused);
        QCOMPARE(f.view->lineOnPane(QStringLiteral("LineTop") + moving->Name()).isNull(), !moving->LineTop());
        const ObjectPageProperties& p = f.page->prop();
        QCOMPARE(moving->Left(),
                 moving->MatrixX() * double(p.ColWidth) + (p.ColWidth - moving->Width()) / 2.0);
        QCOMPARE(f.box(moving)->geometry().topLeft(),
                 QPoint(int(moving->Left() / 15), int(moving->Top() / 15)) - f.view->scrollPosition());
    }

    // A file may put two boxes into one cell. Pressing and releasing the later one without a
    // move is a click: it selects the box and must not drop it on the box found in its cell.
    void aClickOnABoxThatSharesItsCell()
    {
        PageViewFixture f(QStringLiteral("C F1 F1"));
        QoSObject* first = f.flt(1);
        QoSObject* moved = f.flt(2);
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
        QCOMPARE(moved->ParentQoSObject(), f.cls(1));
        QVERIFY(!f.doc.IsModified());
    }

    // A class's plug dropped on a box links it where the core takes the plug, without a word;
    // a box does not even offer to take its own.
    void aPlug()
    {
        PageViewFixture f(QStringLiteral("C C F1"));
        const auto drop = [&f](QoSObject* plug, QoSObject* target) {
            QMimeData data;
            data.setData(PlugBottom::MimeType(), plug->Name().toUtf8());
            QoSObjectBox* box = f.box(target);
            QDragEnterEvent enter(box->rect().center(), Qt::LinkAction, &data, Qt::LeftButton,
                                  Qt::NoModifier);
            QApplication::sendEvent(box, &enter);
            if (enter.isAccepted()) {
                QDropEvent drop(box->rect().center(), Qt::LinkAction, &data, Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(box, &drop);
            }
            f.settle();
            return enter.isAccepted();
        };
        QVERIFY(!drop(f.cls(1), f.cls(1)));
        QVERIFY(drop(f.cls(2), f.flt(1)));
        QCOMPARE(f.flt(1)->ParentQoSObject(), f.cls(2));
        QVERIFY(f.prompt.messages().isEmpty());
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
        // clang-format off
        QTest::newRow("the gap below the class: the shorter of two lines on each other") << "below class" << "LineTopF1";
        QTest::newRow("between the filters: the one line there") << "between filters" << "LineTopF2";
        QTest::newRow("a box over a line takes the click") << "on first filter" << "F1";
        QTest::newRow("beside the lines the page clears the selection") << "beside" << "";
        // clang-format on
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

    // A selected line, chosen by a click or by its own menu, takes the keyboard; Delete, Ctrl+X
    // or its menu cut the relation, leave both boxes and hand the keyboard to the page. A click
    // elsewhere deselects the line and takes its widget away.
    void deletingALine_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("deletes");
        QTest::newRow("Delete") << "Delete" << true;
        QTest::newRow("Ctrl+X") << "Ctrl+X" << true;
        QTest::newRow("Ctrl+Shift+X is not cut") << "Ctrl+Shift+X" << false;
        QTest::newRow("the line's own menu") << "menu" << true;
        // On some platforms an open menu takes the window's activation away.
        QTest::newRow("the line's own menu, the window inactive meanwhile") << "menu, inactive" << true;
    }
    void deletingALine()
    {
        QFETCH(QString, how);
        QFETCH(bool, deletes);
        PageViewFixture f(QStringLiteral("C F1"));
        const QString name = QStringLiteral("LineTop") + f.flt(1)->Name();
        const QPoint at = f.view->lineOnPane(name).center();
        const bool byMenu = how.startsWith(u"menu");
        if (byMenu) {
            QContextMenuEvent click(QContextMenuEvent::Mouse, at, f.view->pane()->mapToGlobal(at));
            QApplication::sendEvent(f.view->pane(), &click);
        } else {
            QTest::mouseClick(f.view->pane(), Qt::LeftButton, {}, at);
        }
        QVERIFY(f.flt(1)->LineTop()->Selected());
        QCOMPARE(f.page->SelectedConnector(), f.flt(1)->LineTop());
        QCOMPARE(QApplication::focusWidget(), f.view->connectorView(name));
        if (byMenu) {
            auto* menu = f.view->findChild<QMenu*>();
            QVERIFY(menu);
            QCoreApplication::processEvents();
            if (how.endsWith(u"inactive"))
                QApplication::setActiveWindow(nullptr);
            // As a chosen entry does: the menu goes, then the entry runs.
            menu->close();
            menu->findChild<QAction*>(QStringLiteral("itmEditDelete"))->trigger();
            f.settle();
            QApplication::setActiveWindow(f.view); // the menu gone, the window is active again
        } else {
            QTest::keySequence(QApplication::focusWidget(), QKeySequence(how));
        }
        f.settle();
        QCOMPARE(f.page->ObjectCount(), 2);
        QCOMPARE(!f.flt(1)->LineTop(), deletes);
        QCOMPARE(f.cls(1)->ChildQoSObjects().isEmpty(), deletes);
        QCOMPARE(f.view->lineOnPane(name).isNull(), deletes);
        QCOMPARE(f.view->connectorView(name) == nullptr, deletes);
        if (deletes)
            QCOMPARE(QApplication::focusWidget(), f.view->pane());
        QTest::mouseClick(f.view->pane(), Qt::LeftButton, {}, QPoint(f.view->pane()->width() - 5, 5));
        f.settle();
        QVERIFY(!f.flt(1)->LineTop() || !f.flt(1)->LineTop()->Selected());
        QCOMPARE(f.view->connectorWidgetCount(), 0);
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

    // The view follows the core by its signals: a cleared document, boxes added, moved, linked
    // and deleted. A line joins the middle of the parent's bottom edge and the middle of the
    // child's top edge, and is drawn there.
    void theViewKeepsStepWithTheCore()
    {
        PageViewFixture f(QStringLiteral("C S1 F2 C F3"));
        QCOMPARE(f.view->boxWidgetCount(), 5);
        QVERIFY(!f.view->lineOnPane(QStringLiteral("LineTopQoSFilter2")).isNull());
        f.doc.SetModified(false);
        QVERIFY(f.doc.ClearDocument());
        f.settle();
        QCOMPARE(f.view->boxWidgetCount(), 0);
        QCOMPARE(f.view->pane()->findChildren<QoSObjectBox*>().size(), 0);
        QVERIFY(f.view->lineOnPane(QStringLiteral("LineTopQoSFilter2")).isNull());
        PageScript::run(f.page, QStringLiteral("C S4")); // the class numbers go on from 4
        f.settle();
        QoSClass* parent = f.cls(4);
        QoSClass* child = f.cls(5);
        QVERIFY(child && f.box(parent) && f.box(child));
        child->SetMatrixX(2);
        child->SetMatrixY(2);
        parent->SetMatrixX(4);
        const QString name = QStringLiteral("LineTop") + child->Name();
        const QLine line = f.view->lineOnPane(name);
        const QRect top = f.box(parent)->geometry();
        const QRect bottom = f.box(child)->geometry();
        QCOMPARE(bottom.topLeft(),
                 QPoint(int(child->Left() / 15), int(child->Top() / 15)) - f.view->scrollPosition());
        QVERIFY2(qAbs(line.p1().x() - top.center().x()) <= 1, qPrintable(QString::number(line.p1().x())));
        QCOMPARE(line.p1().y(), top.bottom() + 1);
        QVERIFY(qAbs(line.p2().x() - bottom.center().x()) <= 1);
        QCOMPARE(line.p2().y(), bottom.top());
        child->EditDelete();
        f.settle();
        QCOMPARE(f.view->boxWidgetCount(), 1);
        QVERIFY(f.view->lineOnPane(name).isNull());
    }

    // The page's own menu runs the page's commands once the menu is gone; the view and a
    // picture of the page follow a new page size.
    void thePageMenu()
    {
        PageViewFixture f;
        std::unique_ptr<QMenu> menu(f.view->createPageMenu(nullptr));
        const auto run = [&](const char* item) {
            menu->findChild<QAction*>(QString::fromLatin1(item))->trigger();
            f.settle();
        };
        run("itmEditNewClass");
        QCOMPARE(f.page->ClassCount(), 1);
        QVERIFY(f.cls(1)->Selected());
        QVERIFY(f.box(f.cls(1))->isAncestorOf(QApplication::focusWidget()));
        f.prompt.inputs = QStringList{QStringLiteral("10, 8")};
        run("itmObjectPageProperties");
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
    }

    // Widgets only for the boxes near the visible part, never dropping the one with the focus;
    // a loop that scrolls and never returns to the event loop still has only the widgets of
    // what it shows: the ones it scrolled past are gone, not waiting to be deleted.
    void widgetsOnlyNearTheVisiblePart()
    {
        PageViewFixture f(QString(QStringLiteral("C ")).repeated(60));
        QoSClass* first = f.cls(1);
        QoSClass* last = f.cls(60);
        QVERIFY(f.box(first) && !f.box(last));
        QVERIFY(f.view->boxWidgetCount() < 15);
        f.box(first)->focusControl()->setFocus();
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
        f.settle();
        QVERIFY(f.box(last) && f.box(first) && !f.box(f.cls(2)));
        QVERIFY(f.view->boxWidgetCount() < 16);
    }

    // The editor lets the interface repaint at every step of a long import. The boxes read
    // so far have no places until the import ends, so no widget may be made for them then:
    // a widget for every box would make reading a large file take minutes.
    void readingAFileMakesWidgetsOnlyAtTheEnd()
    {
        struct Repainting : RecordingStatus
        {
            ObjectPageView* view = nullptr;
            int most = 0;
            void SetMessage(const QString&) override
            {
                QCoreApplication::processEvents();
                most = qMax(most, view->boxWidgetCount());
            }
        } status;
        PageViewFixture f;
        status.view = f.view;
        f.doc.setStatusWindow(&status);
        QByteArray file = "QOS_CLASS_N='200'\n";
        for (int n = 1; n <= 200; ++n)
            file += "QOS_CLASS_" + QByteArray::number(n) + "_PARENT='" + (n > 1 ? "1" : "0") + "'\n";
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
                // Every field lies wholly inside its box, beside the others, and nothing is cut:
                // each text box, label and button is at least as large as it needs to be.
                const QList<QWidget*> fields = b->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
                for (QWidget* w : b->findChildren<QWidget*>()) {
                    if (!w->isVisibleTo(b) || w->objectName() == u"Label1" || w->objectName() == u"dummy")
                        continue;
                    const QString what = o->Name() + u' ' + w->objectName();
                    if (fields.contains(w)) {
                        QVERIFY2(b->rect().contains(w->geometry()), qPrintable(what));
                        for (QWidget* other : fields)
                            QVERIFY2(other == w || !other->isVisibleTo(b) ||
                                         other->objectName() == u"Label1" ||
                                         !other->geometry().intersects(w->geometry()),
                                     qPrintable(what + u' ' + other->objectName()));
                    }
                    const QSize need = w->minimumSizeHint();
                    if (auto* edit = qobject_cast<QLineEdit*>(w)) {
                        const int text = edit->fontMetrics().horizontalAdvance(edit->text());
                        QVERIFY2(edit->height() >= need.height() && text <= edit->contentsRect().width() - 4,
                                 qPrintable(what));
                    } else if ((qobject_cast<QLabel*>(w) && w->objectName() != u"Label2") ||
                               qobject_cast<QCheckBox*>(w)) {
                        QVERIFY2(w->height() >= need.height() && w->width() >= need.width(),
                                 qPrintable(what));
                    }
                }
            }
        }
        QApplication::setFont(before);
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
        QoSObject* o = f.named(reached);
        QVERIFY(f.box(o)->isAncestorOf(QApplication::focusWidget()));
        QVERIFY(o->Selected());
        QVERIFY(!f.flt(1)->LineTop()->Selected());
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
};

QTEST_MAIN(TestPageView)
#include "tst_pageview.moc"
