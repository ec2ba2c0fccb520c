#pragma once

#include <QByteArray>
#include <QString>

class Document;

// Reads a qos.txt into the document: the common settings, the down page's size and every
// class, then every filter, created on their pages and linked. Expects a cleared document;
// what it reads is added to what the pages hold.
//
// The import runs under a trap: the first error (a file that cannot be read, a line without
// its quotes, a filter whose class does not exist, a direction that names no page, a cell or
// count that is not a number, more than 10000 classes or filters) ends it without a message,
// and what was created so far stays. Refusals of the page (a class below row 3, say) are told
// to the user through the document's prompt and the import goes on. Progress goes to the
// document's status window, when it has one; the window is told every step and repaints then.
void ImportQoSText(Document& doc, const QString& path);
void ImportQoSBytes(Document& doc, const QByteArray& bytes);
