#pragma once

#include <QHash>
#include <QList>

#include <optional>
#include <vector>

class CellIndex;
class ObjectPage;
class QoSClass;
class QoSObject;

// Where new boxes go on a page: main classes into the leftmost free column, the first sub
// class below its parent, every further one right of its siblings with whole columns pushed
// right to make room, filters below their class. The page grows when a box would fall
// outside it.
//
// The editor's single commands move the boxes one by one. An import adds thousands of boxes
// at once, and moving every box right of a new sibling for every sibling grows with the
// square of the document: while the page is deferred, the columns of the boxes the
// arrangement places are kept as an ordered list instead, a column shift is one insertion
// into that list, and every box gets its column number, its place on the page and its
// connector once, at the end. Both ways give the same cells and the same page size.
//
// A listed box's MatrixX is not its column until the list is settled: whoever needs the
// columns while the page is deferred calls Materialize first (the page's own look-ups do).
class Arrangement
{
public:
    Arrangement(ObjectPage& page, CellIndex& index) : m_page(page), m_index(index) {}

    // A column for a new box: a number, or a place in the list of columns.
    struct Column
    {
        int x = 0;
        int node = -1;
    };

    int FindFreeColumn(bool grow);
    static int MaxChildColumn(const QoSClass* c);
    void ShiftColumnsRight(int x);
    Column NewClassColumn(QoSClass* parent, std::optional<qint16> given);
    static int NewClassRow(const QoSClass* parent, std::optional<qint16> given);
    Column NewFilterColumn(const QoSClass* c, std::optional<qint16> given);
    int NewFilterRow(const QoSClass* c, std::optional<qint16> given);

    // From Begin to End no box is placed on the page and no connector is laid out; End
    // places every box once. The list of columns is used only when the page starts empty
    // and every class row lies within it; anything the list cannot answer settles it first.
    void BeginDeferred();
    void EndDeferred();
    bool IsDeferred() const { return m_deferred; }
    // Whether boxes still wait for their column number.
    bool HasListedColumns() const { return m_listed && !m_listedBoxes.empty(); }
    // Whether this box waits for its column number.
    bool IsListed(const QoSObject* object) const { return m_nodes.contains(object); }
    // Gives every listed box its column number and enters it in the page's cell index; the
    // arrangement goes on one box at a time from here.
    void Materialize();
    // A new box that stands in a listed column.
    void AddListed(QoSObject* object, int node);
    // The page forgets its boxes.
    void Reset();

private:
    int appendNode();
    int insertNodeAfter(int node);
    // The place of a listed box in the list of columns, or -1.
    int nodeOf(const QoSObject* object) const { return m_nodes.value(object, -1); }

    ObjectPage& m_page;
    CellIndex& m_index;
    bool m_deferred = false;
    bool m_listed = false;
    std::vector<int> m_next; // the column after each listed column, -1 for the last
    int m_head = -1;
    int m_tail = -1;
    std::vector<QoSObject*> m_listedBoxes; // in the order they were added
    QHash<const QoSObject*, int> m_nodes;
};
