#include "model/arrangement.h"

#include "base/qoserror.h"
#include "model/cellindex.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosobject.h"

int Arrangement::FindFreeColumn(bool grow)
{
    Materialize();
    const ObjectPageProperties& p = m_page.prop();
    const int free = m_index.FirstEmptyColumn(p.Cols);
    if (free >= 0)
        return free;
    if (p.Cols > CellIndex::ColumnLimit)
        return CellIndex::ColumnLimit; // free, but beyond what a box's column can hold: AddClass refuses it
    if (!grow)
        return 0;
    m_page.GrowGrid(p.Cols + 1, p.Rows);
    return m_page.prop().Cols - 1;
}

int Arrangement::MaxChildColumn(const QoSClass* c)
{
    int m = -1;
    if (c)
        for (QoSObject* child : c->ChildQoSObjects())
            m = qMax(m, int(child->MatrixX()));
    return m;
}

void Arrangement::ShiftColumnsRight(int x)
{
    Materialize();
    // Every box in column x or right of it moves one column right, whole columns at a time,
    // so that no two subtrees come to share a column.
    if (!m_index.AnyAtOrRightOf(x))
        return; // nothing stands there: the common case of adding to the rightmost subtree
    QList<QoSObject*> moving;
    for (QoSObject* o : m_page.ContainedObjects())
        if (o->MatrixX() >= x)
            moving << o;
    for (QoSObject* o : std::as_const(moving)) {
        if (o->MatrixX() + 1 >= m_page.prop().Cols)
            m_page.GrowGrid(m_page.prop().Cols + 1, m_page.prop().Rows);
        if (o->MatrixX() >= 32767)
            throw QoSError::overflow();
        o->SetMatrixX(qint16(o->MatrixX() + 1));
    }
}

int Arrangement::appendNode()
{
    const int node = int(m_next.size());
    m_next.push_back(-1);
    if (m_tail >= 0)
        m_next[std::size_t(m_tail)] = node;
    else
        m_head = node;
    m_tail = node;
    return node;
}

int Arrangement::insertNodeAfter(int after)
{
    const int node = int(m_next.size());
    m_next.push_back(m_next[std::size_t(after)]);
    m_next[std::size_t(after)] = node;
    if (m_tail == after)
        m_tail = node;
    return node;
}

Arrangement::Column Arrangement::NewClassColumn(QoSClass* parent, std::optional<qint16> given)
{
    if (given) {
        Materialize(); // a box with a column of its own: the list no longer knows every column
        return {*given};
    }
    if (m_listed) {
        // Every listed column holds a class within the rows, and the listed columns stand
        // left of all empty ones: the columns 0 .. n-1 are taken, n .. Cols-1 are free.
        const ObjectPageProperties& p = m_page.prop();
        const int taken = int(m_next.size());
        if (!parent) {
            if (taken < qMin(p.Cols, CellIndex::ColumnLimit))
                return {taken, appendNode()};
            if (p.Cols > CellIndex::ColumnLimit)
                return {CellIndex::ColumnLimit};
            m_page.GrowGrid(p.Cols + 1, p.Rows);
            return {taken, appendNode()};
        }
        const QList<QoSObject*>& children = parent->ChildQoSObjects();
        const QoSObject* last = children.isEmpty() ? nullptr : children.last();
        const int parentNode = parent->GetObjectPage() == &m_page ? nodeOf(parent) : -1;
        const int lastNode = last ? nodeOf(last) : -1;
        if (parentNode >= 0 && (!last || lastNode >= 0)) {
            // The first child stands below its parent. Every further child was placed right
            // of the one before, and shifts keep the order of columns: the newest child is
            // the rightmost, and the new column comes right after it.
            if (!last)
                return {0, parentNode};
            if (taken >= CellIndex::ColumnLimit)
                throw QoSError::overflow();
            // Shifting the columns right of it widens the page only when the last one was taken.
            if (taken >= p.Cols)
                m_page.GrowGrid(p.Cols + 1, p.Rows);
            return {0, insertNodeAfter(lastNode)};
        }
        Materialize();
    }
    if (!parent)
        return {FindFreeColumn(true)};
    const int m = MaxChildColumn(parent);
    if (m == -1)
        return {parent->MatrixX()};
    const int c = m + 1;
    ShiftColumnsRight(c);
    if (c >= m_page.prop().Cols)
        m_page.GrowGrid(c + 1, m_page.prop().Rows);
    return {c};
}

int Arrangement::NewClassRow(const QoSClass* parent, std::optional<qint16> given)
{
    if (given)
        return *given;
    return parent ? parent->MatrixY() + 1 : 0;
}

Arrangement::Column Arrangement::NewFilterColumn(const QoSClass* c, std::optional<qint16> given)
{
    if (given) {
        Materialize();
        return {*given};
    }
    if (c && c->GetObjectPage() == &m_page)
        if (const int node = nodeOf(c); node >= 0)
            return {0, node};
    return {c ? int(c->MatrixX()) : 0};
}

int Arrangement::NewFilterRow(const QoSClass* c, std::optional<qint16> given)
{
    int row = given ? int(*given) : 0;
    if (!given && c) {
        row = 4 + int(c->ChildQoSObjects().size()); // only filters, the new one not yet among them
        // A new box never hides another: when a sibling was moved into that row, the filter
        // takes the first free row below it in its class's column. A file being read never
        // finds its rows taken, and its columns may not be settled yet, so it is not asked.
        if (!m_deferred)
            while (row < 32767 && m_page.ObjectAt(c->MatrixX(), row))
                ++row;
    }
    if (row >= m_page.prop().Rows - 1)
        m_page.GrowGrid(0, row + 1);
    return row;
}

void Arrangement::BeginDeferred()
{
    m_deferred = true;
    // Class rows are 0 to 3: on a page of fewer rows a class may stand outside them, and its
    // column then counts as free; the list does not keep that apart, the single steps do.
    m_listed = m_page.ContainedObjects().isEmpty() && m_page.prop().Rows >= ClassRows;
}

void Arrangement::AddListed(QoSObject* object, int node)
{
    m_nodes.insert(object, node);
    m_listedBoxes.push_back(object);
}

void Arrangement::Materialize()
{
    if (!m_listed)
        return;
    m_listed = false;
    std::vector<int> rank(m_next.size());
    int r = 0;
    for (int node = m_head; node >= 0; node = m_next[std::size_t(node)])
        rank[std::size_t(node)] = r++;
    // Emptied first, so that nothing below comes back here.
    const std::vector<QoSObject*> boxes = std::move(m_listedBoxes);
    const QHash<const QoSObject*, int> nodes = std::move(m_nodes);
    m_listedBoxes.clear();
    m_nodes.clear();
    m_next.clear();
    m_head = m_tail = -1;
    // Every box has its column before anybody hears of one: a listener may look at the others.
    for (QoSObject* o : boxes) {
        o->InitCell(qint16(rank[std::size_t(nodes.value(o))]), o->MatrixY());
        m_index.Insert(o);
    }
    for (QoSObject* o : boxes)
        if (o->MatrixX() != 0 && o->IsWatched())
            emit o->cellChanged(o->MatrixX(), o->MatrixY());
}

void Arrangement::EndDeferred()
{
    Materialize();
    m_deferred = false;
}

void Arrangement::Reset()
{
    m_listedBoxes.clear();
    m_nodes.clear();
    m_next.clear();
    m_head = m_tail = -1;
    m_listed = m_deferred && m_page.prop().Rows >= ClassRows;
}
