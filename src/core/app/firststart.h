#pragma once

#include <QString>
#include <QtGlobal>

class Document;

// What the editor holds after a first start, before there is a config.ini: the grid of both
// pages and the common settings every new document starts from. config.ini overrides them
// (and falls back on them key by key); the command-line tool always starts from them.
struct FirstStart
{
    static constexpr qint32 Cols = 6;
    static constexpr qint32 Rows = 5;
    static QString InternetBandDown() { return QStringLiteral("768kbit"); }
    static QString InternetBandUp() { return QStringLiteral("128kbit"); }
    static QString InternetDev() { return QStringLiteral("ppp0"); }
    static QString LocalBand() { return QStringLiteral("10mbit"); }
    static QString LocalNetDev() { return QStringLiteral("eth0"); }
    static QString Version() { return QStringLiteral("v0.3"); }
    // Both default classes; config.ini does not keep them.
    static QString DefaultClass() { return QStringLiteral("0"); }

    // Gives a document all of the above.
    static void Apply(Document& document);
};
