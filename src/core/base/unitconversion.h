#pragma once

#include <QString>
#include <QStringList>

// The single place where a bandwidth number changes its unit. Prefixes are binary
// (k = 1024) and a byte is 8 bit; the editor computes in kbit.
namespace UnitConversion {

// The eight unit words in menu order: the bit group, then the byte group.
const QStringList& Units();

// From unit to kbit. The unit is compared in lower case ("Mbit" is mbit).
// An unknown unit gives 0 with inexact set. Throws an overflow QoSError when the
// result does not fit into 32 bits (the integrality test).
double ToKbit(double value, const QString& unit, bool& inexact);
// The same without the integrality test, for a caller that rounds the result itself: an
// unknown unit gives 0, and a result beyond 32 bits is returned as it is.
double KbitOf(double value, const QString& unit);

// From kbit to unit. The unit is compared exactly: only the eight lower-case words are
// known, so "Mbit" is unknown here and gives 0 with inexact set. Callers rely on this.
double FromKbit(double value, const QString& unit, bool& inexact);

// ToKbit with the source unit, then FromKbit with the target unit; the flag is that of
// the second step, so an unknown source unit quietly gives 0 and inexact false.
double ConvertUnit(double value, const QString& sourceUnit, const QString& targetUnit, bool& inexact);

} // namespace UnitConversion
