#include "pageboxes.h"

#include "base/twips.h"
#include "model/boxmetrics.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosclassbox.h"
#include "model/qosfilter.h"
#include "model/qosfilterbox.h"
#include "objectpageview.h"
#include "objectpane.h"
#include "pagescroller.h"

#include <QApplication>

#include <algorithm>

namespace {

// Nothing can be half-way through an event of a widget far out of sight, unless a dialog,
// a menu or a drag runs its own loop inside such an event.
bool safeToDeleteNow()
{
    return !QApplication::activeModalWidget() && !QApplication::activePopupWidget() &&
           QGuiApplication::mouseButtons() == Qt::NoButton;
}

} // namespace

PageBoxes::PageBoxes(ObjectPageView* view) : QObject(view), m_view(view) {}

PageBoxes::~PageBoxes()
{
    qDeleteAll(m_boxes);
}

QRect PageBoxes::rectOf(const QoSObject* object)
{
    return QRect(Twips::ToPixels(object->Left()), Twips::ToPixels(object->Top()),
                 Twips::LengthToPixels(object->Width()), Twips::LengthToPixels(object->Height()));
}

// --- records ---------------------------------------------------------------------------------

bool PageBoxes::adopt(QoSObject* object)
{
    if (!object || m_boxes.contains(object->Name()))
        return false;
    auto* record = new Record{object, nullptr, {}};
    m_boxes.insert(object->Name(), record);
    size(object);
    record->rect = rectOf(object);
    m_index.insert(record, record->rect);
    connect(object, &QoSObject::geometryChanged, this, [this, object] { moved(object); });
    connect(object, &QoSObject::visibleChanged, this, [this, object] { moved(object); });
    // A file read box by box adds most boxes far out of sight: they wait for the scroll bars.
    if (record->rect.intersects(makeArea()))
        scheduleRealize();
    return true;
}

void PageBoxes::remove(const QString& name)
{
    const auto it = m_boxes.find(name);
    if (it == m_boxes.end())
        return;
    Record* record = *it;
    m_boxes.erase(it);
    m_index.remove(record);
    m_realized.remove(record);
    if (QPointer<QoSObjectBox> widget = record->widget) {
        widget->detach();
        drop(widget);
    }
    delete record;
}

void PageBoxes::clear()
{
    for (const QString& name : m_boxes.keys())
        remove(name);
}

void PageBoxes::fitCells()
{
    // A cell must hold the largest box at this font: the page's box size grows to it (the
    // pitches follow), so that neighbouring boxes never overlap and no field is cut.
    ObjectPage* page = m_view->page();
    const QSize box = BoxMetrics::For(m_view->font()).largestBox();
    const ObjectPageProperties& prop = page->prop();
    const qint32 width = std::max(prop.ObjectWidth, Twips::FromPixels(box.width()));
    const qint32 height = std::max(prop.ObjectHeight, Twips::FromPixels(box.height()));
    if (width != prop.ObjectWidth || height != prop.ObjectHeight)
        page->SetObjectDimensions(height, width);
}

void PageBoxes::size(QoSObject* object)
{
    // The box's size is that of its controls; it keeps its cell and is centred in it again.
    const BoxMetrics& m = BoxMetrics::For(m_view->font());
    const QSize size = object->IsClass() ? m.classBox() : m.filterBox();
    object->Resize(Twips::FromPixels(size.width()), Twips::FromPixels(size.height()));
    m_view->page()->PlaceObject(object);
}

void PageBoxes::remake()
{
    fitCells();
    for (Record* record : std::as_const(m_boxes))
        if (record->object)
            size(record->object);
    for (Record* record : std::as_const(m_realized)) {
        if (record->widget) {
            record->widget->detach();
            drop(record->widget);
            record->widget = nullptr;
        }
    }
    m_realized.clear();
    m_pinned.clear();
}

void PageBoxes::detachWidgets()
{
    for (Record* record : std::as_const(m_boxes))
        if (record->widget)
            record->widget->detach();
}

void PageBoxes::moved(QoSObject* object)
{
    const auto it = m_boxes.constFind(object->Name());
    if (it == m_boxes.cend())
        return;
    Record* record = *it;
    const QRect r = rectOf(object);
    if (r != record->rect) {
        record->rect = r;
        m_index.insert(record, r);
    }
    // Only a box coming near the visible part, or one with a widget leaving it, needs a look
    // at the others; a drag within sight or boxes moving far away do not.
    if (record->widget) {
        record->widget->setGeometry(r.translated(-m_view->scrollPosition()));
        record->widget->setVisible(object->Visible());
        if (!r.intersects(keepArea()))
            scheduleRealize();
    } else if (r.intersects(makeArea())) {
        scheduleRealize();
    }
}

// --- the widgets ------------------------------------------------------------------------------

QoSObjectBox* PageBoxes::widget(const QString& name) const
{
    const Record* record = m_boxes.value(name);
    return record ? record->widget.data() : nullptr;
}

QList<QoSObjectBox*> PageBoxes::widgets() const
{
    QList<QoSObjectBox*> out;
    for (const Record* record : m_realized)
        if (record->widget)
            out << record->widget;
    return out;
}

int PageBoxes::widgetCount() const
{
    return int(std::count_if(m_realized.cbegin(), m_realized.cend(),
                             [](const Record* r) { return !r->widget.isNull(); }));
}

int PageBoxes::droppedWidgetCount() const
{
    int count = 0;
    for (QObject* child : m_view->pane()->children())
        if (auto* widget = qobject_cast<QoSObjectBox*>(child); widget && !widget->object())
            ++count;
    return count;
}

// Widgets are made a cell beyond the visible part, so that a short scroll finds them ready,
// and kept up to three cells beyond it, so that scrolling to and fro does not make and drop
// the same ones over and over.
QRect PageBoxes::makeArea() const
{
    const ObjectPageProperties& prop = m_view->page()->prop();
    const int w = Twips::LengthToPixels(prop.ColWidth);
    const int h = Twips::LengthToPixels(prop.RowHeight);
    return QRect(m_view->scrollPosition(), m_view->pane()->size()).adjusted(-w, -h, w, h);
}

QRect PageBoxes::keepArea() const
{
    const ObjectPageProperties& prop = m_view->page()->prop();
    const int w = Twips::LengthToPixels(3 * prop.ColWidth);
    const int h = Twips::LengthToPixels(3 * prop.RowHeight);
    return QRect(m_view->scrollPosition(), m_view->pane()->size()).adjusted(-w, -h, w, h);
}

void PageBoxes::scheduleRealize()
{
    if (m_realizeScheduled)
        return;
    m_realizeScheduled = true;
    QMetaObject::invokeMethod(this, &PageBoxes::realize, Qt::QueuedConnection);
}

void PageBoxes::realize()
{
    m_realizeScheduled = false;
    realizeIn(makeArea(), keepArea());
}

void PageBoxes::realizeAll()
{
    constexpr int far = int(PageScroller::MaxPixels);
    const QRect everything(QPoint(-far / 2, -far / 2), QPoint(far, far));
    realizeIn(everything, everything);
}

void PageBoxes::realizeIn(const QRect& makeArea, const QRect& keepArea)
{
    // While a file is read the new boxes have no places yet; widgets are made once they do.
    if (m_view->page()->IsDeferred())
        return;
    // Only the boxes that have widgets are looked at for dropping, and only those found in
    // the area for making: neither grows with the page.
    for (auto it = m_realized.begin(); it != m_realized.end();) {
        Record* record = *it;
        if (!record->widget) {
            it = m_realized.erase(it);
        } else if (!keepArea.intersects(record->rect) && !isPinned(record->widget)) {
            retire(record);
            it = m_realized.erase(it);
        } else {
            ++it;
        }
    }
    for (Record* record : m_index.findIn(makeArea)) {
        QoSObject* object = record->object;
        if (!record->widget && object && object->Visible()) {
            record->widget = make(object);
            m_realized.insert(record);
        }
    }
}

QoSObjectBox* PageBoxes::make(QoSObject* object)
{
    QoSObjectBox* widget = nullptr;
    if (auto* c = qobject_cast<QoSClass*>(object))
        widget = new QoSClassBox(c, m_view, m_view->pane());
    else
        widget = new QoSFilterBox(static_cast<QoSFilter*>(object), m_view, m_view->pane());
    widget->setPrompt(m_view->prompt());
    widget->setStatusLine(m_view->statusLine());
    widget->setGeometry(rectOf(object).translated(-m_view->scrollPosition()));
    widget->show();
    return widget;
}

void PageBoxes::retire(Record* record)
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

void PageBoxes::drop(QWidget* widget)
{
    // The widget may be in the middle of its own event (a Delete key that deleted its
    // object), so it goes later. The focus moves to the page first: it must not wander on to
    // the next box, which would select it, and a second Delete would then delete that too.
    m_pinned.remove(widget);
    if (QWidget* focus = QApplication::focusWidget();
        focus && (focus == widget || widget->isAncestorOf(focus))) {
        // While a menu holds the keyboard the window may be inactive: the page then only
        // becomes where the focus returns to, and the widget, still the focus widget, would
        // hand it along the tab chain as it hides. It lets go first.
        if (!focus->isActiveWindow())
            focus->clearFocus();
        m_view->pane()->setFocus(Qt::OtherFocusReason);
    }
    widget->hide();
    widget->deleteLater();
}

bool PageBoxes::isPinned(QWidget* widget) const
{
    // A widget with the focus (or its menu open, or being dragged) stays.
    if (m_pinned.contains(widget))
        return true;
    QWidget* focus = QApplication::focusWidget();
    return focus && (focus == widget || widget->isAncestorOf(focus));
}

void PageBoxes::setPinned(QWidget* widget, bool pinned)
{
    if (pinned)
        m_pinned.insert(widget);
    else
        m_pinned.remove(widget);
}
