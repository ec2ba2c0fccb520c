#pragma once

#include <QByteArray>
#include <QString>

class Document;

// Writes the whole document as the router's qos.txt: header, common settings, classes,
// filters, description. Every line ends with CR LF, the last one too.
//
// As a side effect every class and filter is numbered anew in the order written, and the
// two default-class settings of the common page are taken from the classes marked as
// default. A failure of an object (a number beyond its range, a port list that stands for
// absurdly many entries) throws a QoSError and no text is returned.
QString ExportQoSText(Document& doc);

// The same text in the single-byte code page the router reads.
QByteArray ExportQoSBytes(Document& doc);
