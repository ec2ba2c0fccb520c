#include "model/treedepth.h"

#include "model/qosclass.h"

namespace TreeDepth {

bool FitsUnder(const QoSClass& moved, const QoSClass& target)
{
    const bool swap = moved.IsInDownTree(&target);
    const int targetLevel = swap ? 0 : target.Level();
    return targetLevel + 1 + moved.SubtreeDepth(swap ? &target : nullptr) < ClassLevels;
}

} // namespace TreeDepth
