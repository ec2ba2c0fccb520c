#pragma once

#include <QHash>
#include <QList>
#include <QRect>

#include <algorithm>
#include <array>

// Which of many rectangles meet an area, without looking at every one: the page view finds
// the boxes and lines of the visible part with it.
//
// Rectangles are kept in square buckets of several sizes. A rectangle goes once into the
// bucket of the smallest size that is at least as large as its longer side, the one under
// its top-left corner; so it lies within that bucket and the next one right and down. An
// area is answered by looking at the buckets of every size in use that it and their left and
// upper neighbours cover. A box is one small bucket, and a line down 20 000 rows one large
// one; nothing is ever entered twice, so the index grows with the number of rectangles.
template <typename Key> class SpatialIndex
{
public:
    // Enters a rectangle, or moves the one entered under that key.
    void insert(Key key, const QRect& rect)
    {
        const auto it = m_entries.find(key);
        const quint64 bucket = bucketOf(rect);
        if (it != m_entries.end()) {
            if (it->bucket == bucket) {
                m_buckets[bucket][it->slot].rect = rect;
                return;
            }
            take(key, *it);
        }
        QList<Item>& items = m_buckets[bucket];
        if (items.isEmpty())
            ++m_levelBuckets[levelOf(bucket)];
        ++m_levelItems[levelOf(bucket)];
        m_entries.insert(key, Entry{bucket, items.size()});
        items.append(Item{key, rect});
    }

    void remove(Key key)
    {
        const auto it = m_entries.find(key);
        if (it == m_entries.end())
            return;
        take(key, *it);
        m_entries.erase(it);
    }

    void clear()
    {
        m_entries.clear();
        m_buckets.clear();
        m_levelItems.fill(0);
        m_levelBuckets.fill(0);
    }

    qsizetype size() const { return m_entries.size(); }

    // Every key whose rectangle meets the area.
    QList<Key> findIn(const QRect& area) const
    {
        QList<Key> out;
        if (area.isEmpty())
            return out;
        for (int level = 0; level < Levels; ++level) {
            if (m_levelItems[level] == 0)
                continue;
            const qint64 side = qint64(BaseSide) << level;
            const qint64 x0 = floorDiv(area.left(), side) - 1;
            const qint64 x1 = floorDiv(area.right(), side);
            const qint64 y0 = floorDiv(area.top(), side) - 1;
            const qint64 y1 = floorDiv(area.bottom(), side);
            const auto collect = [&](const QList<Item>& items) {
                for (const Item& item : items)
                    if (item.rect.intersects(area))
                        out.append(item.key);
            };
            // An area larger than the buckets in use looks at those buckets instead.
            if ((x1 - x0 + 1) * (y1 - y0 + 1) > m_levelBuckets[level]) {
                for (auto it = m_buckets.cbegin(); it != m_buckets.cend(); ++it)
                    if (levelOf(it.key()) == level)
                        collect(*it);
                continue;
            }
            for (qint64 y = y0; y <= y1; ++y)
                for (qint64 x = x0; x <= x1; ++x) {
                    const auto it = m_buckets.constFind(bucketKey(level, x, y));
                    if (it != m_buckets.cend())
                        collect(*it);
                }
        }
        return out;
    }

private:
    struct Item
    {
        Key key;
        QRect rect;
    };
    struct Entry
    {
        quint64 bucket;
        qsizetype slot;
    };

    static constexpr int BaseSide = 256; // pixels: about two cells of a page
    static constexpr int Levels = 24;    // up to sides of 2^31 pixels
    static constexpr qint64 Bias = qint64(1) << 28;

    static qint64 floorDiv(qint64 a, qint64 b) { return a >= 0 ? a / b : -((-a + b - 1) / b); }
    static int levelOf(quint64 bucket) { return int(bucket >> 58); }
    static quint64 bucketKey(int level, qint64 x, qint64 y)
    {
        constexpr quint64 mask = (quint64(1) << 29) - 1;
        return (quint64(level) << 58) | ((quint64(x + Bias) & mask) << 29) | (quint64(y + Bias) & mask);
    }
    static quint64 bucketOf(const QRect& rect)
    {
        const qint64 longer = std::max<qint64>(rect.width(), rect.height());
        int level = 0;
        while (level < Levels - 1 && (qint64(BaseSide) << level) < longer)
            ++level;
        const qint64 side = qint64(BaseSide) << level;
        return bucketKey(level, floorDiv(rect.left(), side), floorDiv(rect.top(), side));
    }

    // Takes the key out of its bucket; the last item of the bucket fills the gap.
    void take(Key key, const Entry& entry)
    {
        Q_UNUSED(key);
        const auto bucketIt = m_buckets.find(entry.bucket);
        QList<Item>& items = *bucketIt;
        const qsizetype last = items.size() - 1;
        if (entry.slot != last) {
            items[entry.slot] = items[last];
            m_entries[items[entry.slot].key].slot = entry.slot;
        }
        items.removeLast();
        --m_levelItems[levelOf(entry.bucket)];
        if (items.isEmpty()) {
            --m_levelBuckets[levelOf(entry.bucket)];
            m_buckets.erase(bucketIt);
        }
    }

    QHash<Key, Entry> m_entries;
    QHash<quint64, QList<Item>> m_buckets;
    std::array<qint64, Levels> m_levelItems{};
    std::array<qint64, Levels> m_levelBuckets{};
};
