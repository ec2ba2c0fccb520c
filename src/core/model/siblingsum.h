#pragma once

#include <QList>
#include <QtGlobal>
#include <optional>

class QoSClass;

// The minimums of a group of classes added up in kbit, in the order given: the figure a
// class's own minimum and maximum are judged against, and the "garantiert" of the document
// check's balance lines.
class SiblingSum
{
public:
    explicit SiblingSum(const QList<QoSClass*>& group);

    // As the check button adds: nothing when a minimum, or the sum after any step, leaves
    // 32 bits.
    std::optional<qint32> Checked() const { return m_checked; }
    // The whole sum in 64 bits, so that an overbooking beyond 32 bits can still be named;
    // nothing only when a minimum itself is beyond 32 bits.
    std::optional<qint64> Total() const { return m_total; }

    // The group a class's sibling sum is taken over: the child classes of its parent, or, for
    // a class without a parent, every class of the document whose QoSParent reads "0" and
    // whose direction equals this class's exactly, on whichever page, in creation order.
    static QList<QoSClass*> GroupOf(const QoSClass& c);
    // The classes among a class's children, in their order.
    static QList<QoSClass*> ChildClasses(const QoSClass& parent);

private:
    std::optional<qint32> m_checked;
    std::optional<qint64> m_total;
};
