#include "check/validationwatcher.h"

#include "base/qoserror.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/siblingsum.h"

#include <QList>

#include <utility>

ValidationWatcher::ValidationWatcher(ObjectPage* page, QObject* parent)
    : QObject(parent), m_page(page), m_document(page->document())
{
    connect(m_page, &ObjectPage::objectAdded, this, &ValidationWatcher::watch);
    connect(m_document, &Document::objectRemoved, this, &ValidationWatcher::removed);
    connect(m_document, &Document::cleared, this, [this] {
        m_places.clear();
        m_mainClasses.clear();
        m_dirtyParents.clear();
        m_dirtyDirections.clear();
    });
    // The line speeds are the limits of the main classes. The common page's editors write
    // into the fields directly, so the fields are heard as well as the lets.
    QoSCommon* common = m_document->Common1();
    connect(common, &QoSCommon::propertyChanged, this, [this](const QString& name) {
        if (name == u"QoSInternetBandDown" || name == u"QoSInternetBandUp")
            markAll();
    });
    for (BandwidthField* field : {common->BandDownField(), common->BandUpField()})
        connect(field, &BandwidthField::Change, this, &ValidationWatcher::markAll);
    for (QoSObject* o : m_page->ContainedObjects())
        watch(o);
}

void ValidationWatcher::watch(QoSObject* object)
{
    auto* c = qobject_cast<QoSClass*>(object);
    if (!c)
        return; // filters take no part in a bandwidth check
    connect(c, &QoSObject::propertyChanged, this,
            [this, c](const QString& property) { propertyChanged(c, property); });
    connect(c, &QoSObject::parentChanged, this, [this, c](const QString& name) { parentChanged(c, name); });
    const Place place{c->ParentName(), c->QoSDirection(), c->Sequence()};
    m_places.insert(c->Name(), place);
    placeMainClass(c, Place{}, place);
    markPlace(place);
    if (c->HasChildClasses())
        m_dirtyParents.insert(c->Name());
}

void ValidationWatcher::propertyChanged(QoSClass* c, const QString& property)
{
    Place& place = m_places[c->Name()];
    if (property == u"QoSMinBandWidth") {
        markPlace(place);
    } else if (property == u"QoSMaxBandWidth" || property == u"Caption") {
        // Its own maximum is checked against its limit; its children are limited by it. The
        // caption names the class in the explanations of its group and of its children.
        markPlace(place);
        m_dirtyParents.insert(c->Name());
        schedule();
    } else if (property == u"QoSDirection") {
        const Place old = place;
        markPlace(place);
        place.direction = c->QoSDirection();
        placeMainClass(c, old, place);
        markPlace(place);
    }
}

void ValidationWatcher::parentChanged(QoSClass* c, const QString& parentName)
{
    Place& place = m_places[c->Name()];
    const Place old = place;
    markPlace(place);
    place.parent = parentName;
    place.direction = c->QoSDirection();
    placeMainClass(c, old, place);
    markPlace(place);
}

void ValidationWatcher::placeMainClass(QoSClass* c, const Place& old, const Place& now)
{
    m_mainClasses[old.direction].remove(old.sequence);
    if (!c->ParentQoSObject())
        m_mainClasses[now.direction].insert(now.sequence, c);
}

void ValidationWatcher::removed(const QString& name)
{
    const auto it = m_places.constFind(name);
    if (it == m_places.cend())
        return;
    markPlace(*it);
    m_mainClasses[it->direction].remove(it->sequence);
    m_dirtyParents.remove(name);
    m_places.erase(it);
}

void ValidationWatcher::markPlace(const Place& place)
{
    // A parent that no longer resolves leaves the class among the main classes.
    auto* parent = qobject_cast<QoSClass*>(m_document->Object(place.parent));
    if (!place.parent.isEmpty() && parent && parent->GetObjectPage() == m_page)
        m_dirtyParents.insert(place.parent);
    else
        m_dirtyDirections.insert(place.direction);
    schedule();
}

void ValidationWatcher::markAll()
{
    for (const Place& place : std::as_const(m_places)) {
        m_dirtyDirections.insert(place.direction);
        if (!place.parent.isEmpty())
            m_dirtyParents.insert(place.parent);
    }
    schedule();
}

void ValidationWatcher::schedule()
{
    if (m_scheduled)
        return;
    m_scheduled = true;
    QMetaObject::invokeMethod(this, &ValidationWatcher::Flush, Qt::QueuedConnection);
}

void ValidationWatcher::Flush()
{
    m_scheduled = false;
    const QSet<QString> directions = std::exchange(m_dirtyDirections, {});
    const QSet<QString> parents = std::exchange(m_dirtyParents, {});
    for (const QString& direction : directions)
        checkMainClasses(direction);
    for (const QString& name : parents)
        if (auto* parent = qobject_cast<QoSClass*>(m_document->Object(name));
            parent && parent->GetObjectPage() == m_page)
            checkChildren(parent);
}

namespace {

// The sibling sum as the check button adds it, then each class's verdict. An overflow in the
// sum leaves the whole group as it was, one in a single class leaves that class as it was: the
// flags a check had not reached stay.
void checkGroup(const QList<QoSClass*>& group)
{
    const std::optional<qint32> sum = SiblingSum(group).Checked();
    if (!sum)
        return;
    for (QoSClass* c : group) {
        try {
            c->ValidateAgainst(c->Limit(), *sum);
        } catch (const QoSError&) {
        }
    }
}

} // namespace

void ValidationWatcher::checkMainClasses(const QString& direction)
{
    // The same group as a main class's sibling sum: the classes that read parent "0" and have
    // exactly this direction, in creation order. A page holds the classes of its direction.
    QList<QoSClass*> group;
    for (const QPointer<QoSClass>& c : std::as_const(m_mainClasses[direction]))
        if (c && c->QoSDirection() == direction && c->QoSParent() == u"0")
            group << c;
    checkGroup(group);
    emit groupChecked(group);
}

void ValidationWatcher::checkChildren(QoSClass* parent)
{
    const QList<QoSClass*> group = SiblingSum::ChildClasses(*parent);
    checkGroup(group);
    emit groupChecked(group);
}
