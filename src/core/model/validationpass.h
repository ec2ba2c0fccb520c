#pragma once

#include <QHash>
#include <QString>

class Document;
class ObjectPage;
class QoSClass;

// One run of the bandwidth check over a tree or the whole document. The sibling sums do not
// change while the check only colours fields, so each is added up once per run: checking
// every main class of a large document would otherwise add up all main classes again for
// each of them.
class ValidationPass
{
public:
    // The minimums of the class and its siblings in kbit, in creation order with a 32-bit
    // overflow check at each step; throws the overflow each time it is asked for.
    qint32 SiblingMinimumSum(const QoSClass& c);
    // Runs the check button of every main class of a page, each tree on its own: an overflow
    // ends that tree's run only, and the flags it had not reached stay as they were.
    void ValidateMainClasses(const ObjectPage& page);

private:
    struct Sum
    {
        qint32 value = 0;
        bool overflow = false;
    };
    Sum compute(const QoSClass& c) const;

    QHash<const QoSClass*, Sum> m_byParent;
    QHash<QString, Sum> m_mainByDirection;
};
