#pragma once

#include <QStringList>

class CliSession;

// What the check of the imported document finds: one German line per problem, and one
// summary line of guaranteed against available bandwidth for every class with sub classes
// and for the main classes of each page.
struct CheckReport
{
    QStringList problems;
    QStringList summaries;
};

CheckReport CheckDocument(CliSession& session);
