#pragma once

#include <QHash>
#include <QString>
#include <optional>

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
    // The SiblingSum of the class as the check button adds it; nothing when it leaves 32 bits.
    std::optional<qint32> TrySiblingMinimumSum(const QoSClass& c);
    // The same, throwing the overflow each time it is asked for.
    qint32 SiblingMinimumSum(const QoSClass& c);
    // Runs the check button of every main class of a page, each tree on its own: an overflow
    // ends that tree's run only, and the flags it had not reached stay as they were.
    void ValidateMainClasses(const ObjectPage& page);
    // The same for the down page, then the up page.
    void ValidateDocument(const Document& doc);

private:
    // Nothing for a sum beyond 32 bits.
    QHash<const QoSClass*, std::optional<qint32>> m_byParent;
    QHash<QString, std::optional<qint32>> m_mainByDirection;
};
