#pragma once

#include "model/qosconnector.h"

#include <QLine>
#include <QPointer>
#include <QWidget>

class ObjectPageView;
class QMenu;

// A connector on the page. Its line is drawn by the page's pane, with every other line of
// the exposed part (see ObjectPageView); this widget exists only while the line is selected.
// It takes the keyboard focus for the line, names it for a screen reader, deletes the
// relation on Delete or Ctrl+X and shows the line's context menu. It lies over the line but
// lets the mouse through to the pane, which finds lines under the mouse itself.
//
// The look and the reach of a line live here too, for the pane to draw and hit: a thin line
// between the two snapped end points, broad while the mouse lights it up, and while
// selected in the selection colour with its two end marks.
class QoSConnectorView final : public QWidget
{
    Q_OBJECT
public:
    QoSConnectorView(QoSConnector* connector, ObjectPageView* view, QWidget* parent);

    QoSConnector* connector() const { return m_connector; }
    void detach();

    QMenu* createContextMenu(QWidget* parent);
    void showContextMenu(const QPoint& globalPos);

    static constexpr int NormalWidth = 2;
    static constexpr int HighlightWidth = 5;
    static constexpr int HoverMilliseconds = 400;
    // Pixels from the line that still hit it.
    static constexpr int HitRadius = 4;
    // The end marks: squares of this side, their middles this far along the line from its
    // ends, so that they lie in the gap beside the box edges and no box covers them.
    static constexpr int MarkSize = 7;
    static constexpr int MarkInset = 6;

    // The middle of the end mark at the start (or at the end) of a line.
    static QPointF markCentre(const QLineF& line, bool atStart);
    // How far a point lies from the line (and, for a selected line, from its end marks).
    static double distance(const QLineF& line, bool selected, const QPointF& point);
    // The part of the line within the rectangle; a null line when none is.
    static QLineF clip(const QLineF& line, const QRectF& rect);
    // Plain lines, all in one go, and a lit or selected one.
    static void paintLines(QPainter& painter, const QList<QLine>& lines, const QPalette& palette);
    static void paintLine(QPainter& painter, const QLine& line, bool selected, bool highlighted,
                          const QPalette& palette);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    static bool deletesRelation(const QKeyEvent* event);

    QPointer<QoSConnector> m_connector;
    QPointer<ObjectPageView> m_view;
};
