#include "model/siblingsum.h"

#include "model/document.h"
#include "model/qosclass.h"

#include <limits>

SiblingSum::SiblingSum(const QList<QoSClass*>& group)
{
    qint64 total = 0;
    bool fits = true;
    for (const QoSClass* c : group) {
        const std::optional<qint32> minimum = c->MinField()->TryKbit();
        if (!minimum)
            return; // neither sum can be named
        total += *minimum;
        fits = fits && total >= std::numeric_limits<qint32>::min() &&
               total <= std::numeric_limits<qint32>::max();
    }
    m_total = total;
    if (fits)
        m_checked = qint32(total);
}

QList<QoSClass*> SiblingSum::GroupOf(const QoSClass& c)
{
    if (const QoSClass* parent = c.ParentQoSObject())
        return ChildClasses(*parent);
    QList<QoSClass*> group;
    for (QoSObject* o : c.document()->Objects())
        if (auto* other = qobject_cast<QoSClass*>(o);
            other && other->QoSParent() == u"0" && other->QoSDirection() == c.QoSDirection())
            group << other;
    return group;
}

QList<QoSClass*> SiblingSum::ChildClasses(const QoSClass& parent)
{
    QList<QoSClass*> children;
    for (QoSObject* o : parent.ChildQoSObjects())
        if (auto* c = qobject_cast<QoSClass*>(o))
            children << c;
    return children;
}
