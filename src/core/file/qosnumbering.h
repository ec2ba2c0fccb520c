#pragma once

#include <QtGlobal>

#include <vector>

class Document;
class QoSObject;

// The boxes of both pages in the order they are written, each with its number: every class
// and filter is numbered before a line is written, so that a parent or a filter's class is
// always named with the number it has in this file, also when a box stands above its parent.
//
// Numbering a box first checks that the reader could take it back (ReadBackCheck), and a
// filter that stands for more than MaxEntriesPerFilter entries is refused, and so is a file of
// more classes or entries than the reader takes: each throws a QoSError, and the numbers given
// so far stay.
class QoSNumbering
{
public:
    // More entries than a port list can sensibly hold: the file would be useless and the
    // expansion would take forever, so the export fails instead.
    static constexpr qint64 MaxEntriesPerFilter = 65536;

    struct Box
    {
        QoSObject* object;
        qint64 entries; // filter entries written for a filter; 0 for a class
        qint64 first;   // the number of a filter's first entry; 0 for a class
    };

    explicit QoSNumbering(Document& doc);

    const std::vector<Box>& boxes() const { return m_boxes; }
    qint32 classes() const { return m_classes; }
    qint64 filters() const { return m_filters; }

private:
    std::vector<Box> m_boxes;
    qint32 m_classes = 0;
    qint64 m_filters = 0;
};
