#pragma once

#include "spatialindex.h"

#include <QBasicTimer>
#include <QDeadlineTimer>
#include <QHash>
#include <QLine>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSet>

class ObjectPageView;
class QPainter;
class QoSConnector;
class QoSConnectorView;

// The connector lines of one page on screen. They are no widgets: the pane draws the lines
// of the exposed part in one layer under the boxes, and finds the line under the mouse
// itself (see ObjectPageView for why). Here is a record of every line of the page in a
// spatial index, the lines lit by the mouse with the time each has left, and the focus
// widget of the selected line.
class PageLines final : public QObject
{
    Q_OBJECT
public:
    explicit PageLines(ObjectPageView* view);
    ~PageLines() override;

    // A connector of the page came, went, or the document was cleared.
    void adopt(QoSConnector* connector);
    void remove(const QString& name);
    void clear();
    // The page scrolled: the focus widgets go with their lines.
    void scrolled();
    // The view is going: the focus widgets stop talking to their connectors.
    void detachWidgets();

    // All in page pixels.
    QoSConnector* connectorAt(const QPoint& pagePos) const;
    QLine line(const QString& name) const;
    void paint(QPainter& painter, const QRect& area) const;

    QoSConnectorView* widget(const QString& name) const;
    int widgetCount() const;
    bool isHighlighted(const QString& name) const;
    void hover(QoSConnector* connector);
    void press(QoSConnector* connector);
    void menu(QoSConnector* connector, const QPoint& globalPos);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Record
    {
        QPointer<QoSConnector> connector;
        QPointer<QoSConnectorView> widget; // the focus widget, while it is selected
        QRect rect;                        // with room for the marks
        QLine line;
    };

    static QRect rectOf(const QoSConnector* connector);
    static QLine lineOf(const QoSConnector* connector);
    Record* record(const QoSConnector* connector) const;
    void moved(QoSConnector* connector);
    void selected(Record* record, bool selected);
    QoSConnectorView* focusWidget(Record* record);
    void placeWidget(Record* record);

    ObjectPageView* m_view;
    QHash<QString, Record*> m_lines;
    SpatialIndex<Record*> m_index;
    QSet<Record*> m_withWidget;
    QHash<QString, QDeadlineTimer> m_highlighted; // lines lit by the mouse, until when
    QBasicTimer m_hoverTimer;
};
