#include "model/qosclass.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "base/userprompt.h"
#include "inputs/bandwidthfield.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"
#include "model/qosfilter.h"
#include "model/validationpass.h"

#include <QSet>

QoSClass::QoSClass(Document* document, ObjectPage* page, const QString& name)
    : QoSObject(document, page, name)
{
    // The fields start as "0kbit" and priority "0".
    // Edits in the boxes' fields are changes of the class like any let.
    m_min->SetOwnerHook([this] { markChanged(QStringLiteral("QoSMinBandWidth")); });
    m_max->SetOwnerHook([this] { markChanged(QStringLiteral("QoSMaxBandWidth")); });
    m_prio->SetOwnerHook([this] { markChanged(QStringLiteral("QoSPrio")); });
}

void QoSClass::SetClassIdx(int idx)
{
    if (idx == m_classIdx)
        return;
    const int old = m_classIdx;
    m_classIdx = idx;
    m_document->ClassIdxChanged(this, old);
}

QString QoSClass::QoSParent() const
{
    const QoSClass* parent = ParentQoSObject();
    return parent ? QString::number(parent->ClassIdx()) : QStringLiteral("0");
}

void QoSClass::SetQoSParent(const QString& number)
{
    if (QoSClass* parent = m_document->ClassByNumberText(number))
        AddParentQoSObject(parent);
}

QString QoSClass::QoSMinBandWidth() const
{
    return m_min->Bandwidth();
}

void QoSClass::SetQoSMinBandWidth(const QString& bandwidth)
{
    m_min->SetBandwidth(bandwidth);
    markChanged(QStringLiteral("QoSMinBandWidth"));
}

QString QoSClass::QoSMaxBandWidth() const
{
    return m_max->Bandwidth();
}

void QoSClass::SetQoSMaxBandWidth(const QString& bandwidth)
{
    m_max->SetBandwidth(bandwidth);
    markChanged(QStringLiteral("QoSMaxBandWidth"));
}

qint32 QoSClass::QoSMinBandWidthKBit() const
{
    return m_min->kbit();
}

void QoSClass::SetQoSMinBandWidthKBit(qint32 kbit)
{
    m_min->SetKbit(kbit);
    markChanged(QStringLiteral("QoSMinBandWidth"));
}

qint32 QoSClass::QoSMaxBandWidthKBit() const
{
    return m_max->kbit();
}

void QoSClass::SetQoSMaxBandWidthKBit(qint32 kbit)
{
    m_max->SetKbit(kbit);
    markChanged(QStringLiteral("QoSMaxBandWidth"));
}

void QoSClass::SetQoSDirection(const QString& direction)
{
    m_direction = direction;
    markChanged(QStringLiteral("QoSDirection"));
}

void QoSClass::SetQoSPrio(const QString& prio)
{
    if (prio == m_prio->Value())
        markChanged(QStringLiteral("QoSPrio"));
    else
        m_prio->SetValue(prio); // the owner hook marks the change
}

void QoSClass::SetDefaultClass(bool value)
{
    if (value && m_page) {
        for (QoSObject* o : m_page->ContainedObjects())
            if (auto* other = qobject_cast<QoSClass*>(o); other && other != this && other->DefaultClass())
                other->SetDefaultClass(false);
    }
    m_defaultClass = value;
    markChanged(QStringLiteral("DefaultClass"));
    if (value) {
        if (m_direction == u"down")
            m_document->Common1()->SetQoSInternetDefaultDown(QString::number(m_classIdx));
        else if (m_direction == u"up")
            m_document->Common1()->SetQoSInternetDefaultUp(QString::number(m_classIdx));
    }
}

QStringList QoSClass::ChildNames() const
{
    QStringList out;
    for (const QoSObject* o : m_children)
        out << o->Name();
    return out;
}

void QoSClass::AddChild(QoSObject* child)
{
    // One object is in the list only once.
    if (!child || m_children.contains(child))
        return;
    m_children << child;
    ++(child->IsClass() ? m_childClasses : m_childFilters);
}

void QoSClass::RemoveChildQoSQbject(QoSObject* child)
{
    if (child && m_children.removeOne(child))
        --(child->IsClass() ? m_childClasses : m_childFilters);
}

void QoSClass::AddParentQoSObject(const QString& name)
{
    AddParentQoSObject(qobject_cast<QoSClass*>(m_document->Object(name)));
}

void QoSClass::AddParentQoSObject(QoSClass* parent)
{
    if (!parent || parent->GetObjectPage() != m_page)
        return;
    // A class with filters takes no sub class, and a class never goes below itself or below
    // one of its own descendants: such links are refused without a word.
    if (parent->HasFilters() || parent == this || IsInDownTree(parent))
        return;
    LinkUnder(parent, QStringLiteral("QoSParent"));
}

QoSClass* QoSClass::TopClass()
{
    QoSClass* c = this;
    // A guard against a cycle that a broken document could hold.
    for (int depth = 0; depth < 10000; ++depth) {
        QoSClass* parent = c->ParentQoSObject();
        if (!parent)
            break;
        c = parent;
    }
    return c;
}

int QoSClass::Level() const
{
    int level = 0;
    // Bounded like TopClass: a broken chain of links must not hang.
    for (const QoSClass* c = ParentQoSObject(); c && level < 10000; c = c->ParentQoSObject())
        ++level;
    return level;
}

int QoSClass::SubtreeDepth(const QoSClass* without) const
{
    // Level by level, so that a deep chain costs no recursion.
    int depth = 0;
    QList<const QoSClass*> level{this};
    QSet<const QoSClass*> seen{this};
    while (true) {
        QList<const QoSClass*> next;
        for (const QoSClass* c : std::as_const(level)) {
            if (!c->HasChildClasses())
                continue;
            for (QoSObject* child : c->ChildQoSObjects())
                if (auto* sub = qobject_cast<const QoSClass*>(child);
                    sub && sub != without && !seen.contains(sub)) {
                    seen.insert(sub);
                    next << sub;
                }
        }
        if (next.isEmpty())
            return depth;
        ++depth;
        level = std::move(next);
    }
}

bool QoSClass::HasChildClasses() const
{
    return m_childClasses > 0;
}

bool QoSClass::HasFilters() const
{
    return m_childFilters > 0;
}

bool QoSClass::IsInDownTree(const QoSObject* object) const
{
    if (m_children.isEmpty())
        return false;
    // Iterative walk; the links by name cannot form a cycle, but a broken one must not hang.
    QList<const QoSClass*> pending{this};
    QSet<const QoSClass*> seen{this};
    while (!pending.isEmpty()) {
        const QoSClass* c = pending.takeFirst();
        for (QoSObject* child : c->ChildQoSObjects()) {
            if (child == object)
                return true;
            if (auto* sub = qobject_cast<const QoSClass*>(child); sub && !seen.contains(sub)) {
                seen.insert(sub);
                pending << sub;
            }
        }
    }
    return false;
}

qint32 QoSClass::Limit() const
{
    if (const std::optional<qint32> limit = TryLimit())
        return *limit;
    throw QoSError::overflow();
}

std::optional<qint32> QoSClass::TryLimit() const
{
    if (const QoSClass* parent = ParentQoSObject())
        return parent->MaxField()->TryKbit();
    const std::optional<double> line =
        Numbers::TryLeadingValue(m_document->Common1()->LineBandwidth(m_direction));
    return line ? Numbers::TryTruncateToInt32(*line) : std::nullopt;
}

qint32 QoSClass::SiblingMinimumSum() const
{
    ValidationPass pass;
    return pass.SiblingMinimumSum(*this);
}

void QoSClass::Validate(bool recursive)
{
    ValidationPass pass;
    Validate(recursive, pass);
}

void QoSClass::Validate(bool recursive, ValidationPass& pass)
{
    const qint32 limit = Limit();
    ValidateAgainst(limit, pass.SiblingMinimumSum(*this));
    if (recursive)
        for (QoSObject* o : ChildQoSObjects())
            if (auto* c = qobject_cast<QoSClass*>(o))
                c->Validate(true, pass);
}

void QoSClass::ValidateAgainst(qint32 limit, qint32 siblingSum)
{
    m_min->SetIsValid(QoSMinBandWidthKBit() >= 1 && siblingSum <= limit);
    // The maximum is compared by the number the user entered, not by its kbit value.
    const double entered = Numbers::LeadingValue(m_max->Value());
    m_max->SetIsValid(entered > 0 && entered <= limit);
}

bool QoSClass::CheckCommand()
{
    try {
        Validate(true);
        return true;
    } catch (const QoSError& error) {
        m_document->prompt().Message(error.message(), UserPrompt::Icon::Warning);
        return false;
    }
}

void QoSClass::SetSelected(bool selected)
{
    QoSObject::SetSelected(selected);
}

void QoSClass::EditDelete()
{
    // The children stay on the page without their connectors; their parent name no longer
    // resolves once this class is gone, so they read as main classes or unlinked filters.
    const QList<QoSObject*> children = m_children;
    for (QoSObject* child : children)
        child->RemoveTopConnector();
    for (QoSObject* child : children)
        child->SetParentName(QString());
    m_children.clear();
    m_childClasses = m_childFilters = 0;
    if (QoSClass* parent = ParentQoSObject())
        parent->RemoveChildQoSQbject(this);
    if (m_page)
        m_page->Remove(this); // deletes this object: nothing may follow
}
