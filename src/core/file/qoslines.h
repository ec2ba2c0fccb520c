#pragma once

#include <QStringView>
#include <QtGlobal>

#include <cstddef>

// The shapes of the lines of a qos.txt, written into a sink: a text buffer, or a counter that
// only adds up their length. Every line of the file goes through these few functions, so the
// counter and the buffer can never disagree about what a line is.
//
// A sink offers append(QStringView) for texts, ascii(const char*, std::size_t) for the fixed
// names and number(qint64) for decimal numbers.
template <typename Sink> class QoSLines
{
public:
    explicit QoSLines(Sink& sink) : m_out(sink) {}

    template <std::size_t N> void literal(const char (&s)[N]) { m_out.ascii(s, N - 1); }
    void text(QStringView s) { m_out.append(s); }
    void number(qint64 n) { m_out.number(n); }
    void end() { literal("\r\n"); }
    void line(QStringView s)
    {
        text(s);
        end();
    }
    // NAME='value': an optional "#", a stem such as QOS_CLASS_ with its number, and a suffix.
    template <std::size_t N, std::size_t M>
    void setting(const char (&stem)[N], qint64 n, const char (&suffix)[M], QStringView value)
    {
        name(stem, n, suffix);
        text(value);
        literal("'\r\n");
    }
    template <std::size_t N, std::size_t M>
    void numberSetting(const char (&stem)[N], qint64 n, const char (&suffix)[M], qint64 value)
    {
        name(stem, n, suffix);
        number(value);
        literal("'\r\n");
    }
    template <std::size_t N, std::size_t M>
    void cell(const char (&stem)[N], qint64 n, const char (&suffix)[M], qint64 x, qint64 y)
    {
        name(stem, n, suffix);
        number(x);
        literal(",");
        number(y);
        literal("'\r\n");
    }

private:
    template <std::size_t N, std::size_t M>
    void name(const char (&stem)[N], qint64 n, const char (&suffix)[M])
    {
        literal(stem);
        number(n);
        literal(suffix);
        literal("='");
    }

    Sink& m_out;
};
