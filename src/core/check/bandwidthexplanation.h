#pragma once

#include <QString>

class QoSClass;

// Which of a class's two bandwidths is meant.
enum class BandwidthSide { Minimum, Maximum };

// Why a class's minimum or maximum is marked invalid: one short German text with the figures in
// the units the user sees (the rule that is broken, the sum, the limit, the captions of the
// classes involved and how much is over). Empty while the field is valid.
QString ExplainBandwidth(const QoSClass& c, BandwidthSide side);
