#pragma once

#include "base/watched.h"

#include <QObject>

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

// The value behind the port input: a list such as "21,80,6000-6010". Every single port
// becomes one filter entry in the file, so the list is counted as it changes.
class PortField : public QObject
{
    Q_OBJECT
    TARNWICK_WATCHED
public:
    enum class CountLook { One, Few, Many }; // 1, 2 to 9, above 9
    enum class LeaveResult { Ok, TooManyPorts, OutOfRange };
    enum class SetResult { Set, TooManyPorts };

    explicit PortField(QObject* parent = nullptr);

    QString Port() const { return m_port; }
    // Sets the list and counts it, as a file is read. A list that stands for more than 32
    // bits of ports keeps its text but not its count: the count stays as it was, CountFits()
    // turns false, and an overflow QoSError is thrown after the change was announced (the
    // import ends there).
    void SetPort(const QString& port);
    // The same as the user types: such a list is refused as "Zuviele Ports" and nothing
    // changes.
    SetResult TrySetPort(const QString& port);

    // Number of single ports the list stands for. A reversed range a-b counts two less than
    // it expands to; kept as it is.
    qint32 count() const { return m_count; }
    bool CountFits() const { return m_countFits; }
    CountLook Look() const;

    // The list expanded into single ports, in list order.
    QStringList PortExt() const;
    // Number of entries that PortExt yields.
    qint64 ExpandedCount() const;

    // Check when the focus leaves the box.
    LeaveResult CheckLeave() const;
    // Only the first port of a list is held to 0..65535.
    static bool FirstPortInRange(QStringView port);

    // The count of a list: the ends of a range are whole numbers, rounded as everywhere, so
    // that a forward range counts exactly the ports it expands to. Throws an overflow QoSError
    // when an end or the count does not fit into 32 bits; TryCount gives nothing then.
    static qint32 Count(QStringView port);
    static std::optional<qint32> TryCount(QStringView port);
    static bool AcceptsKey(QChar key);
    static QString TooManyPortsText() { return QStringLiteral("Zuviele Ports"); }
    static QString OutOfRangeText() { return QStringLiteral("Nur werte von 0 bis 65535 sind erlaubt!"); }
    static constexpr int MaxPorts = 20;

    // The owner of the value (a class or a filter) hears of every change before the views,
    // without a signal connection per object.
    void SetOwnerHook(std::function<void()> hook) { m_ownerHook = std::move(hook); }

signals:
    void Change();

private:
    QString m_port;
    qint32 m_count = 1;
    bool m_countFits = true;

    void changed()
    {
        if (m_ownerHook)
            m_ownerHook();
        if (watched())
            emit Change();
    }
    std::function<void()> m_ownerHook;
};
