#include "objectpageview.h"

#include "base/twips.h"
#include "check/validationwatcher.h"
#include "model/boxmetrics.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosclassbox.h"
#include "model/qosconnector.h"
#include "model/qosfilter.h"
#include "model/qosfilterbox.h"
#include "moveobject.h"
#include "objectpane.h"
#include "pagelines.h"
#include "qosconnectorview.h"

#include <QApplication>
#include <QGridLayout>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

// A box's column and row are 16-bit: cells beyond these can never hold one.
constexpr qint64 MaxCells = 32768;
// Scroll positions and pixel sizes stay well inside int.
constexpr qint64 MaxPixels = 1 << 30;

int pixels(double twips)
{
    return Twips::ToPixels(twips);
}

// Nothing can be half-way through an event of a widget far out of sight, unless a dialog,
// a menu or a drag runs its own loop inside such an event.
bool safeToDeleteNow()
{
    return !QApplication::activeModalWidget() && !QApplication::activePopupWidget() &&
           QGuiApplication::mouseButtons() == Qt::NoButton;
}

} // namespace

ObjectPageView::ObjectPageView(ObjectPage* page, QWidget* parent)
    : QWidget(parent), m_page(page), m_pane(new ObjectPane(this)),
      m_hscrPane(new QScrollBar(Qt::Horizontal, this)), m_vscrPane(new QScrollBar(Qt::Vertical, this)),
      m_corner(new QWidget(this)), m_mover(new MoveObject(this)), m_watcher(new ValidationWatcher(page, this))
{
    setObjectName(page->Name());
    setAccessibleName(page->Direction() == u"up" ? QStringLiteral("Up") : QStringLiteral("Down"));
    m_hscrPane->setObjectName(QStringLiteral("hscrPane"));
    m_hscrPane->setAccessibleName(QStringLiteral("Seite waagerecht verschieben"));
    m_vscrPane->setObjectName(QStringLiteral("vscrPane"));
    m_vscrPane->setAccessibleName(QStringLiteral("Seite senkrecht verschieben"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(m_pane, 0, 0);
    grid->addWidget(m_vscrPane, 0, 1);
    grid->addWidget(m_hscrPane, 1, 0);
    grid->addWidget(m_corner, 1, 1);
    connect(m_hscrPane, &QScrollBar::valueChanged, this, &ObjectPageView::scrollBarMoved);
    connect(m_vscrPane, &QScrollBar::valueChanged, this, &ObjectPageView::scrollBarMoved);

    m_lines = new PageLines(this);
    Document* document = page->document();
    connect(page, &ObjectPage::objectAdded, this, &ObjectPageView::adopt);
    connect(page, &ObjectPage::placed, this, &ObjectPageView::scheduleRealize);
    connect(page, &ObjectPage::objectRemoved, this, &ObjectPageView::removeBox);
    connect(page, &ObjectPage::gridChanged, this, &ObjectPageView::gridChanged);
    connect(page, &ObjectPage::selectionChanged, this, &ObjectPageView::selectionChanged);
    // Clearing the document tells the document, not the pages, about every box that goes.
    connect(document, &Document::objectRemoved, this, &ObjectPageView::removeBox);
    connect(document, &Document::connectorAdded, this, &ObjectPageView::adoptConnector);
    connect(document, &Document::connectorRemoved, m_lines, &PageLines::remove);
    connect(document, &Document::cleared, this, [this] {
        for (const QString& name : m_boxes.keys())
            removeBox(name);
        m_lines->clear();
    });
    connect(qApp, &QApplication::focusChanged, this, &ObjectPageView::focusChanged);

    fitCells();
    for (QoSObject* object : page->ContainedObjects())
        adopt(object);
    m_shownPitch = QSize(page->prop().ColWidth, page->prop().RowHeight);
    m_shownSize = pageSize();
    updateScrollBars();
    scheduleRealize();
}

ObjectPageView::~ObjectPageView()
{
    // The focus moving while the boxes go must not reach a view half taken apart.
    disconnect(qApp, &QApplication::focusChanged, this, &ObjectPageView::focusChanged);
    // The boxes go with the pane; they must not talk to their objects on the way. The pane
    // goes first, while the boxes' view is still whole.
    for (BoxRecord* record : std::as_const(m_boxes))
        if (record->widget)
            record->widget->detach();
    m_lines->detachWidgets();
    delete m_pane;
    m_pane = nullptr;
    qDeleteAll(m_boxes);
}

void ObjectPageView::fitCells()
{
    // A cell must hold the largest box at this font: the page's box size grows to it (the
    // pitches follow), so that neighbouring boxes never overlap and no field is cut.
    const QSize box = BoxMetrics::For(font()).largestBox();
    const ObjectPageProperties& prop = m_page->prop();
    const qint32 width = std::max(prop.ObjectWidth, Twips::FromPixels(box.width()));
    const qint32 height = std::max(prop.ObjectHeight, Twips::FromPixels(box.height()));
    if (width != prop.ObjectWidth || height != prop.ObjectHeight)
        m_page->SetObjectDimensions(height, width);
}

void ObjectPageView::setPrompt(UserPrompt* prompt)
{
    m_prompt = prompt;
    for (BoxRecord* record : std::as_const(m_realized))
        if (record->widget)
            record->widget->setPrompt(prompt);
}

void ObjectPageView::setStatusLine(StatusLine* line)
{
    m_statusLine = line;
    for (BoxRecord* record : std::as_const(m_realized))
        if (record->widget)
            record->widget->setStatusLine(line);
}

// --- records of boxes and lines ------------------------------------------------------------

void ObjectPageView::sizeBox(QoSObject* object)
{
    // The box's size is that of its controls; it keeps its cell and is centred in it again.
    const BoxMetrics& m = BoxMetrics::For(font());
    const QSize size = object->IsClass() ? m.classBox() : m.filterBox();
    object->Resize(Twips::FromPixels(size.width()), Twips::FromPixels(size.height()));
    m_page->PlaceObject(object);
}

void ObjectPageView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    // Another font makes other boxes: the cells grow to them, and every box is made anew.
    QPointer<QoSObject> focused;
    if (QoSObjectBox* box = boxAround(QApplication::focusWidget()))
        focused = box->object();
    m_pane->setFocus(Qt::OtherFocusReason);
    fitCells();
    for (BoxRecord* record : std::as_const(m_boxes))
        if (record->object)
            sizeBox(record->object);
    // The application is still telling its widgets about the font: these go later.
    for (BoxRecord* record : std::as_const(m_realized)) {
        if (record->widget) {
            record->widget->detach();
            dropWidget(record->widget);
            record->widget = nullptr;
        }
    }
    m_realized.clear();
    m_pinned.clear();
    realize();
    if (focused)
        focusObject(focused);
}

void ObjectPageView::adopt(QoSObject* object)
{
    if (!object || m_boxes.contains(object->Name()))
        return;
    auto* record = new BoxRecord{object, nullptr, {}};
    m_boxes.insert(object->Name(), record);
    sizeBox(object);
    record->rect = boxRect(object);
    m_boxIndex.insert(record, record->rect);
    connect(object, &QoSObject::geometryChanged, this, [this, object] { objectMoved(object); });
    connect(object, &QoSObject::visibleChanged, this, [this, object] { objectMoved(object); });
    connect(object, &QoSObject::selectedChanged, this,
            [this, object](bool selected) { objectSelected(object, selected); });
    if (QoSConnector* line = object->LineTop())
        adoptConnector(line);
    // A file read box by box adds most boxes far out of sight: they wait for the scroll bars.
    if (record->rect.intersects(makeArea()))
        scheduleRealize();
}

void ObjectPageView::adoptConnector(QoSConnector* connector)
{
    if (connector && connector->GetObjectPage() == m_page)
        m_lines->adopt(connector);
}

void ObjectPageView::removeBox(const QString& name)
{
    const auto it = m_boxes.find(name);
    if (it == m_boxes.end())
        return;
    BoxRecord* record = *it;
    m_boxes.erase(it);
    m_boxIndex.remove(record);
    m_realized.remove(record);
    if (QPointer<QoSObjectBox> widget = record->widget) {
        widget->detach();
        dropWidget(widget);
    }
    delete record;
}

void ObjectPageView::dropWidget(QWidget* widget)
{
    // The widget may be in the middle of its own event (a Delete key that deleted its
    // object), so it goes later. The focus moves to the page first: it must not wander on to
    // the next box, which would select it, and a second Delete would then delete that too.
    m_pinned.remove(widget);
    if (QWidget* focus = QApplication::focusWidget();
        focus && (focus == widget || widget->isAncestorOf(focus)))
        m_pane->setFocus(Qt::OtherFocusReason);
    widget->hide();
    widget->deleteLater();
}

void ObjectPageView::retireBox(BoxRecord* record)
{
    // A box scrolled far out of sight, without the focus and not dragged: none of its events
    // can be running, unless inside the loop of a dialog, a menu or a drag. Deleted at once,
    // box widgets cannot pile up while a long loop keeps the event loop from deleting them.
    QoSObjectBox* widget = record->widget;
    record->widget = nullptr;
    widget->detach();
    m_pinned.remove(widget);
    if (safeToDeleteNow()) {
        delete widget;
    } else {
        widget->hide();
        widget->deleteLater();
    }
}

int ObjectPageView::droppedWidgetCount() const
{
    int count = 0;
    for (QObject* child : m_pane->children())
        if (auto* widget = qobject_cast<QoSObjectBox*>(child); widget && !widget->object())
            ++count;
    return count;
}

void ObjectPageView::objectMoved(QoSObject* object)
{
    const auto it = m_boxes.constFind(object->Name());
    if (it == m_boxes.cend())
        return;
    BoxRecord* record = *it;
    const QRect r = boxRect(object);
    if (r != record->rect) {
        record->rect = r;
        m_boxIndex.insert(record, r);
    }
    // Only a box coming near the visible part, or one with a widget leaving it, needs a look
    // at the others; a drag within sight or boxes moving far away do not.
    if (record->widget) {
        record->widget->setGeometry(r.translated(-m_offset));
        record->widget->setVisible(object->Visible());
        if (!r.intersects(keepArea()))
            scheduleRealize();
    } else if (r.intersects(makeArea())) {
        scheduleRealize();
    }
}

void ObjectPageView::updatePageRect(const QRect& rect)
{
    const QRect shown = rect.translated(-m_offset).intersected(m_pane->rect());
    if (!shown.isEmpty())
        m_pane->update(shown);
}

void ObjectPageView::objectSelected(QoSObject* object, bool selected)
{
    // A box selected from elsewhere (the calculator, a new class) is brought into view.
    if (selected && !boxRect(object).intersects(visibleRect()))
        ensureVisible(object);
}

// --- selection follows the keyboard focus ---------------------------------------------------

QoSObjectBox* ObjectPageView::boxAround(QWidget* widget) const
{
    for (QWidget* w = widget; w; w = w->parentWidget())
        if (w->parentWidget() == m_pane)
            return qobject_cast<QoSObjectBox*>(w);
    return nullptr;
}

void ObjectPageView::focusChanged(QWidget*, QWidget* now)
{
    // A box that takes the focus becomes the selection, and the page lets go of the one before.
    // The focus going anywhere else (the calculator, a menu, a dialog) keeps the selection.
    if (!now || now->window() != window())
        return;
    QoSObjectBox* newBox = boxAround(now);
    if (newBox && newBox->object() && !newBox->object()->Selected())
        newBox->object()->SetSelected(true);
}

// --- geometry and scrolling ------------------------------------------------------------------

QSize ObjectPageView::pageSize() const
{
    const ObjectPageProperties& prop = m_page->prop();
    const qint64 width = std::min<qint64>(prop.Cols, MaxCells) * prop.ColWidth / Twips::PerPixel;
    const qint64 height = std::min<qint64>(prop.Rows, MaxCells) * prop.RowHeight / Twips::PerPixel;
    return QSize(int(std::clamp<qint64>(width, 0, MaxPixels)), int(std::clamp<qint64>(height, 0, MaxPixels)));
}

QRect ObjectPageView::boxRect(const QoSObject* object) const
{
    return QRect(pixels(object->Left()), pixels(object->Top()), Twips::LengthToPixels(object->Width()),
                 Twips::LengthToPixels(object->Height()));
}

QRect ObjectPageView::visibleRect() const
{
    return QRect(m_offset, m_pane->size());
}

// Widgets are made a cell beyond the visible part, so that a short scroll finds them ready,
// and kept up to three cells beyond it, so that scrolling to and fro does not make and drop
// the same ones over and over.
QRect ObjectPageView::makeArea() const
{
    const ObjectPageProperties& prop = m_page->prop();
    const int w = Twips::LengthToPixels(prop.ColWidth);
    const int h = Twips::LengthToPixels(prop.RowHeight);
    return visibleRect().adjusted(-w, -h, w, h);
}

QRect ObjectPageView::keepArea() const
{
    const ObjectPageProperties& prop = m_page->prop();
    const int w = Twips::LengthToPixels(3 * prop.ColWidth);
    const int h = Twips::LengthToPixels(3 * prop.RowHeight);
    return visibleRect().adjusted(-w, -h, w, h);
}

QPointF ObjectPageView::pagePosition(const QPointF& globalPos) const
{
    return m_pane->mapFromGlobal(globalPos) + QPointF(m_offset);
}

void ObjectPageView::setScrollBarsShown(bool shown)
{
    m_scrollBarsShown = shown;
    updateScrollBars();
}

void ObjectPageView::updateScrollBars()
{
    const QSize page = pageSize();
    const QSize view = m_pane->size();
    m_updatingScrollBars = true;
    m_hscrPane->setRange(0, std::max(0, page.width() - view.width()));
    m_hscrPane->setPageStep(std::max(1, view.width()));
    m_hscrPane->setSingleStep(20);
    m_vscrPane->setRange(0, std::max(0, page.height() - view.height()));
    m_vscrPane->setPageStep(std::max(1, view.height()));
    m_vscrPane->setSingleStep(20);
    m_hscrPane->setVisible(m_scrollBarsShown && page.width() > view.width());
    m_vscrPane->setVisible(m_scrollBarsShown && page.height() > view.height());
    m_corner->setVisible(m_hscrPane->isVisibleTo(this) && m_vscrPane->isVisibleTo(this));
    m_updatingScrollBars = false;
    scrollBarMoved();
}

void ObjectPageView::scrollBarMoved()
{
    if (m_updatingScrollBars)
        return;
    const QPoint offset(m_hscrPane->value(), m_vscrPane->value());
    if (offset == m_offset)
        return;
    const QPoint delta = m_offset - offset;
    m_offset = offset;
    // Moves the children and the pixels already drawn; only what comes into view is painted.
    m_pane->scroll(delta.x(), delta.y());
    m_lines->scrolled();
    realize();
}

void ObjectPageView::setScrollPosition(const QPoint& position)
{
    m_hscrPane->setValue(position.x());
    m_vscrPane->setValue(position.y());
}

bool ObjectPageView::scrollBy(const QPoint& delta)
{
    const QPoint before = m_offset;
    setScrollPosition(m_offset + delta);
    return m_offset != before;
}

void ObjectPageView::paneResized()
{
    updateScrollBars();
    realize();
}

void ObjectPageView::gridChanged()
{
    // A page growing by a column at a time (a file read box by box) repaints only the strip
    // that changed, and only where it can be seen; other cell sizes repaint everything.
    const ObjectPageProperties& prop = m_page->prop();
    const QSize pitch(prop.ColWidth, prop.RowHeight);
    const QSize size = pageSize();
    updateScrollBars();
    if (pitch != m_shownPitch) {
        m_pane->update();
        scheduleRealize();
    } else {
        const QRegion changed = QRegion(QRect(QPoint(), m_shownSize)).xored(QRegion(QRect(QPoint(), size)));
        const QRegion visible = changed.translated(-m_offset).intersected(m_pane->rect());
        if (!visible.isEmpty()) {
            m_pane->update(visible);
            scheduleRealize();
        }
    }
    m_shownPitch = pitch;
    m_shownSize = size;
}

void ObjectPageView::ensureVisible(const QoSObject* object)
{
    const QRect box = boxRect(object).adjusted(-12, -12, 12, 12);
    const QRect view = visibleRect();
    QPoint position = m_offset;
    if (box.right() > view.right())
        position.rx() += box.right() - view.right();
    if (box.left() < position.x())
        position.setX(box.left());
    if (box.bottom() > view.bottom())
        position.ry() += box.bottom() - view.bottom();
    if (box.top() < position.y())
        position.setY(box.top());
    setScrollPosition(position);
}

void ObjectPageView::focusObject(QoSObject* object, bool lastField)
{
    if (!object || !m_boxes.contains(object->Name()))
        return;
    ensureVisible(object);
    realize();
    QoSObjectBox* widget = box(object->Name());
    if (!widget) {
        object->SetSelected(true);
        return;
    }
    const QList<QWidget*> stops = widget->tabStops();
    if (lastField && !stops.isEmpty())
        stops.last()->setFocus(Qt::BacktabFocusReason);
    else
        widget->focusControl()->setFocus(lastField ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    // The focus selects the box; a box that cannot take it (a hidden window) is selected all
    // the same.
    if (!object->Selected())
        object->SetSelected(true);
}

// --- the keyboard through the picture -------------------------------------------------------

void ObjectPageView::focusNextBox(const QoSObject* from, bool forward)
{
    if (QoSObject* next = m_page->NextInPictureOrder(from, forward)) {
        focusObject(next, !forward);
        return;
    }
    if (from && !forward) {
        // Before the first box lies the page itself.
        m_pane->setFocus(Qt::OtherFocusReason);
        return;
    }
    leavePage(forward);
}

void ObjectPageView::leavePage(bool forward)
{
    // The widgets of the boxes stand anywhere in the window's focus chain (they come and go
    // as the page scrolls): the way out skips everything inside the page.
    for (QWidget* w = forward ? nextInFocusChain() : previousInFocusChain(); w && w != this;
         w = forward ? w->nextInFocusChain() : w->previousInFocusChain()) {
        if (isAncestorOf(w) || w->window() != window() || w->focusProxy())
            continue;
        if ((w->focusPolicy() & Qt::TabFocus) && w->isVisible() && w->isEnabled()) {
            w->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return;
        }
    }
    // Nothing else in the window takes the keyboard: round the page again.
    if (forward)
        m_pane->setFocus(Qt::OtherFocusReason);
    else if (QoSObject* last = m_page->NextInPictureOrder(nullptr, false))
        focusObject(last, true);
}

// --- lines --------------------------------------------------------------------------------------

QoSConnector* ObjectPageView::connectorAt(const QPoint& panePos) const
{
    return m_lines->connectorAt(panePos + m_offset);
}

QLine ObjectPageView::lineOnPane(const QString& name) const
{
    const QLine line = m_lines->line(name);
    return line.isNull() ? line : line.translated(-m_offset);
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
    painter.save();
    painter.translate(-m_offset);
    m_lines->paint(painter, exposed.translated(m_offset));
    painter.restore();
}

// --- the cell a dragged box would land in ---------------------------------------------------------

void ObjectPageView::showDropTarget(const DropPlan& plan)
{
    QRect rect;
    DropLook look = DropLook::None;
    const ObjectPageProperties& prop = m_page->prop();
    if (plan.hasCell && plan.x >= 0 && plan.y >= 0 && plan.x < MaxCells && plan.y < MaxCells) {
        const int left = int(std::floor(plan.x * Twips::ToPixelsF(prop.ColWidth)));
        const int top = int(std::floor(plan.y * Twips::ToPixelsF(prop.RowHeight)));
        const int right = int(std::floor((plan.x + 1) * Twips::ToPixelsF(prop.ColWidth)));
        const int bottom = int(std::floor((plan.y + 1) * Twips::ToPixelsF(prop.RowHeight)));
        rect = QRect(QPoint(left, top), QPoint(right, bottom));
        switch (plan.outcome) {
        case DropPlan::Outcome::Stay:
        case DropPlan::Outcome::Move:
            look = DropLook::Lands;
            break;
        case DropPlan::Outcome::Link:
            look = DropLook::Links;
            break;
        case DropPlan::Outcome::Refused:
            look = DropLook::Refused;
            break;
        }
    }
    if (rect == m_dropRect && look == m_dropLook)
        return;
    updatePageRect(m_dropRect);
    m_dropRect = rect;
    m_dropLook = look;
    updatePageRect(m_dropRect);
}

void ObjectPageView::hideDropTarget()
{
    updatePageRect(m_dropRect);
    m_dropRect = QRect();
    m_dropLook = DropLook::None;
}

void ObjectPageView::paintDropTarget(QPainter& painter, const QRect& exposed) const
{
    if (m_dropLook == DropLook::None)
        return;
    const QRect cell = m_dropRect.translated(-m_offset);
    if (!cell.intersects(exposed))
        return;
    // The outline lies in the margin of the cell that its box leaves free.
    const QColor highlight = palette().color(QPalette::Highlight);
    QColor color = highlight;
    Qt::PenStyle style = Qt::SolidLine;
    int width = 2;
    int fill = 40;
    switch (m_dropLook) {
    case DropLook::Lands:
        break;
    case DropLook::Links:
        // Hung under the box that stands there: a broader frame around it.
        width = 4;
        fill = 70;
        break;
    case DropLook::Refused:
        color = QColor(200, 30, 30);
        style = Qt::DashLine;
        fill = 30;
        break;
    case DropLook::None:
        return;
    }
    painter.save();
    QColor background = color;
    background.setAlpha(fill);
    painter.fillRect(cell, background);
    QPen pen(color, width, style);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const int inset = width / 2;
    painter.drawRect(cell.adjusted(inset, inset, -inset - 1, -inset - 1));
    painter.restore();
}

// --- making and dropping widgets --------------------------------------------------------------

void ObjectPageView::scheduleRealize()
{
    if (m_realizeScheduled)
        return;
    m_realizeScheduled = true;
    QMetaObject::invokeMethod(this, &ObjectPageView::realize, Qt::QueuedConnection);
}

void ObjectPageView::realize()
{
    m_realizeScheduled = false;
    realizeIn(makeArea(), keepArea());
}

void ObjectPageView::realizeAll()
{
    const QRect everything(QPoint(-int(MaxPixels / 2), -int(MaxPixels / 2)),
                           QPoint(int(MaxPixels), int(MaxPixels)));
    realizeIn(everything, everything);
}

void ObjectPageView::realizeIn(const QRect& makeArea, const QRect& keepArea)
{
    // While a file is read the new boxes have no places yet; widgets are made once they do.
    if (m_page->IsDeferred())
        return;
    // Only the boxes that have widgets are looked at for dropping, and only those found in
    // the area for making: neither grows with the page.
    for (auto it = m_realized.begin(); it != m_realized.end();) {
        BoxRecord* record = *it;
        if (!record->widget) {
            it = m_realized.erase(it);
        } else if (!keepArea.intersects(record->rect) && !isPinned(record->widget)) {
            retireBox(record);
            it = m_realized.erase(it);
        } else {
            ++it;
        }
    }
    for (BoxRecord* record : m_boxIndex.findIn(makeArea)) {
        QoSObject* object = record->object;
        if (!record->widget && object && object->Visible()) {
            record->widget = makeBox(object);
            m_realized.insert(record);
        }
    }
}

QoSObjectBox* ObjectPageView::makeBox(QoSObject* object)
{
    QoSObjectBox* widget = nullptr;
    if (auto* c = qobject_cast<QoSClass*>(object))
        widget = new QoSClassBox(c, this, m_pane);
    else
        widget = new QoSFilterBox(static_cast<QoSFilter*>(object), this, m_pane);
    widget->setPrompt(m_prompt);
    widget->setStatusLine(m_statusLine);
    widget->setGeometry(boxRect(object).translated(-m_offset));
    widget->show();
    return widget;
}

bool ObjectPageView::isPinned(QWidget* widget) const
{
    // A widget with the focus (or its menu open, or being dragged) stays.
    if (m_pinned.contains(widget))
        return true;
    QWidget* focus = QApplication::focusWidget();
    return focus && (focus == widget || widget->isAncestorOf(focus));
}

void ObjectPageView::setPinned(QWidget* widget, bool pinned)
{
    if (pinned)
        m_pinned.insert(widget);
    else
        m_pinned.remove(widget);
}

QoSObjectBox* ObjectPageView::box(const QString& name) const
{
    const BoxRecord* record = m_boxes.value(name);
    return record ? record->widget.data() : nullptr;
}

QoSConnectorView* ObjectPageView::connectorView(const QString& name) const
{
    return m_lines->widget(name);
}

int ObjectPageView::boxWidgetCount() const
{
    return int(std::count_if(m_realized.cbegin(), m_realized.cend(),
                             [](const BoxRecord* r) { return !r->widget.isNull(); }));
}

int ObjectPageView::connectorWidgetCount() const
{
    return m_lines->widgetCount();
}

// --- the page's own commands ------------------------------------------------------------------

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
