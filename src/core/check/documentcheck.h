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

// Runs the check button of every main class (down page first), then lists the document's
// problems as the window's list does (ListProblems), one line each, and the balance lines.
CheckReport CheckDocument(const Document& doc, const ImportReport& import);
