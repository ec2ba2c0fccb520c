#include "pagefocus.h"

#include "model/objectpage.h"
#include "model/qosobject.h"
#include "model/qosobjectbox.h"
#include "objectpageview.h"
#include "objectpane.h"
#include "pageboxes.h"

#include <QApplication>

PageFocus::PageFocus(ObjectPageView* view, PageBoxes* boxes) : QObject(view), m_view(view), m_boxes(boxes)
{
    connect(qApp, &QApplication::focusChanged, this, &PageFocus::focusChanged);
}

QoSObjectBox* PageFocus::boxAround(QWidget* widget) const
{
    for (QWidget* w = widget; w; w = w->parentWidget())
        if (w->parentWidget() == m_view->pane())
            return qobject_cast<QoSObjectBox*>(w);
    return nullptr;
}

QoSObject* PageFocus::focusedObject() const
{
    QoSObjectBox* box = boxAround(QApplication::focusWidget());
    return box ? box->object() : nullptr;
}

void PageFocus::focusChanged(QWidget*, QWidget* now)
{
    // A box that takes the focus becomes the selection, and the page lets go of the one before.
    // The focus going anywhere else (the calculator, a menu, a dialog) keeps the selection.
    if (!now || now->window() != m_view->window())
        return;
    QoSObjectBox* newBox = boxAround(now);
    if (newBox && newBox->object() && !newBox->object()->Selected())
        newBox->object()->SetSelected(true);
}

void PageFocus::focusObject(QoSObject* object, bool lastField)
{
    if (!object || !m_boxes->contains(object->Name()))
        return;
    m_view->ensureVisible(object);
    m_boxes->realize();
    QoSObjectBox* widget = m_boxes->widget(object->Name());
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

void PageFocus::focusNextBox(const QoSObject* from, bool forward)
{
    if (QoSObject* next = m_view->page()->NextInPictureOrder(from, forward)) {
        focusObject(next, !forward);
        return;
    }
    if (from && !forward) {
        // Before the first box lies the page itself.
        m_view->pane()->setFocus(Qt::OtherFocusReason);
        return;
    }
    leavePage(forward);
}

void PageFocus::leavePage(bool forward)
{
    // The widgets of the boxes stand anywhere in the window's focus chain (they come and go
    // as the page scrolls): the way out skips everything inside the page.
    for (QWidget* w = forward ? m_view->nextInFocusChain() : m_view->previousInFocusChain(); w && w != m_view;
         w = forward ? w->nextInFocusChain() : w->previousInFocusChain()) {
        if (m_view->isAncestorOf(w) || w->window() != m_view->window() || w->focusProxy())
            continue;
        if ((w->focusPolicy() & Qt::TabFocus) && w->isVisible() && w->isEnabled()) {
            w->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return;
        }
    }
    // Nothing else in the window takes the keyboard: round the page again.
    if (forward)
        m_view->pane()->setFocus(Qt::OtherFocusReason);
    else if (QoSObject* last = m_view->page()->NextInPictureOrder(nullptr, false))
        focusObject(last, true);
}
