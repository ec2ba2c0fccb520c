#include "check/bandwidthexplanation.h"

#include "inputs/bandwidthfield.h"
#include "model/qosclass.h"

QString ExplainBandwidth(const QoSClass& c, BandwidthSide side)
{
    const BandwidthField* field = side == BandwidthSide::Minimum ? c.MinField() : c.MaxField();
    if (field->IsValid())
        return {};
    return side == BandwidthSide::Minimum ? QStringLiteral("Das Minimum ist ungültig.")
                                          : QStringLiteral("Das Maximum ist ungültig.");
}
