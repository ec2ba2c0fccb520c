#include "base/windows1252.h"

#include <array>
#include <cstring>

namespace {

// 0x80 … 0x9F; the other bytes are the Latin-1 characters of the same number.
constexpr std::array<char16_t, 32> upperControlRange = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char encodeChar(char16_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return char(c);
    for (std::size_t i = 0; i < upperControlRange.size(); ++i)
        if (upperControlRange[i] == c)
            return char(0x80 + i);
    return '?';
}

} // namespace

qsizetype Windows1252::FirstUnmappable(QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= 0x80 && encodeChar(c) == '?')
            return i;
    }
    return -1;
}

QString Windows1252::Decode(const QByteArray& bytes)
{
    QString out(bytes.size(), Qt::Uninitialized);
    char16_t* dst = reinterpret_cast<char16_t*>(out.data());
    const auto* src = reinterpret_cast<const unsigned char*>(bytes.constData());
    const qsizetype n = bytes.size();
    qsizetype i = 0;
    // Eight bytes at a time while they are ASCII, which is nearly the whole of a file.
    while (i + 8 <= n) {
        quint64 word;
        std::memcpy(&word, src + i, 8);
        if (word & 0x8080808080808080ULL)
            break;
        for (int k = 0; k < 8; ++k)
            dst[i + k] = src[i + k];
        i += 8;
    }
    for (; i < n; ++i) {
        const unsigned char b = src[i];
        dst[i] = b >= 0x80 && b < 0xA0 ? upperControlRange[b - 0x80] : char16_t(b);
    }
    return out;
}

QByteArray Windows1252::Encode(QStringView text)
{
    QByteArray out(text.size(), Qt::Uninitialized);
    out.truncate(EncodeInto(text, out.data()) - out.data());
    return out;
}

char* Windows1252::EncodeInto(QStringView text, char* dst)
{
    const char16_t* src = text.utf16();
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        // Nearly every character of a written file is ASCII: copy runs of them in a tight loop.
        while (i < n && src[i] < 0x80)
            *dst++ = char(src[i++]);
        if (i == n)
            break;
        const char16_t c = src[i];
        // A pair of surrogates is one character and becomes one "?".
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && QChar::isLowSurrogate(text[i + 1].unicode()))
            ++i;
        *dst++ = encodeChar(c);
    }
    return dst;
}
