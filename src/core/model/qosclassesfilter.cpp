#include "model/qosclassesfilter.h"

#include "model/qosclass.h"

void QoSClassesFilter::Filter(const std::optional<QString>& direction, const std::optional<QString>& parent,
                              const QList<QoSObject*>& objects)
{
    for (QoSObject* o : objects) {
        auto* c = qobject_cast<QoSClass*>(o);
        if (!c)
            continue;
        if (direction && *direction != c->QoSDirection())
            continue;
        if (parent && *parent != c->QoSParent())
            continue;
        m_items << c;
    }
}

void QoSClassesFilter::Remove(int index)
{
    if (index >= 0 && index < m_items.size())
        m_items.removeAt(index);
}
