#pragma once

#include "spatialindex.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSet>

class ObjectPageView;
class QoSObject;
class QoSObjectBox;
class QWidget;

// The class and filter boxes of one page on screen. Every box of the page has a record here
// in a spatial index; widgets exist only for the boxes in or near the visible part (see
// ObjectPageView for why). They are made as the page scrolls towards them and dropped as it
// scrolls away, except a widget that has the focus or is being dragged.
class PageBoxes final : public QObject
{
    Q_OBJECT
public:
    explicit PageBoxes(ObjectPageView* view);
    ~PageBoxes() override;

    // A box of the page came, went, or the document was cleared. Returns whether the box was
    // new here.
    bool adopt(QoSObject* object);
    void remove(const QString& name);
    void clear();
    // Grows the page's cells to the largest box at the view's font.
    void fitCells();
    // Another font: the cells fit the new boxes, every box takes its new size, and every
    // widget goes (the application is still telling its widgets about the font: they go later).
    void remake();
    // The view is going: the widgets stop talking to their objects.
    void detachWidgets();

    // A box in page pixels.
    static QRect rectOf(const QoSObject* object);
    bool contains(const QString& name) const { return m_boxes.contains(name); }
    QoSObjectBox* widget(const QString& name) const;
    QList<QoSObjectBox*> widgets() const;
    int widgetCount() const;
    // How many box widgets were dropped and are not yet gone.
    int droppedWidgetCount() const;

    // Makes and drops widgets for the visible part once the events are done, or now.
    void scheduleRealize();
    void realize();
    // Makes widgets for every box of the page, visible or not.
    void realizeAll();
    // A widget of a box or line goes: hidden at once, deleted once its events are done.
    void drop(QWidget* widget);
    // A pinned widget stays however far the page scrolls from it.
    void setPinned(QWidget* widget, bool pinned);

private:
    struct Record
    {
        QPointer<QoSObject> object;
        QPointer<QoSObjectBox> widget;
        QRect rect; // page pixels, as entered in the index
    };

    void size(QoSObject* object);
    void moved(QoSObject* object);
    void realizeIn(const QRect& makeArea, const QRect& keepArea);
    QoSObjectBox* make(QoSObject* object);
    void retire(Record* record);
    bool isPinned(QWidget* widget) const;
    QRect makeArea() const;
    QRect keepArea() const;

    ObjectPageView* m_view;
    QHash<QString, Record*> m_boxes;
    SpatialIndex<Record*> m_index;
    QSet<Record*> m_realized; // the records that have a widget
    QSet<QWidget*> m_pinned;
    bool m_realizeScheduled = false;
};
