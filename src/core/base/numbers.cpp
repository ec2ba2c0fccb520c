#include "base/numbers.h"

#include "base/qoserror.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace Numbers {

namespace {

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Scans "[+-]digits[.digits]" from pos; returns the end, or pos when there is no digit.
qsizetype scanNumber(QStringView text, qsizetype pos)
{
    qsizetype i = pos;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    qsizetype digits = 0;
    while (i < text.size() && isDigit(text[i])) {
        ++i;
        ++digits;
    }
    if (i < text.size() && text[i] == u'.') {
        qsizetype j = i + 1;
        qsizetype fraction = 0;
        while (j < text.size() && isDigit(text[j])) {
            ++j;
            ++fraction;
        }
        if (fraction > 0 || digits > 0) {
            if (fraction > 0)
                i = j;
            digits += fraction;
        }
    }
    return digits > 0 ? i : pos;
}

// The span holds only "[+-]digits[.digits]"; from_chars reads it the same in every locale.
// Nothing when the number does not fit a double.
std::optional<double> toDouble(QStringView number)
{
    char buffer[64];
    std::string big;
    char* begin = buffer;
    qsizetype start = 0;
    if (!number.isEmpty() && number[0] == u'+')
        start = 1; // from_chars takes no plus sign
    const qsizetype n = number.size() - start;
    if (n >= qsizetype(sizeof buffer)) {
        big.resize(size_t(n));
        begin = big.data();
    }
    for (qsizetype i = 0; i < n; ++i)
        begin[i] = char(number[start + i].unicode());
    double v = 0;
    const auto [end, ec] = std::from_chars(begin, begin + n, v);
    if (ec != std::errc() || end != begin + n || !std::isfinite(v))
        return std::nullopt;
    return v;
}

double orOverflow(std::optional<double> value)
{
    if (!value)
        throw QoSError::overflow();
    return *value;
}

} // namespace

double LeadingValue(QStringView text)
{
    return orOverflow(TryLeadingValue(text));
}

std::optional<qint32> TryLeadingInt32(QStringView text)
{
    const auto value = TryLeadingValue(text);
    return value ? TryRoundToInt32(*value) : std::nullopt;
}

// No exception on the way, also not for a number beyond a double: port lists are counted on
// every keystroke.
std::optional<double> TryLeadingValue(QStringView text)
{
    // Most numbers in a file are short plain integers: read them without a conversion call.
    {
        const char16_t* p = text.utf16();
        const qsizetype n = text.size();
        qsizetype i = 0;
        qint64 v = 0;
        while (i < n && i < 15 && p[i] >= u'0' && p[i] <= u'9')
            v = v * 10 + (p[i++] - u'0');
        if (i > 0 && (i == n || (p[i] != u'.' && (p[i] < u'0' || p[i] > u'9'))))
            return double(v);
    }
    qsizetype pos = 0;
    while (pos < text.size() && text[pos] == u' ')
        ++pos;
    const qsizetype end = scanNumber(text, pos);
    if (end == pos)
        return 0.0;
    QStringView number = text.mid(pos, end - pos);
    if (number.endsWith(u'.'))
        number.chop(1);
    return toDouble(number);
}

std::optional<double> ParseNumber(QStringView text)
{
    QStringView t = text.trimmed();
    const qsizetype end = scanNumber(t, 0);
    if (end == 0 || end != t.size())
        return std::nullopt;
    if (t.endsWith(u'.'))
        t.chop(1);
    return orOverflow(toDouble(t));
}

std::optional<double> ParseLooseNumber(QStringView text)
{
    const QStringView t = text.trimmed();
    if (t.isEmpty())
        return std::nullopt;
    bool hasDigit = false;
    for (QChar c : t) {
        if (isDigit(c))
            hasDigit = true;
        else if (c != u'+' && c != u'-' && c != u'.' && c != u'e' && c != u'E')
            return std::nullopt;
    }
    if (!hasDigit)
        return std::nullopt;
    bool ok = false;
    const double v = t.toString().toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return std::nullopt;
    return v;
}

std::optional<qint32> TryRoundToInt32(double value)
{
    if (std::isnan(value))
        return std::nullopt;
    const double r = std::nearbyint(value); // the default rounding mode rounds halves to even
    if (r < -2147483648.0 || r > 2147483647.0)
        return std::nullopt;
    return static_cast<qint32>(r);
}

qint32 RoundToInt32(double value)
{
    if (const auto r = TryRoundToInt32(value))
        return *r;
    throw QoSError::overflow();
}

qint16 RoundToInt16(double value)
{
    const qint32 r = RoundToInt32(value);
    if (r < -32768 || r > 32767)
        throw QoSError::overflow();
    return static_cast<qint16>(r);
}

qint32 AsInteger(QStringView text)
{
    const auto v = ParseNumber(text);
    if (!v)
        throw QoSError::typeMismatch(text.toString());
    return RoundToInt32(*v);
}

qint16 AsInt16(QStringView text)
{
    const auto v = ParseNumber(text);
    if (!v)
        throw QoSError::typeMismatch(text.toString());
    return RoundToInt16(*v);
}

std::optional<qint32> TryTruncateToInt32(double value)
{
    if (std::isnan(value))
        return std::nullopt;
    const double t = std::trunc(value);
    if (t < -2147483648.0 || t > 2147483647.0)
        return std::nullopt;
    return static_cast<qint32>(t);
}

qint32 TruncateToInt32(double value)
{
    if (const auto t = TryTruncateToInt32(value))
        return *t;
    throw QoSError::overflow();
}

bool Inexact(double value)
{
    const double asInt = RoundToInt32(value);
    const double asSingle = static_cast<float>(value);
    return asInt != asSingle;
}

QString Format(double value)
{
    if (value == 0.0)
        return QStringLiteral("0");
    if (std::fabs(value) < 1e15 && value == std::trunc(value))
        return QString::number(static_cast<qint64>(value));
    QString s = QString::number(value, 'g', 15);
    const qsizetype e = s.indexOf(u'e');
    if (e >= 0)
        s[e] = u'E';
    return s;
}

qint32 CheckedAdd(qint32 a, qint32 b)
{
    qint32 r;
    if (__builtin_add_overflow(a, b, &r))
        throw QoSError::overflow();
    return r;
}

qint32 CheckedSub(qint32 a, qint32 b)
{
    if (const auto r = TrySub(a, b))
        return *r;
    throw QoSError::overflow();
}

std::optional<qint32> TrySub(qint32 a, qint32 b)
{
    qint32 r;
    if (__builtin_sub_overflow(a, b, &r))
        return std::nullopt;
    return r;
}

} // namespace Numbers
