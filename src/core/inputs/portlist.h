#pragma once

#include <QString>
#include <QStringView>
#include <QtGlobal>
#include <optional>

// Reads a port list such as "21,80,6000-6010" item by item. Everything that counts, expands
// or checks a list walks it here, so they cannot come to disagree about what an item is.
//
// The items are the comma-separated parts, empty ones included ("21," has two). An item with
// exactly one dash is a range; its ends are read as numbers everywhere are (leading number,
// rounded to 32 bits, halves to even), so "1.5-3" stands for 2 and 3, "-5" for 0 to 5 and
// "x-y" for 0. Anything else, two dashes included, is one port written as it stands.
//
// The walk only looks at the text: no copies, as it runs on every keystroke.
class PortList
{
public:
    struct Item
    {
        QStringView text;
        bool range = false;
        // The ends of a range; nothing for an end beyond 32 bits.
        std::optional<qint32> from;
        std::optional<qint32> to;

        // False for a range with an end beyond 32 bits: it neither counts nor expands.
        bool EndsFit() const { return !range || (from && to); }
        bool Reversed() const { return range && from && to && *to < *from; }
        // The entries it expands to; 1 for anything but a range.
        qint64 Expanded() const;
        // The ports it counts: a reversed range a-b counts two less than it expands to; kept
        // as it is.
        qint64 Counted() const;
        // The i-th entry (0 <= i < Expanded()): a range runs from its first end to its second,
        // down for a reversed one; anything else is its own text.
        QString Entry(qint64 i) const;
    };

    class Iterator
    {
    public:
        Item operator*() const { return Read(m_list.sliced(m_start, m_end - m_start)); }
        Iterator& operator++();
        bool operator==(const Iterator& other) const { return m_start == other.m_start; }

    private:
        friend class PortList;
        Iterator(QStringView list, qsizetype start);

        QStringView m_list;
        qsizetype m_start; // -1 past the last item
        qsizetype m_end = 0;
    };

    // The text must outlive the walk.
    explicit PortList(QStringView list) : m_list(list) {}
    Iterator begin() const { return Iterator(m_list, 0); }
    Iterator end() const { return Iterator(m_list, -1); }

    static Item Read(QStringView item);

private:
    QStringView m_list;
};
