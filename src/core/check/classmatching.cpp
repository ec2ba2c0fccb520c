#include "classmatching.h"

#include "check/siblingpairing.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosfilter.h"

namespace {

// Separators no value of a box can hold, so that two different contents never read alike.
constexpr QChar Field(u'\x1f');
constexpr QChar Open(u'\x1c');
constexpr QChar Close(u'\x1d');

} // namespace

ClassMatching::ClassMatching(const ObjectPage& oldPage, const ObjectPage& newPage)
    : m_oldPage(oldPage), m_newPage(newPage)
{
    m_pairs.append({nullptr, nullptr});
    pairSiblings(m_pairs, false);
    for (;;) {
        if (pairMoves())
            continue;
        const qsizetype before = m_pairs.size();
        pairSiblings(m_pairs, true);
        if (m_pairs.size() == before)
            break;
    }
}

QList<const QoSClass*> ClassMatching::MainClasses(const ObjectPage& page)
{
    QList<const QoSClass*> classes;
    for (const QoSObject* o : page.ContainedObjects()) {
        if (auto* c = qobject_cast<const QoSClass*>(o); c && !c->ParentQoSObject())
            classes.append(c);
    }
    return classes;
}

QList<const QoSClass*> ClassMatching::ChildClasses(const QoSClass& c)
{
    QList<const QoSClass*> classes;
    for (const QoSObject* o : c.ChildQoSObjects()) {
        if (auto* child = qobject_cast<const QoSClass*>(o))
            classes.append(child);
    }
    return classes;
}

QList<const QoSFilter*> ClassMatching::Filters(const QoSClass& c)
{
    QList<const QoSFilter*> filters;
    for (const QoSObject* o : c.ChildQoSObjects()) {
        if (auto* f = qobject_cast<const QoSFilter*>(o))
            filters.append(f);
    }
    return filters;
}

bool ClassMatching::Unnamed(const QoSClass& c)
{
    return c.Caption() == QStringLiteral("Class ") + QString::number(c.ClassIdx());
}

QString ClassMatching::Content(const QoSFilter& f)
{
    return QStringList{f.QoSIP(), f.QoSPort(), f.QoSType(), f.QoSOption()}.join(Field);
}

QString ClassMatching::content(const QoSClass& c)
{
    if (const auto it = m_content.constFind(&c); it != m_content.cend())
        return *it;
    QString text = QStringList{c.QoSMinBandWidth(), c.QoSMaxBandWidth(), c.QoSPrio(),
                               c.DefaultClass() ? QStringLiteral("1") : QStringLiteral("0")}
                       .join(Field);
    for (const QoSFilter* f : Filters(c))
        text += Open + f->Caption() + Field + Content(*f) + Close;
    // A sub class's made-up caption is its number, and numbers are no content.
    for (const QoSClass* child : ChildClasses(c))
        text += Open + (Unnamed(*child) ? QString() : child->Caption()) + Field + content(*child) + Close;
    m_content.insert(&c, text);
    return text;
}

QList<const QoSClass*> ClassMatching::freeChildren(const QoSClass* parent, bool old) const
{
    const QList<const QoSClass*> all =
        parent ? ChildClasses(*parent) : MainClasses(old ? m_oldPage : m_newPage);
    QList<const QoSClass*> free;
    for (const QoSClass* c : all) {
        if (!(old ? m_newFor.contains(c) : m_oldFor.contains(c)))
            free.append(c);
    }
    return free;
}

void ClassMatching::link(const QoSClass* o, const QoSClass* n)
{
    m_newFor.insert(o, n);
    m_oldFor.insert(n, o);
    m_pairs.append(Pair{o, n});
}

void ClassMatching::pairSiblings(QList<Pair> queue, bool late)
{
    using Rule = SiblingPairing::Rule;
    const QList<Rule> early{Rule::Caption, Rule::UnnamedContent, Rule::UnnamedCaption};
    const QList<Rule> lateRules{Rule::Content, Rule::UnnamedInOrder};
    // The pairs given take the rules asked for; what pairs on the way is followed down by the
    // early rules.
    qsizetype lateCount = late ? queue.size() : 0;
    while (!queue.isEmpty()) {
        const Pair parents = queue.takeFirst();
        const bool lateHere = lateCount-- > 0;
        const QList<const QoSClass*> olds = freeChildren(parents.first, true);
        const QList<const QoSClass*> news = freeChildren(parents.second, false);
        if (olds.isEmpty() || news.isEmpty())
            continue;
        const auto items = [this](const QList<const QoSClass*>& classes) {
            QList<SiblingPairing::Item> list;
            for (const QoSClass* c : classes)
                list.append({c->Caption(), Unnamed(*c), content(*c)});
            return list;
        };
        SiblingPairing pairing(items(olds), items(news));
        for (const Rule rule : lateHere ? lateRules : early) {
            for (const auto& [i, j] : pairing.Pair(rule)) {
                link(olds[i], news[j]);
                queue.append(Pair{olds[i], news[j]});
            }
        }
    }
}

bool ClassMatching::pairMoves()
{
    const auto byCaption = [](const ObjectPage& page) {
        QHash<QString, QList<const QoSClass*>> map;
        for (const QoSObject* o : page.ContainedObjects()) {
            if (auto* c = qobject_cast<const QoSClass*>(o))
                map[c->Caption()].append(c);
        }
        return map;
    };
    const QHash<QString, QList<const QoSClass*>> olds = byCaption(m_oldPage);
    const QHash<QString, QList<const QoSClass*>> news = byCaption(m_newPage);
    QList<Pair> moved;
    // In the new page's order, so that what follows is the same on every run.
    for (const QoSObject* o : m_newPage.ContainedObjects()) {
        auto* n = qobject_cast<const QoSClass*>(o);
        if (!n || m_oldFor.contains(n) || news.value(n->Caption()).size() != 1)
            continue;
        const QList<const QoSClass*> candidates = olds.value(n->Caption());
        if (candidates.size() == 1 && !m_newFor.contains(candidates[0])) {
            link(candidates[0], n);
            moved.append(Pair{candidates[0], n});
        }
    }
    pairSiblings(moved, false);
    return !moved.isEmpty();
}
