#pragma once

#include "page/qosconnector.h"

#include <QBasicTimer>
#include <QPointer>
#include <QWidget>

class ObjectPageView;
class QMenu;

// A connector on the page: a small control of its own behind the boxes, exactly as large as
// the core's connector lays it out, with the line between the two snapped end points. Only
// a narrow band along the line belongs to it (its mask), so that the page and the other lines
// around it stay reachable. It takes the focus, shows end marks while selected, lights up
// under the mouse until its timer puts it back, and deletes its relation on Delete or Ctrl+X.
class QoSConnectorView final : public QWidget
{
    Q_OBJECT
public:
    QoSConnectorView(QoSConnector* connector, ObjectPageView* view, QWidget* parent);

    QoSConnector* connector() const { return m_connector; }
    void detach();

    // The end points in the control's own coordinates.
    QPoint startPoint() const;
    QPoint endPoint() const;
    bool isHighlighted() const { return m_highlighted; }
    // Follows the core's layout: called whenever the connector moved.
    void layoutFromConnector();

    QMenu* createContextMenu(QWidget* parent);

    static constexpr int NormalWidth = 2;
    static constexpr int HighlightWidth = 5;
    static constexpr int HoverMilliseconds = 400;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void showSelected(bool selected);
    void updateMask();
    static bool deletesRelation(const QKeyEvent* event);

    QPointer<QoSConnector> m_connector;
    QPointer<ObjectPageView> m_view;
    bool m_highlighted = false;
    QBasicTimer m_timer1;
};
