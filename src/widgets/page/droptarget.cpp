#include "droptarget.h"

#include "base/twips.h"
#include "model/dropplan.h"
#include "model/objectpage.h"
#include "objectpageview.h"
#include "pagescroller.h"

#include <QPainter>

#include <cmath>

void DropTarget::show(const DropPlan& plan)
{
    constexpr qint64 MaxCells = PageScroller::MaxCells;
    QRect rect;
    Look look = Look::None;
    const ObjectPageProperties& prop = m_view->page()->prop();
    if (plan.hasCell && plan.x >= 0 && plan.y >= 0 && plan.x < MaxCells && plan.y < MaxCells) {
        const int left = int(std::floor(plan.x * Twips::ToPixelsF(prop.ColWidth)));
        const int top = int(std::floor(plan.y * Twips::ToPixelsF(prop.RowHeight)));
        const int right = int(std::floor((plan.x + 1) * Twips::ToPixelsF(prop.ColWidth)));
        const int bottom = int(std::floor((plan.y + 1) * Twips::ToPixelsF(prop.RowHeight)));
        rect = QRect(QPoint(left, top), QPoint(right, bottom));
        switch (plan.outcome) {
        case DropPlan::Outcome::Stay:
        case DropPlan::Outcome::Move:
            look = Look::Lands;
            break;
        case DropPlan::Outcome::Link:
            look = Look::Links;
            break;
        case DropPlan::Outcome::Refused:
            look = Look::Refused;
            break;
        }
    }
    if (rect == m_rect && look == m_look)
        return;
    m_view->updatePageRect(m_rect);
    m_rect = rect;
    m_look = look;
    m_view->updatePageRect(m_rect);
}

void DropTarget::hide()
{
    m_view->updatePageRect(m_rect);
    m_rect = QRect();
    m_look = Look::None;
}

void DropTarget::paint(QPainter& painter, const QRect& exposed) const
{
    if (m_look == Look::None)
        return;
    const QRect cell = m_rect.translated(-m_view->scrollPosition());
    if (!cell.intersects(exposed))
        return;
    // The outline lies in the margin of the cell that its box leaves free.
    const QColor highlight = m_view->palette().color(QPalette::Highlight);
    QColor color = highlight;
    Qt::PenStyle style = Qt::SolidLine;
    int width = 2;
    int fill = 40;
    switch (m_look) {
    case Look::Lands:
        break;
    case Look::Links:
        // Hung under the box that stands there: a broader frame around it.
        width = 4;
        fill = 70;
        break;
    case Look::Refused:
        color = QColor(200, 30, 30);
        style = Qt::DashLine;
        fill = 30;
        break;
    case Look::None:
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
