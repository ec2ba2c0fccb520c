#include "base/atomicfile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {

QString reasonFor(const QString& path, const QSaveFile& file)
{
    const QFileInfo info(path);
    const QFileInfo folder(info.absolutePath());
    if (info.isDir())
        return QStringLiteral("Unter diesem Namen gibt es bereits einen Ordner.");
    if (!folder.exists())
        return QStringLiteral("Den Ordner \"%1\" gibt es nicht.")
            .arg(QDir::toNativeSeparators(folder.filePath()));
    if (!folder.isWritable())
        return QStringLiteral("Im Ordner \"%1\" darf nicht geschrieben werden.")
            .arg(QDir::toNativeSeparators(folder.filePath()));
    switch (file.error()) {
    case QFileDevice::ResourceError:
        return QStringLiteral("Auf dem Datenträger ist nicht genug Platz.");
    case QFileDevice::PermissionsError:
        return QStringLiteral("Die Berechtigung zum Schreiben fehlt.");
    case QFileDevice::RenameError:
        return QStringLiteral("Die alte Datei konnte nicht ersetzt werden.");
    default:
        // The system's own words, for the cases that have no better German sentence.
        return QStringLiteral("Schreibfehler (%1).").arg(file.errorString());
    }
}

} // namespace

bool WriteFileAtomically(const QString& path, const QByteArray& bytes, QString* reason)
{
    QSaveFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::WriteOnly)) {
        if (reason)
            *reason = reasonFor(path, file);
        return false;
    }
    if (file.write(bytes) != bytes.size() || !file.commit()) {
        if (reason)
            *reason = reasonFor(path, file);
        file.cancelWriting();
        return false;
    }
    return true;
}
