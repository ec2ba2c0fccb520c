#include "objectpageview.h"

#include "check/validationwatcher.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosconnector.h"
#include "model/qosobjectbox.h"
#include "moveobject.h"
#include "objectpane.h"
#include "pageboxes.h"
#include "pagefocus.h"
#include "pagelines.h"
#include "pagescroller.h"

#include <QApplication>
#include <QGridLayout>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>

ObjectPageView::ObjectPageView(ObjectPage* page, QWidget* parent)
    : QWidget(parent), m_page(page), m_pane(new ObjectPane(this)), m_scroller(new PageScroller(this)),
      m_mover(new MoveObject(this)), m_watcher(new ValidationWatcher(page, this)),
      m_lines(new PageLines(this)), m_boxes(new PageBoxes(this)), m_focus(new PageFocus(this, m_boxes)),
      m_drop(this)
{
    setObjectName(page->Name());
    setAccessibleName(page->Direction() == u"up" ? QStringLiteral("Up") : QStringLiteral("Down"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(m_pane, 0, 0);
    grid->addWidget(m_scroller->vertical(), 0, 1);
    grid->addWidget(m_scroller->horizontal(), 1, 0);
    grid->addWidget(m_scroller->corner(), 1, 1);
    connect(m_scroller, &PageScroller::scrolled, this, &ObjectPageView::realizeScrolled);

    Document* document = page->document();
    connect(page, &ObjectPage::objectAdded, this, &ObjectPageView::adopt);
    connect(page, &ObjectPage::placed, m_boxes, &PageBoxes::scheduleRealize);
    connect(page, &ObjectPage::objectRemoved, m_boxes, &PageBoxes::remove);
    connect(page, &ObjectPage::gridChanged, this, &ObjectPageView::gridChanged);
    connect(page, &ObjectPage::selectionChanged, this, &ObjectPageView::selectionChanged);
    // Clearing the document tells the document, not the pages, about every box that goes.
    connect(document, &Document::objectRemoved, m_boxes, &PageBoxes::remove);
    connect(document, &Document::connectorAdded, this, &ObjectPageView::adoptConnector);
    connect(document, &Document::connectorRemoved, m_lines, &PageLines::remove);
    connect(document, &Document::cleared, this, [this] {
        m_boxes->clear();
        m_lines->clear();
    });

    m_boxes->fitCells();
    for (QoSObject* object : page->ContainedObjects())
        adopt(object);
    m_scroller->fitToPage();
    m_boxes->scheduleRealize();
}

ObjectPageView::~ObjectPageView()
{
    // The focus moving while the boxes go must not reach a view half taken apart.
    delete m_focus;
    m_focus = nullptr;
    // The boxes go with the pane; they must not talk to their objects on the way. The pane
    // goes first, while the boxes' view is still whole.
    m_boxes->detachWidgets();
    m_lines->detachWidgets();
    delete m_pane;
    m_pane = nullptr;
}

void ObjectPageView::setPrompt(UserPrompt* prompt)
{
    m_prompt = prompt;
    for (QoSObjectBox* widget : m_boxes->widgets())
        widget->setPrompt(prompt);
}

void ObjectPageView::setStatusLine(StatusLine* line)
{
    m_statusLine = line;
    for (QoSObjectBox* widget : m_boxes->widgets())
        widget->setStatusLine(line);
}

void ObjectPageView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    // Another font makes other boxes: the cells grow to them, and every box is made anew.
    QPointer<QoSObject> focused = m_focus->focusedObject();
    m_pane->setFocus(Qt::OtherFocusReason);
    m_boxes->remake();
    realize();
    if (focused)
        focusObject(focused);
}

// --- what the core tells --------------------------------------------------------------------

void ObjectPageView::adopt(QoSObject* object)
{
    if (!m_boxes->adopt(object))
        return;
    // A box selected from elsewhere (the calculator, a new class) is brought into view.
    connect(object, &QoSObject::selectedChanged, this, [this, object](bool selected) {
        if (selected && !PageBoxes::rectOf(object).intersects(m_scroller->visibleRect()))
            ensureVisible(object);
    });
    if (QoSConnector* line = object->LineTop())
        adoptConnector(line);
}

void ObjectPageView::adoptConnector(QoSConnector* connector)
{
    if (connector && connector->GetObjectPage() == m_page)
        m_lines->adopt(connector);
}

void ObjectPageView::gridChanged()
{
    if (m_scroller->gridChanged())
        m_boxes->scheduleRealize();
}

void ObjectPageView::realizeScrolled()
{
    m_lines->scrolled();
    realize();
}

// --- boxes ------------------------------------------------------------------------------------

QoSObjectBox* ObjectPageView::box(const QString& name) const
{
    return m_boxes->widget(name);
}

int ObjectPageView::boxWidgetCount() const
{
    return m_boxes->widgetCount();
}

int ObjectPageView::droppedWidgetCount() const
{
    return m_boxes->droppedWidgetCount();
}

void ObjectPageView::realize()
{
    m_boxes->realize();
}

void ObjectPageView::realizeAll()
{
    m_boxes->realizeAll();
}

void ObjectPageView::dropWidget(QWidget* widget)
{
    m_boxes->drop(widget);
}

void ObjectPageView::setPinned(QWidget* widget, bool pinned)
{
    m_boxes->setPinned(widget, pinned);
}

// --- geometry and scrolling ---------------------------------------------------------------------

QScrollBar* ObjectPageView::horizontalScrollBar() const
{
    return m_scroller->horizontal();
}

QScrollBar* ObjectPageView::verticalScrollBar() const
{
    return m_scroller->vertical();
}

void ObjectPageView::setScrollBarsShown(bool shown)
{
    m_scroller->setBarsShown(shown);
}

QSize ObjectPageView::pageSize() const
{
    return m_scroller->pageSize();
}

QPoint ObjectPageView::scrollPosition() const
{
    return m_scroller->position();
}

void ObjectPageView::setScrollPosition(const QPoint& position)
{
    m_scroller->setPosition(position);
}

bool ObjectPageView::scrollBy(const QPoint& delta)
{
    return m_scroller->scrollBy(delta);
}

QPointF ObjectPageView::pagePosition(const QPointF& globalPos) const
{
    return m_pane->mapFromGlobal(globalPos) + QPointF(scrollPosition());
}

void ObjectPageView::updatePageRect(const QRect& rect)
{
    const QRect shown = rect.translated(-scrollPosition()).intersected(m_pane->rect());
    if (!shown.isEmpty())
        m_pane->update(shown);
}

void ObjectPageView::paneResized()
{
    m_scroller->updateBars();
    realize();
}

void ObjectPageView::ensureVisible(const QoSObject* object)
{
    m_scroller->ensureVisible(PageBoxes::rectOf(object));
}

// --- the keyboard -------------------------------------------------------------------------------

void ObjectPageView::focusObject(QoSObject* object, bool lastField)
{
    m_focus->focusObject(object, lastField);
}

void ObjectPageView::focusNextBox(const QoSObject* from, bool forward)
{
    m_focus->focusNextBox(from, forward);
}

void ObjectPageView::leavePage(bool forward)
{
    m_focus->leavePage(forward);
}

// --- lines --------------------------------------------------------------------------------------

QoSConnector* ObjectPageView::connectorAt(const QPoint& panePos) const
{
    return m_lines->connectorAt(panePos + scrollPosition());
}

QLine ObjectPageView::lineOnPane(const QString& name) const
{
    const QLine line = m_lines->line(name);
    return line.isNull() ? line : line.translated(-scrollPosition());
}

bool ObjectPageView::isLineHighlighted(const QString& name) const
{
    return m_lines->isHighlighted(name);
}

void ObjectPageView::hoverLine(QoSConnector* connector)
{
    m_lines->hover(connector);
}

void ObjectPageView::pressLine(QoSConnector* connector)
{
    m_lines->press(connector);
}

void ObjectPageView::lineMenu(QoSConnector* connector, const QPoint& globalPos)
{
    m_lines->menu(connector, globalPos);
}

void ObjectPageView::paintLines(QPainter& painter, const QRect& exposed) const
{
    const QPoint offset = scrollPosition();
    painter.save();
    painter.translate(-offset);
    m_lines->paint(painter, exposed.translated(offset));
    painter.restore();
}

QoSConnectorView* ObjectPageView::connectorView(const QString& name) const
{
    return m_lines->widget(name);
}

int ObjectPageView::connectorWidgetCount() const
{
    return m_lines->widgetCount();
}

// --- the cell a dragged box would land in -------------------------------------------------------

void ObjectPageView::showDropTarget(const DropPlan& plan)
{
    m_drop.show(plan);
}

void ObjectPageView::hideDropTarget()
{
    m_drop.hide();
}

void ObjectPageView::paintDropTarget(QPainter& painter, const QRect& exposed) const
{
    m_drop.paint(painter, exposed);
}

// --- the page's own commands ----------------------------------------------------------------------

QMenu* ObjectPageView::createPageMenu(QWidget* parent)
{
    auto* menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("mnuPage"));
    // The commands run once the menu is gone: they may ask the user in a dialog of their own.
    auto add = [this, menu](const QString& name, const QString& caption, void (ObjectPageView::*command)()) {
        QAction* item = menu->addAction(caption);
        item->setObjectName(name);
        connect(item, &QAction::triggered, this,
                [this, command] { QMetaObject::invokeMethod(this, command, Qt::QueuedConnection); });
    };
    add(QStringLiteral("itmEditNewClass"), QStringLiteral("Neue &Klasse"), &ObjectPageView::NewClassCommand);
    add(QStringLiteral("itmEditNewFilter"), QStringLiteral("Neuer &Filter"),
        &ObjectPageView::NewFilterCommand);
    menu->addSeparator();
    add(QStringLiteral("itmObjectPageProperties"), QStringLiteral("&Seitengröße..."),
        &ObjectPageView::PageSizeCommand);
    return menu;
}

void ObjectPageView::NewClassCommand()
{
    if (QoSClass* c = m_page->NewClassCommand())
        focusObject(c);
}

void ObjectPageView::NewFilterCommand()
{
    m_page->NewFilterCommand();
}

void ObjectPageView::PageSizeCommand()
{
    m_page->PageSizeCommand();
}
