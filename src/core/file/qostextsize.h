#pragma once

#include <QStringView>
#include <QtGlobal>

#include <cstddef>

// A sink for QoSLines that keeps nothing but the length of what it was given, in code units:
// the writer runs its sections through it once to learn the size of the file before it
// writes the text into a buffer of exactly that size.
class QoSTextSize
{
public:
    void append(QStringView s) { m_size += s.size(); }
    void ascii(const char*, std::size_t n) { m_size += qsizetype(n); }
    // A 64-bit number has at most 19 digits, so the powers of ten below never overflow.
    void number(qint64 n)
    {
        const quint64 magnitude = n < 0 ? 0 - quint64(n) : quint64(n);
        m_size += n < 0 ? 2 : 1;
        for (quint64 power = 10; magnitude >= power; power *= 10)
            ++m_size;
    }
    qsizetype size() const { return m_size; }

private:
    qsizetype m_size = 0;
};
