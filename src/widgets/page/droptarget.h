#pragma once

#include <QRect>

class ObjectPageView;
class QPainter;
struct DropPlan;

// While a box is dragged, the page shows the cell it would land in and what the drop would
// do there: land, hang the box under the one that stands there, or nothing. The view asks
// the core's DropPlan, the same plan the drop follows; this only shows it.
class DropTarget final
{
public:
    enum class Look { None, Lands, Links, Refused };

    explicit DropTarget(ObjectPageView* view) : m_view(view) {}

    void show(const DropPlan& plan);
    void hide();
    // Draws the cell if it meets the exposed part (pane coordinates).
    void paint(QPainter& painter, const QRect& exposed) const;
    // The cell in page pixels; empty when none is shown.
    QRect rect() const { return m_rect; }
    Look look() const { return m_look; }

private:
    ObjectPageView* m_view;
    QRect m_rect;
    Look m_look = Look::None;
};
