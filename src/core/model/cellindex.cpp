#include "model/cellindex.h"

#include "model/qosobject.h"

#include <bit>

namespace {

constexpr int columnOffset = 32768;
constexpr int columnRange = 65536;

bool inRange(int x)
{
    return x >= -columnOffset && x < columnOffset;
}

} // namespace

void CellIndex::countColumn(int x, int y, int delta)
{
    if (!inRange(x))
        return;
    if (m_any.empty()) {
        m_any.assign(columnRange, 0);
        m_inRows.assign(columnRange, 0);
        m_occupied.assign(ColumnLimit / 64, 0);
    }
    const std::size_t i = std::size_t(x + columnOffset);
    m_any[i] += delta;
    if (delta > 0 && x > m_maxColumn)
        m_maxColumn = x;
    if (m_any[i] == 0 && x == m_maxColumn) {
        while (m_maxColumn >= -columnOffset && m_any[std::size_t(m_maxColumn + columnOffset)] == 0)
            --m_maxColumn;
    }
    if (y < 0 || y >= m_rows)
        return;
    m_inRows[i] += delta;
    if (x >= 0 && x < ColumnLimit) {
        const quint64 bit = quint64(1) << (x % 64);
        if (m_inRows[i] > 0)
            m_occupied[std::size_t(x / 64)] |= bit;
        else
            m_occupied[std::size_t(x / 64)] &= ~bit;
    }
}

void CellIndex::Insert(QoSObject* object)
{
    const quint64 key = cellKey(object->MatrixX(), object->MatrixY());
    auto it = m_first.find(key);
    if (it == m_first.end()) {
        m_first.insert(key, object);
    } else if (object->Sequence() < it.value()->Sequence()) {
        // Keep the box added first in front, whatever order the boxes arrive in.
        m_more.insert(key, it.value());
        it.value() = object;
    } else {
        m_more.insert(key, object);
    }
    countColumn(object->MatrixX(), object->MatrixY(), +1);
}

void CellIndex::Remove(QoSObject* object, int x, int y)
{
    const quint64 key = cellKey(x, y);
    auto it = m_first.find(key);
    if (it == m_first.end())
        return;
    if (it.value() == object) {
        // The earliest of the others takes the cell.
        auto first = m_more.end();
        for (auto m = m_more.find(key); m != m_more.end() && m.key() == key; ++m)
            if (first == m_more.end() || m.value()->Sequence() < first.value()->Sequence())
                first = m;
        if (first == m_more.end()) {
            m_first.erase(it);
        } else {
            it.value() = first.value();
            m_more.erase(first);
        }
    } else if (!m_more.remove(key, object)) {
        return;
    }
    countColumn(x, y, -1);
}

void CellIndex::Clear()
{
    m_first.clear();
    m_more.clear();
    m_any.clear();
    m_inRows.clear();
    m_occupied.clear();
    m_maxColumn = -65536;
}

void CellIndex::SetRows(int rows, const QList<QoSObject*>& objects)
{
    m_rows = rows;
    if (m_any.empty())
        return;
    std::fill(m_inRows.begin(), m_inRows.end(), 0);
    std::fill(m_occupied.begin(), m_occupied.end(), 0);
    for (QoSObject* o : objects) {
        const int x = o->MatrixX();
        if (o->MatrixY() < 0 || o->MatrixY() >= rows)
            continue;
        if (++m_inRows[std::size_t(x + columnOffset)] == 1 && x >= 0)
            m_occupied[std::size_t(x / 64)] |= quint64(1) << (x % 64);
    }
}

QoSObject* CellIndex::At(int x, int y) const
{
    return m_first.value(cellKey(x, y), nullptr);
}

int CellIndex::FirstEmptyColumn(int limit) const
{
    limit = qMin(limit, ColumnLimit);
    for (int word = 0; word * 64 < limit; ++word) {
        const quint64 bits = m_occupied.empty() ? 0 : m_occupied[std::size_t(word)];
        if (bits == ~quint64(0))
            continue;
        const int x = word * 64 + std::countr_one(bits);
        return x < limit ? x : -1;
    }
    return -1;
}

bool CellIndex::AnyAtOrRightOf(int x) const
{
    return m_maxColumn >= x;
}
