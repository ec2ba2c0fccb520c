#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPointF>
#include <QPointer>

class ObjectPageView;
class QoSObjectBox;

// The drag handler of a page's boxes. A box pressed on its body, its surface label or its
// title bar hands the mouse here: the box follows the mouse and stays wholly on the page,
// the page scrolls while the mouse stands near the edge of the visible part, and on release
// the core's drop decides what becomes of it (moved, put back, hung under another box).
// Meanwhile the page shows the cell the box would land in and what the drop would do there,
// from the same plan the drop follows.
//
// The drag writes the box's position into its object; the box and its lines follow the
// object's signals like any other move.
class MoveObject final : public QObject
{
    Q_OBJECT
public:
    explicit MoveObject(ObjectPageView* view);

    void Press(QoSObjectBox* box, const QPointF& globalPos);
    void Move(const QPointF& globalPos);
    void Release(const QPointF& globalPos);

    bool IsDragging() const { return m_dragging; }
    QoSObjectBox* box() const { return m_box; }

    // How near the edge the mouse must be for the page to scroll, and the largest step.
    static constexpr int EdgeZone = 24;
    static constexpr int MaxStep = 24;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void follow();
    QPoint edgeStep() const;

    ObjectPageView* m_view;
    QPointer<QoSObjectBox> m_box;
    QPointF m_pressGlobal;
    QPointF m_lastGlobal;
    QPointF m_grab; // the mouse's place on the box, in pixels from its top-left corner
    bool m_dragging = false;
    QBasicTimer m_scrollTimer;
};
