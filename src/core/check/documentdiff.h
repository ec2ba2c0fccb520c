#pragma once

#include "check/diffentry.h"

#include <QList>
#include <QStringList>

class ClassMatching;
class Document;
class ObjectPage;
class QoSClass;
class QoSFilter;

// What differs between two documents as the user sees them: the common settings, then the
// classes and filters of the down page and of the up page. Classes are told apart by caption
// and place in the tree (see ClassMatching), never by their numbers, so a file saved again
// after a drag compares equal to the one before. Cells and page sizes are the picture, not
// the traffic shaping, and are not compared.
//
// Filters pair up within the pair of classes they hang under: by caption, filters of one
// caption identical in every field first and the rest in their order; one left over on each
// side with the same fields is one filter renamed. A filter that went to another class is
// removed there and added here.
//
// Each page lists the new file's tree from the top, each class before its filters and sub
// classes, then what the old file had and the new one lacks, in the old file's order.
class DocumentDiff
{
public:
    DocumentDiff(const Document& oldDoc, const Document& newDoc);

    const QList<DiffEntry>& Entries() const { return m_entries; }
    bool IsEmpty() const { return m_entries.isEmpty(); }
    // One line per entry, in order.
    QStringList Lines() const;

private:
    void compareCommon(const Document& oldDoc, const Document& newDoc, const ClassMatching& down,
                       const ClassMatching& up);
    void compareDefault(const QString& field, const QString& label, const QString& oldText,
                        const QString& newText, const ObjectPage& oldPage, const ObjectPage& newPage,
                        const ClassMatching& matching);
    void comparePage(const QString& page, const ObjectPage& oldPage, const ObjectPage& newPage,
                     const ClassMatching& matching);
    void compareClass(const QString& page, const QoSClass& o, const QoSClass& n,
                      const ClassMatching& matching);
    void compareFilters(const QString& page, const QoSClass& o, const QoSClass& n);
    // A class that only one of the files has, with its filters.
    void addAlone(const QString& page, const QoSClass& c, DiffEntry::Kind kind);

    QList<DiffEntry> m_entries;
};
