#pragma once

#include <QString>
#include <QStringList>

#include <vector>

class Document;
class QoSNumbering;
template <typename Sink> class QoSLines;

// The five blocks of a qos.txt, in their order: header, common settings, classes, filters,
// description. The texts are taken from a numbered document once, when the sections are made;
// writing them changes nothing.
//
// Write is the one place that says what the file holds: the writer runs it into a QoSTextSize
// to learn the size of the file and then into a QoSTextBuffer of that size, so no line can be
// written without being counted.
class QoSSections
{
public:
    QoSSections(const Document& doc, const QoSNumbering& numbering);

    // Made for QoSTextSize, QoSTextBuffer<QString> and QoSTextBuffer<QByteArray>.
    template <typename Sink> void Write(Sink& sink) const;

private:
    struct ClassText
    {
        qint32 number;
        qint32 parent; // 0 for a main class
        qint16 x, y;
        QString caption, minimum, maximum, direction, prio;
    };
    struct FilterText
    {
        qint64 first;   // the number of its first entry
        qint64 entries; // one per port of its list
        qint64 classNumber;
        qint16 x, y;
        QString caption, ip, port, type, option;
        QStringList ports; // the single ports, for a filter of several entries
    };

    template <typename Sink> void header(QoSLines<Sink>& out) const;
    template <typename Sink> void common(QoSLines<Sink>& out) const;
    template <typename Sink> void classes(QoSLines<Sink>& out) const;
    template <typename Sink> void filters(QoSLines<Sink>& out) const;
    template <typename Sink> void description(QoSLines<Sink>& out) const;

    QString m_version;
    QString m_date;
    qint32 m_cols = 0;
    qint32 m_rows = 0;
    QString m_common[7];
    std::vector<ClassText> m_classes;
    std::vector<FilterText> m_filters;
    qint64 m_entries = 0;
    QStringList m_description;
};
