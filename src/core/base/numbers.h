#pragma once

#include <QString>
#include <QStringView>
#include <QtGlobal>
#include <optional>

// The number rules that every part of the editor shares. Texts hold numbers with "." as
// decimal point in every locale; whole numbers are 32-bit and round halves to even.
namespace Numbers {

// Value of the number at the start of a text: leading blanks skipped, optional sign,
// digits, optional "." and digits; reading stops at the first character that cannot
// continue the number. A text without a number gives 0. Throws an overflow QoSError
// when the number does not fit into a double.
double LeadingValue(QStringView text);

// The same, with nothing for a number beyond a double: for the many places where such a
// number only names nothing or counts as a default.
std::optional<double> TryLeadingValue(QStringView text);
// The leading number rounded to 32 bits, halves to even: a port, a class number. Nothing when
// it does not fit.
std::optional<qint32> TryLeadingInt32(QStringView text);

// The whole text as a number (blanks around it allowed), or nothing.
std::optional<double> ParseNumber(QStringView text);

// A number in the loose sense of the address check: blanks around, an exponent allowed.
std::optional<double> ParseLooseNumber(QStringView text);

// Rounds to the nearest 32-bit integer, halves to even. Throws an overflow QoSError outside
// the range (and for NaN).
qint32 RoundToInt32(double value);
std::optional<qint32> TryRoundToInt32(double value);

// The same into the 16-bit range of the cell and filter numbers.
qint16 RoundToInt16(double value);

// "As integers": the whole text must be a number, then rounded to 32 bits.
// Throws a type-mismatch QoSError for a text that is not a number.
qint32 AsInteger(QStringView text);
qint16 AsInt16(QStringView text);

// Truncation toward zero of a value into 32 bits; throws on overflow.
qint32 TruncateToInt32(double value);
std::optional<qint32> TryTruncateToInt32(double value);

// True when the single-precision rounding of value and its 32-bit rounding differ:
// the "inexact" test of unit conversion. Throws on 32-bit overflow.
bool Inexact(double value);

// Decimal text of a number: whole numbers plainly, others with up to 15 significant
// digits and "." as decimal point, an exponent as E+NN.
QString Format(double value);

// Adds two 32-bit values, throwing on overflow.
qint32 CheckedAdd(qint32 a, qint32 b);
qint32 CheckedSub(qint32 a, qint32 b);
// The difference, or nothing on overflow.
std::optional<qint32> TrySub(qint32 a, qint32 b);

} // namespace Numbers
