#include "base/unitconversion.h"

#include "base/numbers.h"

namespace UnitConversion {

const QStringList& Units()
{
    static const QStringList units{QStringLiteral("bit"),  QStringLiteral("kbit"), QStringLiteral("mbit"),
                                   QStringLiteral("gbit"), QStringLiteral("bps"),  QStringLiteral("kbps"),
                                   QStringLiteral("mbps"), QStringLiteral("gbps")};
    return units;
}

double ToKbit(double value, const QString& unit, bool& inexact)
{
    const QString u = unit.toLower();
    double r;
    if (u == u"bit")
        r = value / 1024;
    else if (u == u"kbit")
        r = value;
    else if (u == u"mbit")
        r = value * 1024;
    else if (u == u"gbit")
        r = value * 1024 * 1024;
    else if (u == u"bps")
        r = value * 8 / 1024;
    else if (u == u"kbps")
        r = value * 8;
    else if (u == u"mbps")
        r = value * 8 * 1024;
    else if (u == u"gbps")
        r = value * 8 * 1024 * 1024;
    else {
        inexact = true;
        return 0;
    }
    inexact = Numbers::Inexact(r);
    return r;
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
