#include "inputs/portlist.h"

#include "base/numbers.h"

#include <cstdlib>

PortList::Item PortList::Read(QStringView text)
{
    Item item;
    item.text = text;
    const qsizetype dash = text.indexOf(u'-');
    if (dash < 0 || text.indexOf(u'-', dash + 1) >= 0)
        return item;
    item.range = true;
    item.from = Numbers::TryLeadingInt32(text.first(dash));
    item.to = Numbers::TryLeadingInt32(text.sliced(dash + 1));
    return item;
}

qint64 PortList::Item::Expanded() const
{
    if (!range)
        return 1;
    return EndsFit() ? std::llabs(qint64(*to) - *from) + 1 : 0;
}

qint64 PortList::Item::Counted() const
{
    if (!range)
        return 1;
    return EndsFit() ? std::llabs(qint64(*to) - *from + 1) : 0;
}

QString PortList::Item::Entry(qint64 i) const
{
    if (!range)
        return text.toString();
    return QString::number(*to >= *from ? *from + i : *from - i);
}

PortList::Iterator::Iterator(QStringView list, qsizetype start) : m_list(list), m_start(start)
{
    if (m_start >= 0) {
        m_end = m_list.indexOf(u',', m_start);
        if (m_end < 0)
            m_end = m_list.size();
    }
}

PortList::Iterator& PortList::Iterator::operator++()
{
    *this = m_end == m_list.size() ? Iterator(m_list, -1) : Iterator(m_list, m_end + 1);
    return *this;
}
