#pragma once

#include "file/importreport.h"

#include <QByteArray>
#include <QString>

class Document;

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
