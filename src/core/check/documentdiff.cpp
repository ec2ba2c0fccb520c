#include "documentdiff.h"

#include "check/classmatching.h"
#include "check/siblingpairing.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"

namespace {

struct Field
{
    const char16_t* field;
    const char16_t* label;
};

const Field ClassFields[] = {{u"min", u"Min"}, {u"max", u"Max"}, {u"prio", u"Prio"}};
const Field FilterFields[] = {
    {u"filterType", u"Typ"}, {u"ip", u"Adresse"}, {u"port", u"Ports"}, {u"option", u"Option"}};

QStringList values(const QoSClass& c)
{
    return {c.QoSMinBandWidth(), c.QoSMaxBandWidth(), c.QoSPrio()};
}

QStringList values(const QoSFilter& f)
{
    return {f.QoSType(), f.QoSIP(), f.QoSPort(), f.QoSOption()};
}

// Every field whose values differ; with one side missing, every field.
template <size_t N>
QList<DiffChange> changes(const Field (&fields)[N], const QStringList& olds, const QStringList& news)
{
    QList<DiffChange> list;
    for (size_t i = 0; i < N; ++i) {
        const QString o = olds.isEmpty() ? QString() : olds[qsizetype(i)];
        const QString n = news.isEmpty() ? QString() : news[qsizetype(i)];
        if (o != n || olds.isEmpty() || news.isEmpty())
            list.append({QString::fromUtf16(fields[i].field), QString::fromUtf16(fields[i].label), o, n});
    }
    return list;
}

// The caption, and which of several siblings of that caption the box is.
QString numbered(const QString& caption, qsizetype index, qsizetype count)
{
    return count > 1 ? caption + QStringLiteral(" [%1]").arg(index + 1) : caption;
}

QString classLabel(const QoSClass& c)
{
    const QoSClass* parent = c.ParentQoSObject();
    const QList<const QoSClass*> siblings =
        parent ? ClassMatching::ChildClasses(*parent) : ClassMatching::MainClasses(*c.GetObjectPage());
    qsizetype index = 0;
    qsizetype count = 0;
    for (const QoSClass* s : siblings) {
        if (s->Caption() != c.Caption())
            continue;
        if (s == &c)
            index = count;
        ++count;
    }
    return numbered(c.Caption(), index, count);
}

QStringList classPath(const QoSClass& c)
{
    QStringList path;
    for (const QoSClass* k = &c; k; k = k->ParentQoSObject())
        path.prepend(classLabel(*k));
    return path;
}

// A filter without a caption is named by its place among the class's filters without one.
QStringList filterPath(const QoSFilter& f)
{
    const QoSClass& parent = *f.ParentQoSObject();
    qsizetype index = 0;
    qsizetype count = 0;
    for (const QoSFilter* s : ClassMatching::Filters(parent)) {
        if (s->Caption() != f.Caption())
            continue;
        if (s == &f)
            index = count;
        ++count;
    }
    return classPath(parent) << (f.Caption().isEmpty() ? QStringLiteral("Filter %1").arg(index + 1)
                                                       : numbered(f.Caption(), index, count));
}

const QoSClass* defaultClass(const ObjectPage& page)
{
    for (const QoSObject* o : page.ContainedObjects()) {
        if (auto* c = qobject_cast<const QoSClass*>(o); c && c->DefaultClass())
            return c;
    }
    return nullptr;
}

QList<const QoSClass*> treeOrder(const ObjectPage& page)
{
    QList<const QoSClass*> order = ClassMatching::MainClasses(page);
    std::reverse(order.begin(), order.end());
    QList<const QoSClass*> result;
    while (!order.isEmpty()) {
        const QoSClass* c = order.takeLast();
        result.append(c);
        const QList<const QoSClass*> children = ClassMatching::ChildClasses(*c);
        for (auto it = children.crbegin(); it != children.crend(); ++it)
            order.append(*it);
    }
    return result;
}

} // namespace

DocumentDiff::DocumentDiff(const Document& oldDoc, const Document& newDoc)
{
    const ClassMatching down(*oldDoc.Down1(), *newDoc.Down1());
    const ClassMatching up(*oldDoc.Up1(), *newDoc.Up1());
    compareCommon(oldDoc, newDoc, down, up);
    comparePage(QStringLiteral("down"), *oldDoc.Down1(), *newDoc.Down1(), down);
    comparePage(QStringLiteral("up"), *oldDoc.Up1(), *newDoc.Up1(), up);
}

QStringList DocumentDiff::Lines() const
{
    QStringList lines;
    for (const DiffEntry& e : m_entries)
        lines.append(e.Line());
    return lines;
}

void DocumentDiff::compareCommon(const Document& oldDoc, const Document& newDoc, const ClassMatching& down,
                                 const ClassMatching& up)
{
    const QoSCommon& o = *oldDoc.Common1();
    const QoSCommon& n = *newDoc.Common1();
    const auto compare = [this](const char16_t* field, const char16_t* label, const QString& a,
                                const QString& b) {
        if (a != b)
            m_entries.append({.page = QStringLiteral("common"),
                              .changes = {{QString::fromUtf16(field), QString::fromUtf16(label), a, b}}});
    };
    compare(u"QoSInternetDev", u"Gerät Internet", o.QoSInternetDev(), n.QoSInternetDev());
    compare(u"QoSInternetBandDown", u"Bandbreite Down", o.QoSInternetBandDown(), n.QoSInternetBandDown());
    compare(u"QoSInternetBandUp", u"Bandbreite Up", o.QoSInternetBandUp(), n.QoSInternetBandUp());
    compareDefault(QStringLiteral("QoSInternetDefaultDown"), QStringLiteral("Standardklasse Down"),
                   o.QoSInternetDefaultDown(), n.QoSInternetDefaultDown(), *oldDoc.Down1(), *newDoc.Down1(),
                   down);
    compareDefault(QStringLiteral("QoSInternetDefaultUp"), QStringLiteral("Standardklasse Up"),
                   o.QoSInternetDefaultUp(), n.QoSInternetDefaultUp(), *oldDoc.Up1(), *newDoc.Up1(), up);
    compare(u"QoSLocalNetDev", u"Gerät lokales Netz", o.QoSLocalNetDev(), n.QoSLocalNetDev());
    compare(u"QoSLocalBand", u"Bandbreite lokales Netz", o.QoSLocalBand(), n.QoSLocalBand());
    compare(u"QoSDescription", u"Beschreibung", o.QoSDescription(), n.QoSDescription());
    compare(u"QoSVersion", u"Version", o.QoSVersion(), n.QoSVersion());
}

// The default class is a class number, and numbers change with every save: the setting
// differs when it names another class, shown by its path. A number that names no class of
// the page is compared and shown as written.
void DocumentDiff::compareDefault(const QString& field, const QString& label, const QString& oldText,
                                  const QString& newText, const ObjectPage& oldPage,
                                  const ObjectPage& newPage, const ClassMatching& matching)
{
    const QoSClass* o = defaultClass(oldPage);
    const QoSClass* n = defaultClass(newPage);
    if (o || n ? o && n && matching.NewFor(o) == n : oldText == newText)
        return;
    const QString separator = QStringLiteral(" › ");
    m_entries.append({.page = QStringLiteral("common"),
                      .changes = {{field, label, o ? classPath(*o).join(separator) : oldText,
                                   n ? classPath(*n).join(separator) : newText}}});
}

void DocumentDiff::comparePage(const QString& page, const ObjectPage& oldPage, const ObjectPage& newPage,
                               const ClassMatching& matching)
{
    for (const QoSClass* n : treeOrder(newPage)) {
        if (const QoSClass* o = matching.OldFor(n))
            compareClass(page, *o, *n, matching);
        else
            addAlone(page, *n, DiffEntry::Kind::Added);
    }
    for (const QoSClass* o : treeOrder(oldPage)) {
        if (!matching.NewFor(o))
            addAlone(page, *o, DiffEntry::Kind::Removed);
    }
}

void DocumentDiff::compareClass(const QString& page, const QoSClass& o, const QoSClass& n,
                                const ClassMatching& matching)
{
    const QoSClass* oldParent = o.ParentQoSObject();
    const QoSClass* newParent = n.ParentQoSObject();
    const bool moved =
        oldParent ? !newParent || matching.NewFor(oldParent) != newParent : newParent != nullptr;
    // Two made-up captions differ only by the numbers.
    const bool renamed =
        o.Caption() != n.Caption() && !(ClassMatching::Unnamed(o) && ClassMatching::Unnamed(n));
    DiffEntry entry{.page = page,
                    .kind = moved     ? DiffEntry::Kind::Moved
                            : renamed ? DiffEntry::Kind::Renamed
                                      : DiffEntry::Kind::Changed,
                    .object = DiffEntry::Object::Class,
                    .path = classPath(n),
                    .changes = changes(ClassFields, values(o), values(n))};
    if (moved || renamed)
        entry.oldPath = classPath(o);
    if (moved || renamed || !entry.changes.isEmpty())
        m_entries.append(entry);
    compareFilters(page, o, n);
}

void DocumentDiff::compareFilters(const QString& page, const QoSClass& o, const QoSClass& n)
{
    const QList<const QoSFilter*> olds = ClassMatching::Filters(o);
    const QList<const QoSFilter*> news = ClassMatching::Filters(n);
    const auto items = [](const QList<const QoSFilter*>& filters) {
        QList<SiblingPairing::Item> list;
        for (const QoSFilter* f : filters)
            list.append({f->Caption(), f->Caption().isEmpty(), ClassMatching::Content(*f)});
        return list;
    };
    SiblingPairing pairing(items(olds), items(news));
    QHash<qsizetype, qsizetype> oldFor;
    using Rule = SiblingPairing::Rule;
    for (const Rule rule : {Rule::Caption, Rule::UnnamedContent, Rule::Content, Rule::UnnamedCaption}) {
        for (const auto& [i, j] : pairing.Pair(rule))
            oldFor.insert(j, i);
    }
    for (qsizetype j = 0; j < news.size(); ++j) {
        const QoSFilter& nf = *news[j];
        DiffEntry entry{.page = page, .object = DiffEntry::Object::Filter, .path = filterPath(nf)};
        if (!oldFor.contains(j)) {
            entry.kind = DiffEntry::Kind::Added;
            entry.changes = changes(FilterFields, {}, values(nf));
            m_entries.append(entry);
            continue;
        }
        const QoSFilter& of = *olds[oldFor.value(j)];
        entry.changes = changes(FilterFields, values(of), values(nf));
        if (of.Caption() != nf.Caption()) {
            entry.kind = DiffEntry::Kind::Renamed;
            entry.oldPath = filterPath(of);
        }
        if (entry.kind == DiffEntry::Kind::Renamed || !entry.changes.isEmpty())
            m_entries.append(entry);
    }
    for (qsizetype i = 0; i < olds.size(); ++i) {
        if (!pairing.OldPaired(i))
            m_entries.append({.page = page,
                              .kind = DiffEntry::Kind::Removed,
                              .object = DiffEntry::Object::Filter,
                              .path = filterPath(*olds[i]),
                              .changes = changes(FilterFields, values(*olds[i]), {})});
    }
}

void DocumentDiff::addAlone(const QString& page, const QoSClass& c, DiffEntry::Kind kind)
{
    const bool added = kind == DiffEntry::Kind::Added;
    m_entries.append(
        {.page = page,
         .kind = kind,
         .object = DiffEntry::Object::Class,
         .path = classPath(c),
         .changes = added ? changes(ClassFields, {}, values(c)) : changes(ClassFields, values(c), {})});
    for (const QoSFilter* f : ClassMatching::Filters(c))
        m_entries.append({.page = page,
                          .kind = kind,
                          .object = DiffEntry::Object::Filter,
                          .path = filterPath(*f),
                          .changes = added ? changes(FilterFields, {}, values(*f))
                                           : changes(FilterFields, values(*f), {})});
}
