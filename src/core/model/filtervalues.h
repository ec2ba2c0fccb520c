#pragma once

#include "base/qoserror.h"

#include <QString>
#include <optional>

class QoSClass;
class QoSFilter;

// What a new filter is made of; filter number 0 takes the creation counter.
struct FilterValues
{
    QString ip{};
    QString port{};
    QString type{};
    QString option{};
    int filterIdx = 0;
    QString caption{};
    std::optional<qint16> x{};
    std::optional<qint16> y{};
    bool visible = true;

    // Gives a filter just made in its cell everything else, linked under its class. A port
    // list that stands for more ports than can be counted keeps its text, and its error is
    // returned: the filter is made whole all the same.
    std::optional<QoSError> GiveTo(QoSFilter& f, QoSClass& c) const;
};
