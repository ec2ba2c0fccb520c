#include "model/pictureorder.h"

#include "model/qosobject.h"

#include <algorithm>
#include <compare>
#include <optional>

namespace PictureOrder {

QList<QoSObject*> Sorted(const QList<QoSObject*>& boxes)
{
    QList<QoSObject*> out = boxes;
    // Stable: boxes of one cell keep the order in which they were added.
    std::stable_sort(out.begin(), out.end(), [](const QoSObject* a, const QoSObject* b) {
        return a->MatrixY() != b->MatrixY() ? a->MatrixY() < b->MatrixY() : a->MatrixX() < b->MatrixX();
    });
    return out;
}

QoSObject* Next(const QList<QoSObject*>& boxes, const QoSObject* from, bool forward)
{
    // Row, column and place among the boxes order the picture; one pass finds the neighbour,
    // where sorting every box for each step would not be needed.
    struct Key
    {
        int y;
        int x;
        qsizetype i;
        auto operator<=>(const Key&) const = default;
    };
    const auto keyAt = [&boxes](qsizetype i) {
        const QoSObject* o = boxes.at(i);
        return Key{o->MatrixY(), o->MatrixX(), i};
    };
    std::optional<Key> start;
    if (from) {
        const qsizetype i = boxes.indexOf(from);
        if (i < 0)
            return nullptr;
        start = keyAt(i);
    }
    qsizetype best = -1;
    Key bestKey{};
    for (qsizetype i = 0; i < boxes.size(); ++i) {
        const Key k = keyAt(i);
        if (start && (forward ? k <= *start : k >= *start))
            continue;
        if (best < 0 || (forward ? k < bestKey : k > bestKey)) {
            best = i;
            bestKey = k;
        }
    }
    return best < 0 ? nullptr : boxes.at(best);
}

} // namespace PictureOrder
