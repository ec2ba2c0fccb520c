#include "moveobject.h"

#include "base/twips.h"
#include "model/dropplan.h"
#include "model/qosobject.h"
#include "model/qosobjectbox.h"
#include "objectpageview.h"
#include "objectpane.h"

#include <QApplication>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

MoveObject::MoveObject(ObjectPageView* view) : QObject(view), m_view(view) {}

void MoveObject::Press(QoSObjectBox* box, const QPointF& globalPos)
{
    QoSObject* object = box ? box->object() : nullptr;
    // A press whose release never came (a message box took the mouse) ends here.
    if (m_box && m_box != box)
        m_view->setPinned(m_box, false);
    m_scrollTimer.stop();
    m_view->hideDropTarget();
    if (!object)
        return;
    m_box = box;
    m_dragging = false;
    m_pressGlobal = m_lastGlobal = globalPos;
    const QPointF mouse = m_view->pagePosition(globalPos);
    m_grab = mouse - QPointF(Twips::ToPixelsF(object->Left()), Twips::ToPixelsF(object->Top()));
    m_view->setPinned(box, true);
}

void MoveObject::Move(const QPointF& globalPos)
{
    if (!m_box || !m_box->object())
        return;
    m_lastGlobal = globalPos;
    if (!m_dragging) {
        if ((globalPos - m_pressGlobal).manhattanLength() < QApplication::startDragDistance())
            return;
        m_dragging = true;
        m_box->raise();
    }
    follow();
    if (!edgeStep().isNull()) {
        if (!m_scrollTimer.isActive())
            m_scrollTimer.start(30, this);
    } else {
        m_scrollTimer.stop();
    }
}

void MoveObject::follow()
{
    QoSObject* object = m_box->object();
    // The box keeps its size and stays wholly on the page.
    const QSize page = m_view->pageSize();
    const QPointF topLeft = m_view->pagePosition(m_lastGlobal) - m_grab;
    const double width = Twips::ToPixelsF(object->Width());
    const double height = Twips::ToPixelsF(object->Height());
    const double left = std::clamp(std::round(topLeft.x()), 0.0, std::max(0.0, page.width() - width));
    const double top = std::clamp(std::round(topLeft.y()), 0.0, std::max(0.0, page.height() - height));
    object->Move(Twips::FromPixels(left), Twips::FromPixels(top));
    // What letting go here would do, by the same plan as the drop itself.
    m_view->showDropTarget(DropPlan::For(*object, object->Left(), object->Top()));
}

QPoint MoveObject::edgeStep() const
{
    const QWidget* pane = m_view->pane();
    const QPoint p = pane->mapFromGlobal(m_lastGlobal.toPoint());
    auto step = [](int pos, int size) {
        if (pos < EdgeZone)
            return -std::min(MaxStep, (EdgeZone - pos) / 2 + 2);
        if (pos >= size - EdgeZone)
            return std::min(MaxStep, (pos - (size - EdgeZone)) / 2 + 2);
        return 0;
    };
    return QPoint(step(p.x(), pane->width()), step(p.y(), pane->height()));
}

void MoveObject::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_scrollTimer.timerId()) {
        QObject::timerEvent(event);
        return;
    }
    if (!m_dragging || !m_box || !m_box->object()) {
        m_scrollTimer.stop();
        return;
    }
    const QPoint step = edgeStep();
    if (step.isNull() || !m_view->scrollBy(step)) {
        m_scrollTimer.stop();
        return;
    }
    follow();
}

void MoveObject::Release(const QPointF& globalPos)
{
    m_scrollTimer.stop();
    m_view->hideDropTarget();
    QPointer<QoSObjectBox> box = m_box;
    const bool dragged = m_dragging;
    m_box = nullptr;
    m_dragging = false;
    if (!box)
        return;
    // A click without a move is no drag: it must not drop the box on a second box that
    // shares its cell.
    if (dragged && box->object()) {
        m_lastGlobal = globalPos;
        QoSObject* object = box->object();
        object->MoveObject(object->Left(), object->Top());
    }
    if (box)
        m_view->setPinned(box, false);
}
