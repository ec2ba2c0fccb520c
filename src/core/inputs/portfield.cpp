#include "inputs/portfield.h"

#include "base/numbers.h"
#include "base/qoserror.h"

#include <cmath>
#include <limits>

namespace {

double leading(QStringView s)
{
    return Numbers::TryLeadingValue(s).value_or(std::numeric_limits<double>::max());
}

// A range end: its leading number rounded to 32 bits, halves to even; throws beyond.
qint64 rangeEnd(QStringView s)
{
    return Numbers::RoundToInt32(Numbers::LeadingValue(s));
}

QoSError tooManyPorts(QStringView port)
{
    return QoSError(
        QoSError::Kind::Overflow,
        QStringLiteral("Die Portliste '%1' steht für mehr Ports, als sich zählen lassen.")
            .arg(port.size() > 60 ? port.first(60).toString() + QStringLiteral("…") : port.toString()));
}

} // namespace

PortField::PortField(QObject* parent) : QObject(parent) {}

void PortField::SetPort(const QString& port)
{
    if (port == m_port)
        return;
    m_port = port;
    const std::optional<qint32> n = TryCount(m_port);
    m_countFits = n.has_value();
    if (n)
        m_count = *n;
    changed();
    if (!n)
        throw tooManyPorts(m_port);
}

std::optional<qint32> PortField::TryCount(QStringView port)
{
    // Counted on every keystroke and for every filter read from a file: views, no copies.
    qint64 total = 0;
    for (const QStringView item : port.tokenize(u',')) {
        const qsizetype dash = item.indexOf(u'-');
        if (dash < 0 || item.indexOf(u'-', dash + 1) >= 0) {
            total += 1; // a single port, an empty item, or a malformed one with two dashes
        } else {
            qint64 a = 0;
            qint64 b = 0;
            try {
                a = rangeEnd(item.left(dash));
                b = rangeEnd(item.mid(dash + 1));
            } catch (const QoSError&) {
                return std::nullopt;
            }
            total += std::llabs(b - a + 1);
        }
        if (total > std::numeric_limits<qint32>::max())
            return std::nullopt;
    }
    return total == 0 ? 1 : qint32(total);
}

qint32 PortField::Count(QStringView port)
{
    if (const auto n = TryCount(port))
        return *n;
    throw tooManyPorts(port);
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
        if (ends.size() != 2) {
            n += 1;
            continue;
        }
        try {
            n += std::llabs(rangeEnd(ends[1]) - rangeEnd(ends[0])) + 1;
        } catch (const QoSError&) {
            return -1; // an end beyond 32 bits expands to nothing
        }
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
        qint64 a = 0;
        qint64 b = 0;
        try {
            a = rangeEnd(ends[0]);
            b = rangeEnd(ends[1]);
        } catch (const QoSError&) {
            return QString();
        }
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
    if (n < 0 || n > 65536 * 2)
        return out;
    out.reserve(n);
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
    if (!m_countFits || m_count > MaxPorts)
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
