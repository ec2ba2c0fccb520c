#pragma once

#include "base/windows1252.h"

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <type_traits>
#include <utility>

// A sink for QoSLines that holds the text of the file: as UTF-16 (QString) for the clipboard,
// or as the bytes of the router's code page (QByteArray) for the disk. It is made with the
// size the text will have, so that a document of some hundred thousand lines is written
// without the buffer ever growing.
template <typename Text> class QoSTextBuffer
{
    static constexpr bool bytes = std::is_same_v<Text, QByteArray>;
    using Unit = std::conditional_t<bytes, char, char16_t>;

public:
    explicit QoSTextBuffer(qsizetype size) { resize(size, 0); }

    // The code page holds every character in one byte (or a "?"), so a text never takes more
    // bytes than it has code units.
    void append(QStringView s)
    {
        Unit* at = room(s.size());
        if constexpr (bytes) {
            m_end = Windows1252::EncodeInto(s, at);
        } else {
            m_end = std::copy_n(s.utf16(), s.size(), at); // an empty text may have no data at all
        }
    }
    Q_ALWAYS_INLINE void ascii(const char* s, std::size_t n)
    {
        Unit* at = room(qsizetype(n));
        if constexpr (bytes)
            std::memcpy(at, s, n);
        else
            std::copy(s, s + n, at);
        m_end += n;
    }

    void number(qint64 n)
    {
        char digits[20]; // every 64-bit number
        const char* end = std::to_chars(digits, digits + sizeof digits, n).ptr;
        ascii(digits, std::size_t(end - digits));
    }

    Text take()
    {
        m_text.truncate(m_end - m_begin);
        m_begin = m_end = m_stop = nullptr;
        return std::move(m_text);
    }

private:
    // A size that fell short would cost a copy, never a write past the end; it is a fault of
    // the count, which debug builds report.
    Q_ALWAYS_INLINE Unit* room(qsizetype n)
    {
        if (Q_UNLIKELY(m_stop - m_end < n))
            grow(n);
        return m_end;
    }
    Q_NEVER_INLINE void grow(qsizetype n)
    {
        Q_ASSERT_X(false, "QoSTextBuffer", "the text is longer than its counted size");
        resize(qMax(m_text.size() * 2, (m_end - m_begin) + n), m_end - m_begin);
    }
    void resize(qsizetype size, qsizetype used)
    {
        m_text.resize(size);
        m_begin = reinterpret_cast<Unit*>(m_text.data());
        m_end = m_begin + used;
        m_stop = m_begin + size;
    }

    Text m_text;
    Unit* m_begin = nullptr;
    Unit* m_end = nullptr;
    Unit* m_stop = nullptr;
};
