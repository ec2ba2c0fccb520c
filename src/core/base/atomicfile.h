#pragma once

#include <QByteArray>
#include <QString>

// Writes a whole file through a temporary file beside it that is then renamed over it:
// the result is that of deleting and re-creating the file, but a failed write (a full
// disk, no permission, a folder of that name) leaves the old file as it was. On failure
// the reason is a German sentence a user can act on.
bool WriteFileAtomically(const QString& path, const QByteArray& bytes, QString* reason = nullptr);
