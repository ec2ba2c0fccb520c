#include "portfield.h"

#include "document/numbers.h"
#include "document/qoserror.h"

#include <cmath>
#include <limits>

namespace {

double leading(QStringView s)
{
    try {
        return Numbers::LeadingValue(s);
    } catch (const QoSError&) {
        return std::numeric_limits<double>::max();
    }
}

// A range end as a whole port number; values beyond 32 bits are clamped.
qint64 rangeEnd(QStringView s)
{
    const double v = std::nearbyint(leading(s));
    return qint64(qBound(-2147483648.0, v, 2147483647.0));
}

} // namespace

PortField::PortField(QObject* parent) : QObject(parent) {}

void PortField::SetPort(const QString& port)
{
    if (port == m_port)
        return;
    m_port = port;
    m_count = Count(m_port);
    changed();
}

qint32 PortField::Count(const QString& port)
{
    // Counted on every keystroke and for every filter read from a file: views, no copies.
    double total = 0;
    for (const QStringView item : QStringView(port).tokenize(u',')) {
        const qsizetype dash = item.indexOf(u'-');
        if (dash < 0 || item.indexOf(u'-', dash + 1) >= 0) {
            total += 1; // a single port, an empty item, or a malformed one with two dashes
            continue;
        }
        const double a = leading(item.left(dash));
        const double b = leading(item.mid(dash + 1));
        total += std::fabs(std::nearbyint(b - a + 1));
    }
    if (total > 2147483647.0)
        return std::numeric_limits<qint32>::max();
    const qint32 n = qint32(total);
    return n == 0 ? 1 : n;
}

PortField::CountLook PortField::Look() const
{
    if (m_count <= 1)
        return CountLook::One;
    return m_count <= 9 ? CountLook::Few : CountLook::Many;
}

qint64 PortField::ExpandedCount() const
{
    qint64 n = 0;
    for (const QString& item : m_port.split(u',')) {
        const QStringList ends = item.split(u'-');
        if (ends.size() == 2)
            n += std::llabs(rangeEnd(ends[1]) - rangeEnd(ends[0])) + 1;
        else
            n += 1;
    }
    return n;
}

QString PortField::PortExt(qint64 index) const
{
    if (index < 0)
        return QString();
    for (const QString& item : m_port.split(u',')) {
        const QStringList ends = item.split(u'-');
        if (ends.size() != 2) {
            if (index == 0)
                return item;
            --index;
            continue;
        }
        const qint64 a = rangeEnd(ends[0]);
        const qint64 b = rangeEnd(ends[1]);
        const qint64 n = std::llabs(b - a) + 1;
        if (index < n)
            return QString::number(b >= a ? a + index : a - index);
        index -= n;
    }
    return QString();
}

QStringList PortField::PortExt() const
{
    QStringList out;
    const qint64 n = ExpandedCount();
    // An expansion is only ever needed for lists a filter can hold; a list standing for
    // millions of ports is never expanded as a whole.
    if (n > 65536 * 2)
        return out;
    for (const QString& item : m_port.split(u',')) {
        const QStringList ends = item.split(u'-');
        if (ends.size() != 2) {
            out << item;
            continue;
        }
        const qint64 a = rangeEnd(ends[0]);
        const qint64 b = rangeEnd(ends[1]);
        if (b >= a)
            for (qint64 p = a; p <= b; ++p)
                out << QString::number(p);
        else
            for (qint64 p = a; p >= b; --p)
                out << QString::number(p);
    }
    return out;
}

PortField::LeaveResult PortField::CheckLeave() const
{
    if (m_count > MaxPorts)
        return LeaveResult::TooManyPorts;
    const double first = leading(m_port);
    if (first < 0 || first > 65535)
        return LeaveResult::OutOfRange;
    return LeaveResult::Ok;
}

bool PortField::AcceptsKey(QChar key)
{
    const char16_t k = key.unicode();
    return (k >= u'0' && k <= u'9') || k == u',' || k == u'-' || k == 8 || k == 24 || k == 3 || k == 22;
}
