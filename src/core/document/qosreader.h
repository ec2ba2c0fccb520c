#pragma once

#include <QByteArray>
#include <QString>

class Document;

// What an import read, and where and why it stopped when it did not reach the end.
struct ImportReport
{
    bool complete = true;
    // Where the import stopped: "Kopfteil", "Klasse 7", "Filtereintrag 12"; empty when complete.
    QString where;
    // Why, as a German sentence that names the place ("Klasse 7 hat die Richtung 'sideways'.").
    QString reason;
    qint32 classesRead = 0;
    qint32 classesAnnounced = 0;
    qint32 entriesRead = 0;
    qint32 entriesAnnounced = 0;

    // One line for the user: "Die Datei wurde nicht vollständig gelesen: <reason> Gelesen: 6 von
    // 12 Klassen, 0 von 20 Filtereinträgen."; empty when the import was complete.
    QString Message() const;
};

// Reads a qos.txt into the document: the common settings, the down page's size and every
// class, then every filter, created on their pages and linked. Expects a cleared document;
// what it reads is added to what the pages hold.
//
// The import runs under a trap: the first error (a file that cannot be read or is too large,
// a line without its quotes, a filter whose class does not exist, a direction that names no
// page, a cell or count that is not a number, a number that does not fit, more than 100000
// classes or filter entries) ends it, what was created so far stays, and the report says
// where and why. Refusals of the page (a class below row 3, say) are told to the user
// through the document's prompt and the import goes on. Progress goes to the document's
// status window, when it has one; the window is told every step and repaints then.
ImportReport ImportQoSText(Document& doc, const QString& path);
// Reads a file as the import does, refusing one larger than MaxQoSFileSize; false with a
// German explanation in error when it cannot be read.
bool ReadQoSFile(const QString& path, QByteArray& bytes, QString& error);
ImportReport ImportQoSBytes(Document& doc, const QByteArray& bytes);

// Files above this size are refused instead of being read whole.
constexpr qint64 MaxQoSFileSize = 64 * 1024 * 1024;
// More classes or filter entries than this end the import before anything is created.
constexpr qint32 MaxQoSObjectsInFile = 100000;
