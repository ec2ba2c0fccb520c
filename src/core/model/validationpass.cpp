#include "model/validationpass.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"

ValidationPass::Sum ValidationPass::compute(const QoSClass& c) const
{
    Sum sum;
    try {
        if (const QoSClass* parent = c.ParentQoSObject()) {
            for (QoSObject* o : parent->ChildQoSObjects())
                if (auto* sibling = qobject_cast<QoSClass*>(o))
                    sum.value = Numbers::CheckedAdd(sum.value, sibling->QoSMinBandWidthKBit());
        } else {
            // Every main class of the direction, on whichever page, as the parent number reads.
            for (QoSObject* o : c.document()->Objects())
                if (auto* other = qobject_cast<QoSClass*>(o);
                    other && other->QoSParent() == u"0" && other->QoSDirection() == c.QoSDirection())
                    sum.value = Numbers::CheckedAdd(sum.value, other->QoSMinBandWidthKBit());
        }
    } catch (const QoSError&) {
        sum.overflow = true;
    }
    return sum;
}

void ValidationPass::ValidateMainClasses(const ObjectPage& page)
{
    for (QoSObject* o : page.ContainedObjects()) {
        auto* c = qobject_cast<QoSClass*>(o);
        if (!c || c->ParentQoSObject())
            continue;
        try {
            c->Validate(true, *this);
        } catch (const QoSError&) {
        }
    }
}

qint32 ValidationPass::SiblingMinimumSum(const QoSClass& c)
{
    Sum sum;
    if (const QoSClass* parent = c.ParentQoSObject()) {
        auto it = m_byParent.find(parent);
        if (it == m_byParent.end())
            it = m_byParent.insert(parent, compute(c));
        sum = *it;
    } else {
        auto it = m_mainByDirection.find(c.QoSDirection());
        if (it == m_mainByDirection.end())
            it = m_mainByDirection.insert(c.QoSDirection(), compute(c));
        sum = *it;
    }
    if (sum.overflow)
        throw QoSError::overflow();
    return sum.value;
}
