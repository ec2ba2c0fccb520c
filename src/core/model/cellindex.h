#pragma once

#include <QHash>
#include <QList>
#include <QtGlobal>

#include <vector>

class QoSObject;

// Which boxes stand in which cell and column of one page, so that no look-up scans all
// boxes. A cell may hold several boxes (a file may say so); the look-up then gives the one
// added first. Columns count twice: every box for the column shift, and only the boxes
// within the page's rows for the search of a free column.
class CellIndex
{
public:
    // A box's column is 16-bit: columns from this on can never hold a box.
    static constexpr int ColumnLimit = 32768;

    void Insert(QoSObject* object);
    void Remove(QoSObject* object, int x, int y);
    void Clear();
    // The boxes within rows 0..rows-1 are counted anew.
    void SetRows(int rows, const QList<QoSObject*>& objects);

    QoSObject* At(int x, int y) const;
    // The leftmost column below `limit` that no box within the rows occupies, or -1.
    int FirstEmptyColumn(int limit) const;
    // Whether any box, in any row, stands in column x or right of it.
    bool AnyAtOrRightOf(int x) const;

private:
    static quint64 cellKey(int x, int y) { return (quint64(quint32(x)) << 32) | quint32(y); }
    // Counts a box in (delta 1) or out (-1) of its column.
    void countColumn(int x, int y, int delta);

    QHash<quint64, QoSObject*> m_first;     // the box added first to each cell
    QMultiHash<quint64, QoSObject*> m_more; // further boxes of a shared cell
    // The counts cover the 16-bit column range, indexed by column + 32768.
    std::vector<int> m_inRows;       // boxes within the rows, per column
    std::vector<int> m_any;          // boxes in any row, per column
    std::vector<quint64> m_occupied; // bit per column 0..ColumnLimit-1: m_inRows > 0
    int m_rows = 0;
    int m_maxColumn = -65536; // rightmost column that holds a box, or below all
};
