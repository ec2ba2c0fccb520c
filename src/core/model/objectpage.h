#pragma once

#include "model/classvalues.h"
#include "model/filtervalues.h"
#include "model/objectpageproperties.h"
#include "model/pageselection.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <memory>
#include <optional>

class Arrangement;
class CellIndex;
class Document;
class QoSObject;
class QoSClass;
class QoSFilter;
class QoSConnector;

// The grid page of one direction ("Down1" holds the down tree, "Up1" the up tree). Every box
// stands in one cell; its position follows from the cell alone. The page keeps an index of
// cells and columns so that looking up a cell never scans all boxes; where new boxes go is
// the business of its Arrangement, what they are given that of ClassValues and FilterValues.
class ObjectPage : public QObject
{
    Q_OBJECT
public:
    ObjectPage(Document* document, const QString& name, const QString& direction);
    ~ObjectPage() override;

    QString Name() const { return objectName(); }
    // "down" or "up": the direction of the classes made on this page.
    QString Direction() const { return m_direction; }
    Document* document() const { return m_document; }

    const ObjectPageProperties& prop() const { return m_prop; }
    void SetObjectDimensions(qint32 height, qint32 width);
    // Page size in columns and rows; below 1 keeps the current value, below 3 becomes 3.
    // Both values are written back.
    void SetGridDimensions(qint32& width, qint32& height);
    // Grows the page to a size the arrangement needs (below 1 keeps the current value),
    // without settling the arrangement first: it calls this while it places a box.
    void GrowGrid(qint32 width, qint32 height);
    // 64-bit: a page size read from a file may be far larger than any screen.
    qint64 PaneWidth() const { return qint64(m_prop.Cols) * m_prop.ColWidth; }
    qint64 PaneHeight() const { return qint64(m_prop.Rows) * m_prop.RowHeight; }

    // The boxes on this page in the order they were added.
    const QList<QoSObject*>& ContainedObjects() const { return m_contained; }
    int ObjectCount() const { return int(m_contained.size()); }
    int ClassCount() const { return m_classCount; }

    // The box in a cell; of two in one cell, the one added first.
    QoSObject* ObjectAt(int x, int y);
    // Every box of the page, row by row from the top, each row left to right, boxes that
    // share a cell in the order they were added: the order in which the file is written.
    QList<QoSObject*> ObjectsInWriteOrder();
    // The box after `object` in that order, or before it when not going forward; nothing past
    // either end. Without an object, the first box (forward) or the last. This is the order
    // in which the keyboard walks the picture.
    QoSObject* NextInPictureOrder(const QoSObject* object, bool forward);

    // Creates a class box under the parent of that class number ("0" or a number that names
    // no class: a main class). Refusals are shown to the user (see LastRefusal) and give
    // nothing. A given cell beyond the page makes the page grow to hold it; no box is ever left
    // outside the page. A parent on the other page makes the class a main class of this page,
    // and a QoSError of kind Tree follows once the class is whole.
    QoSClass* AddClass(const QString& parentIdx, const ClassValues& values);
    // The same under a parent class the caller already holds; none makes a main class.
    QoSClass* AddClass(QoSClass* parent, const ClassValues& values);
    // Creates a filter box under the class of that number.
    QoSFilter* AddFilter(const QString& classIdx, const FilterValues& values);
    // The same under a class the caller already holds.
    QoSFilter* AddFilter(QoSClass* c, const FilterValues& values);

    // Why the last AddClass or AddFilter that gave nothing refused. Outside the reading of a
    // file each refusal is shown in a message box; while a file is read none is, and the
    // reader collects them from here.
    enum class Refusal {
        None,
        ParentHasFilters,
        NoFurtherLevel,
        NoClass,
        ClassNotOnPage,
        ClassHasSubClasses
    };
    Refusal LastRefusal() const { return m_lastRefusal; }
    QString LastRefusalText() const { return m_lastRefusalText; }

    // Removes a box and its upper connector from the page and the document.
    void Remove(QoSObject* object);

    QoSObject* SelectedObject() const;
    void SetSelectedObject(QoSObject* object);
    QoSClass* SelectedClass() const;
    QoSFilter* SelectedFilter() const;
    QoSConnector* SelectedConnector() const;
    void SetSelectedConnector(QoSConnector* connector);

    // Centres a box in its cell.
    void PlaceObject(QoSObject* object) const;

    // The page's context menu: a new main class, and a new filter (which on the page itself
    // has no class and is therefore always refused).
    QoSClass* NewClassCommand();
    QoSFilter* NewFilterCommand();
    // Asks for "columns, rows" until the answer has two parts; an empty answer cancels.
    bool PageSizeCommand();

    // While an import adds its boxes, they are placed and joined once at the end.
    void BeginDeferred();
    void EndDeferred();
    bool IsDeferred() const;
    // Whether connectors wait to be laid out: while the page is deferred or placing its boxes.
    bool ConnectorsWait() const { return m_placing || IsDeferred(); }
    // Where new boxes go: the free column, the column shift, the cells of new classes and filters.
    Arrangement& arrangement() { return *m_arrangement; }
    // Gives every box whose column the arrangement still keeps as a place in its list its
    // column number. The page's own look-ups do this; a box's MatrixX alone does not.
    void SettleColumns();

    // Called by a box whose cell changed, to keep the index right.
    void CellChanged(QoSObject* object, int oldX, int oldY);
    // Forgets every box without removing it; the document is being cleared.
    void ResetContainedObjects();

signals:
    void gridChanged(int cols, int rows);
    void objectAdded(QoSObject* object);
    void objectRemoved(const QString& name);
    void selectionChanged();
    // The boxes of an import have their places: until then they all stand at the page's corner.
    void placed();

private:
    // A box in column x, or in the arrangement's list of columns at `node` (when not -1).
    QoSObject* createObject(bool isClass, int x, int node, qint16 y);
    // Grows the page so that a box read with this cell stands on it.
    void growToHold(int x, int y);
    void placeAll();
    void refuse(Refusal refusal, const QString& text);

    Document* m_document;
    QString m_direction;
    ObjectPageProperties m_prop;
    QList<QoSObject*> m_contained;
    int m_classCount = 0;
    // Behind pointers, so that their layout is not compiled into every user of the page.
    std::unique_ptr<CellIndex> m_index;
    std::unique_ptr<Arrangement> m_arrangement;
    PageSelection m_selection;
    bool m_placing = false;
    Refusal m_lastRefusal = Refusal::None;
    QString m_lastRefusalText;
};
