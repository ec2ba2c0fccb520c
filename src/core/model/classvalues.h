#pragma once

#include "base/qoserror.h"

#include <QString>
#include <optional>

class QoSClass;

// What a new class is made of. Empty bandwidths choose the defaults of a main or a sub class;
// class number 0 takes the creation counter; an empty caption becomes "Class " and the class
// number; a cell not given is chosen by the arrangement.
struct ClassValues
{
    QString minBandwidth{};
    QString maxBandwidth{};
    QString direction{};
    QString prio{};
    int classIdx = 0;
    bool defaultClass = false;
    QString caption{};
    std::optional<qint16> x{};
    std::optional<qint16> y{};
    bool visible = true;

    // Gives a class just made in its cell everything else, linked under `parent` when there
    // is one. A bandwidth that does not fit is left out and its error returned: the class
    // gets all the rest, so that nothing more than the one setting is lost.
    std::optional<QoSError> GiveTo(QoSClass& c, QoSClass* parent) const;
};
