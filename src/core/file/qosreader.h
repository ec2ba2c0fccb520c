#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class Document;

// What an import read, and everything about it the user must hear: where and why it stopped
// when it did not reach the end, the boxes the pages refused, and what the file itself lacks.
struct ImportReport
{
    // Boxes the pages refused for one reason, counted together so that a file of two hundred
    // refused classes is told in one sentence.
    struct Refusal
    {
        bool filters = false; // filter entries, else classes
        QString reason;       // "mehr als vier Ebenen"
        qint32 count = 0;
        QList<qint32> first; // the first few numbers of the file, in order
    };

    // False as soon as there is anything to tell: an early stop, a refusal or a warning.
    bool complete = true;
    // The first error ended the import.
    bool stopped = false;
    // Where the import stopped: "Kopfteil", "Klasse 7", "Filtereintrag 12"; empty otherwise.
    QString where;
    // Why, as a German sentence that names the place ("Klasse 7 hat die Richtung 'sideways'.").
    QString reason;
    qint32 classesRead = 0;
    qint32 classesAnnounced = 0;
    qint32 entriesRead = 0;
    qint32 entriesAnnounced = 0;
    QList<Refusal> refusals;
    // What the file lacks, one German sentence each; the document is built all the same.
    QStringList warnings;

    // Counts one refused class or filter entry of the file.
    void AddRefusal(bool filters, const QString& reason, qint32 number);
    // One line for the user, saying all of it: "Die Datei wurde nicht vollständig gelesen:
    // <reason> Gelesen: 6 von 12 Klassen, 0 von 20 Filtereinträgen." for an early stop, followed
    // by the refusals and the warnings; empty when the import was complete.
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
// where and why. Refusals of the page (a class below row 3, say) are shown in no message box:
// the report counts them and the import goes on. The report also warns when the file holds
// no variable of a qos.txt at all, and when classes or filter entries its counts announce
// have none of their variables in it (a file cut off part-way). Progress goes to the document's
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
