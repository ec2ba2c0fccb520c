#pragma once

#include <QStringList>

class Document;
struct ImportReport;

// What the check of a document finds: one German line per problem, and one summary line of
// guaranteed against available bandwidth for every class with sub classes and for the main
// classes of each page.
struct CheckReport
{
    QStringList problems;
    QStringList summaries;
};

// Runs the check button of every main class (down page first), then names what is wrong:
// what the import has to tell, bandwidths marked invalid (with their limit and sibling sum),
// port lists with too many ports or a range written backwards, invalid addresses, a first
// port outside 0..65535, and classes below the fourth level.
CheckReport CheckDocument(const Document& doc, const ImportReport& import);
