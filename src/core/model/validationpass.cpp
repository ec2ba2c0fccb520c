#include "model/validationpass.h"

#include "base/qoserror.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/siblingsum.h"

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

std::optional<qint32> ValidationPass::TrySiblingMinimumSum(const QoSClass& c)
{
    auto group = [&c] { return SiblingSum(SiblingSum::GroupOf(c)).Checked(); };
    if (const QoSClass* parent = c.ParentQoSObject()) {
        auto it = m_byParent.find(parent);
        if (it == m_byParent.end())
            it = m_byParent.insert(parent, group());
        return *it;
    }
    auto it = m_mainByDirection.find(c.QoSDirection());
    if (it == m_mainByDirection.end())
        it = m_mainByDirection.insert(c.QoSDirection(), group());
    return *it;
}

qint32 ValidationPass::SiblingMinimumSum(const QoSClass& c)
{
    if (const auto sum = TrySiblingMinimumSum(c))
        return *sum;
    throw QoSError::overflow();
}

void ValidationPass::ValidateDocument(const Document& doc)
{
    ValidateMainClasses(*doc.Down1());
    ValidateMainClasses(*doc.Up1());
}
