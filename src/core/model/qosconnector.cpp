#include "model/qosconnector.h"

#include "base/twips.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosobject.h"

#include <cstdlib>

QoSConnector::QoSConnector(Document* document, QoSObject* bottom)
    : QObject(nullptr), m_document(document), m_name(QStringLiteral("LineTop") + bottom->Name()),
      m_page(bottom->GetObjectPage()), m_bottom(bottom)
{}

void QoSConnector::Move(int x1, int y1, int x2, int y2)
{
    m_x1 = Twips::SnapToPixel(x1);
    m_y1 = Twips::SnapToPixel(y1);
    m_x2 = Twips::SnapToPixel(x2);
    m_y2 = Twips::SnapToPixel(y2);
    const int height = qMax(std::abs(m_y2 - m_y1) + 2 * MarginY, MinHeight);
    const int width = qMax(std::abs(m_x2 - m_x1) + 2 * MarginX, MinWidth);
    const int left = qMin(m_x1, m_x2) - MarginX;
    const int top = qMin(m_y1, m_y2) - MarginY;
    if (left != m_left || top != m_top || width != m_width || height != m_height) {
        m_left = left;
        m_top = top;
        m_width = width;
        m_height = height;
    }
    if (watched())
        emit geometryChanged();
}

void QoSConnector::SetSelected(bool selected)
{
    // One thing is selected on a page: a line taking the selection lets go of the box or the
    // other line that had it, so that Delete and the page tools never act on something unseen.
    if (selected && m_page) {
        if (QoSObject* box = m_page->SelectedObject())
            box->SetSelected(false);
        if (QoSConnector* other = m_page->SelectedConnector(); other && other != this && other->Selected())
            other->SetSelected(false);
    }
    m_selected = selected;
    if (selected && m_page)
        m_page->SetSelectedConnector(this);
    else if (!selected && m_page && m_page->SelectedConnector() == this)
        m_page->SetSelectedConnector(nullptr);
    if (watched())
        emit selectedChanged(selected);
}

void QoSConnector::EditCut()
{
    QoSObject* child = m_bottom;
    if (!child)
        return;
    if (QoSClass* parent = child->ParentQoSObject())
        parent->RemoveChildQoSQbject(child);
    child->SetParentName(QString());
    m_document->SetModified(true);
    child->RemoveTopConnector(); // deletes this connector: nothing may follow
}
