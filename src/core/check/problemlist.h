#pragma once

#include <QList>
#include <QPointer>
#include <QString>

class Document;
class QoSObject;
struct ImportReport;

// One thing wrong with the document, as the window's list and tarnwick-cli check name it.
struct Problem
{
    enum class Kind {
        Import,    // the import stopped early, refused boxes or found entries missing
        Bandwidth, // a minimum or maximum marked invalid
        Ports,     // too many ports, a range written backwards, a first port outside 0..65535
        Address,   // an address or mask bits the address field would not take
        Kept,      // a value read from the file that the field cannot show as it is, kept as text
        Depth,     // a class below the fourth level
    };

    Kind kind = Kind::Import;
    // The box it belongs to; none for what the import tells and for the common page's values.
    QPointer<QoSObject> object;
    // The whole line: where, then what ("Down: Filter "web" in Zelle 0,4: ...").
    QString text;
    // More to read where there is more to say (a bandwidth's figures one a line); the line
    // above already holds it all, on one line.
    QString detail;
    // Only for the common page's values: the page "Allgemein" holds them.
    bool common = false;

    bool operator==(const Problem& other) const;
};

// "Keine Probleme", "1 Problem", "3 Probleme".
QString ProblemCountText(qsizetype count);

// "Down: Klasse "Web" in Zelle 1,0": the page, the kind of box, its caption and its cell.
QString DescribePlace(const QoSObject& object);

// Every problem of the document, as the bandwidth flags stand now (nothing is validated here):
// what the import has to tell first, then the common page, then the boxes of the down page and
// of the up page in the order they were added.
QList<Problem> ListProblems(const Document& doc, const ImportReport& import);
