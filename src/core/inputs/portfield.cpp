#include "inputs/portfield.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "inputs/portlist.h"

#include <limits>

namespace {

QoSError tooManyPorts(QStringView port)
{
    return QoSError(
        QoSError::Kind::Overflow,
        QStringLiteral("Die Portliste '%1' steht für mehr Ports, als sich zählen lassen.")
            .arg(port.size() > 60 ? port.first(60).toString() + QStringLiteral("…") : port.toString()));
}

// An expansion is only ever needed for lists a filter can hold; a list standing for millions
// of ports is never expanded as a whole.
constexpr qint64 MaxExpansion = 65536 * 2;

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

PortField::SetResult PortField::TrySetPort(const QString& port)
{
    const std::optional<qint32> n = TryCount(port);
    if (!n)
        return SetResult::TooManyPorts;
    if (port == m_port)
        return SetResult::Set;
    m_port = port;
    m_count = *n;
    m_countFits = true;
    changed();
    return SetResult::Set;
}

std::optional<qint32> PortField::TryCount(QStringView port)
{
    // Counted on every keystroke and for every filter read from a file: views, no copies.
    qint64 total = 0;
    for (const PortList::Item& item : PortList(port)) {
        if (!item.EndsFit())
            return std::nullopt;
        total += item.Counted();
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
    for (const PortList::Item& item : PortList(m_port)) {
        if (!item.EndsFit())
            return -1;
        n += item.Expanded();
    }
    return n;
}

QStringList PortField::PortExt() const
{
    QStringList out;
    const qint64 n = ExpandedCount();
    if (n < 0 || n > MaxExpansion)
        return out;
    out.reserve(n);
    for (const PortList::Item& item : PortList(m_port))
        for (qint64 i = 0; i < item.Expanded(); ++i)
            out << item.Entry(i);
    return out;
}

bool PortField::FirstPortInRange(QStringView port)
{
    // Compared as a double: a port of twenty digits fits no integer.
    const std::optional<double> first = Numbers::TryLeadingValue(port);
    return first && *first >= 0 && *first <= 65535;
}

PortField::LeaveResult PortField::CheckLeave() const
{
    if (!m_countFits || m_count > MaxPorts)
        return LeaveResult::TooManyPorts;
    if (!FirstPortInRange(m_port))
        return LeaveResult::OutOfRange;
    return LeaveResult::Ok;
}

bool PortField::AcceptsKey(QChar key)
{
    const char16_t k = key.unicode();
    return (k >= u'0' && k <= u'9') || k == u',' || k == u'-' || k == 8 || k == 24 || k == 3 || k == 22;
}
