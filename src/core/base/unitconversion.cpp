#include "base/unitconversion.h"

#include "base/numbers.h"

#include <optional>

namespace UnitConversion {

const QStringList& Units()
{
    static const QStringList units{QStringLiteral("bit"),  QStringLiteral("kbit"), QStringLiteral("mbit"),
                                   QStringLiteral("gbit"), QStringLiteral("bps"),  QStringLiteral("kbps"),
                                   QStringLiteral("mbps"), QStringLiteral("gbps")};
    return units;
}

namespace {

// From unit to kbit, or nothing for an unknown unit.
std::optional<double> scaled(double value, const QString& unit)
{
    const QString u = unit.toLower();
    if (u == u"bit")
        return value / 1024;
    if (u == u"kbit")
        return value;
    if (u == u"mbit")
        return value * 1024;
    if (u == u"gbit")
        return value * 1024 * 1024;
    if (u == u"bps")
        return value * 8 / 1024;
    if (u == u"kbps")
        return value * 8;
    if (u == u"mbps")
        return value * 8 * 1024;
    if (u == u"gbps")
        return value * 8 * 1024 * 1024;
    return std::nullopt;
}

} // namespace

double ToKbit(double value, const QString& unit, bool& inexact)
{
    const std::optional<double> r = scaled(value, unit);
    if (!r) {
        inexact = true;
        return 0;
    }
    inexact = Numbers::Inexact(*r);
    return *r;
}

double KbitOf(double value, const QString& unit)
{
    return scaled(value, unit).value_or(0);
}

double FromKbit(double value, const QString& unit, bool& inexact)
{
    double r;
    if (unit == u"bit")
        r = value * 1024;
    else if (unit == u"kbit")
        r = value;
    else if (unit == u"mbit")
        r = value / 1024;
    else if (unit == u"gbit")
        r = value / 1048576;
    else if (unit == u"bps")
        r = value / 8 * 1024;
    else if (unit == u"kbps")
        r = value / 8;
    else if (unit == u"mbps")
        r = value / 8192;
    else if (unit == u"gbps")
        r = value / 8388608;
    else {
        inexact = true;
        return 0;
    }
    inexact = Numbers::Inexact(r);
    return r;
}

double ConvertUnit(double value, const QString& sourceUnit, const QString& targetUnit, bool& inexact)
{
    const double kbit = ToKbit(value, sourceUnit, inexact);
    return FromKbit(kbit, targetUnit, inexact);
}

} // namespace UnitConversion
