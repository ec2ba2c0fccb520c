#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

// The single-byte code page that qos.txt is written in. Kept as an own table so that the
// file reads and writes the same on every system, whatever codecs Qt was built with.
namespace Windows1252 {

// Every byte has a character; the five bytes the code page leaves undefined (0x81, 0x8D,
// 0x8F, 0x90, 0x9D) become U+0081 … so that they survive a read and a write.
QString Decode(const QByteArray& bytes);

// Characters the code page cannot hold become "?".
QByteArray Encode(QStringView text);
// The position of the first character the code page cannot hold, or -1.
qsizetype FirstUnmappable(QStringView text);

// The same into a buffer that has room for text.size() bytes; returns the end of what was written.
char* EncodeInto(QStringView text, char* dst);

} // namespace Windows1252
