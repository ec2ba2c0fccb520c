#include "treedepth.h"

#include "qosclass.h"

#include <QList>
#include <QSet>
#include <algorithm>

namespace TreeDepth {

int Level(const QoSClass& c)
{
    int level = 0;
    QSet<const QoSClass*> seen{&c}; // a broken document must not hang the count
    for (const QoSClass* p = c.ParentQoSObject(); p && !seen.contains(p); p = p->ParentQoSObject()) {
        seen.insert(p);
        ++level;
    }
    return level;
}

int LevelsBelow(const QoSClass& c, const QoSClass* without)
{
    // Breadth first, one level at a time.
    int levels = 0;
    QList<const QoSClass*> row{&c};
    QSet<const QoSClass*> seen{&c};
    while (true) {
        QList<const QoSClass*> next;
        for (const QoSClass* parent : std::as_const(row))
            for (const QoSObject* child : parent->ChildQoSObjects())
                if (auto* sub = qobject_cast<const QoSClass*>(child); sub && sub != without && !seen.contains(sub)) {
                    seen.insert(sub);
                    next << sub;
                }
        if (next.isEmpty())
            return levels;
        ++levels;
        row = std::move(next);
    }
}

bool FitsUnder(const QoSClass& moved, const QoSClass& target)
{
    const bool swap = moved.IsInDownTree(&target);
    const int targetLevel = swap ? 0 : Level(target);
    return targetLevel + 1 + LevelsBelow(moved, swap ? &target : nullptr) < ClassLevels;
}

} // namespace TreeDepth
