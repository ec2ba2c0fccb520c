#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include <utility>

class ObjectPage;
class QoSClass;
class QoSFilter;

// Which class of a page of an old document is which class of the same page of a new one, told
// as a reader of both files would: by the place in the tree and the caption, not by the
// numbers, which every save hands out anew (a drag alone renumbers the classes).
//
// Siblings below classes already paired (or the main classes) pair up first: by caption, and
// siblings of one caption in their order. A caption the reader made up for a class written
// without one ("Class 7", its own number) names nothing the user chose, so such classes pair
// by content first (values, filters and everything below), then by that caption. Then a class
// whose caption is unique on its page in both files, standing elsewhere, is one class moved.
// Last, siblings left over with the same content are one class renamed, and classes with
// made-up captions left over pair in their order. A class still alone was removed or added.
class ClassMatching
{
public:
    ClassMatching(const ObjectPage& oldPage, const ObjectPage& newPage);

    // The partner in the other document, or none.
    const QoSClass* NewFor(const QoSClass* oldClass) const { return m_newFor.value(oldClass); }
    const QoSClass* OldFor(const QoSClass* newClass) const { return m_oldFor.value(newClass); }

    // The page's main classes and a class's sub classes and filters, each in their order.
    static QList<const QoSClass*> MainClasses(const ObjectPage& page);
    static QList<const QoSClass*> ChildClasses(const QoSClass& c);
    static QList<const QoSFilter*> Filters(const QoSClass& c);
    // Whether the caption is the one the reader gives a class that has none in the file.
    static bool Unnamed(const QoSClass& c);
    // Everything a filter holds except its caption.
    static QString Content(const QoSFilter& f);

private:
    using Pair = std::pair<const QoSClass*, const QoSClass*>;

    // The siblings below a pair that are still alone; a null pair stands for the main classes.
    QList<const QoSClass*> freeChildren(const QoSClass* parent, bool old) const;
    QString content(const QoSClass& c);
    void link(const QoSClass* o, const QoSClass* n);
    // Pairs the free siblings below every pair in the queue by the rules given, following
    // each new pair down.
    void pairSiblings(QList<Pair> queue, bool late);
    bool pairMoves();

    const ObjectPage& m_oldPage;
    const ObjectPage& m_newPage;
    QHash<const QoSClass*, const QoSClass*> m_newFor;
    QHash<const QoSClass*, const QoSClass*> m_oldFor;
    QList<Pair> m_pairs; // every pair, the null pair of the main classes first
    QHash<const QoSClass*, QString> m_content;
};
