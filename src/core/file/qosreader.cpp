#include "file/qosreader.h"

#include "base/qoserror.h"
#include "base/userprompt.h"
#include "file/qosfiletable.h"
#include "file/qosimport.h"
#include "model/document.h"

#include <QFile>
#include <QFileInfo>

#include <functional>

namespace {

QoSError fileError(const QString& text)
{
    return QoSError(QoSError::Kind::File, text);
}

// The whole file, unless it is larger than any qos.txt can sensibly be: a device or a file of
// gigabytes is refused before it fills the memory.
QByteArray readFile(const QString& path)
{
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
        throw fileError(QStringLiteral("Die Datei \"%1\" kann nicht gelesen werden.").arg(path));
    QByteArray bytes = file.read(MaxQoSFileSize + 1);
    if (file.error() != QFileDevice::NoError)
        throw fileError(
            QStringLiteral("Die Datei \"%1\" kann nicht gelesen werden: %2").arg(path, file.errorString()));
    if (bytes.size() > MaxQoSFileSize)
        throw fileError(QStringLiteral("Die Datei \"%1\" ist größer als %2 MB und wird nicht gelesen.")
                            .arg(path)
                            .arg(MaxQoSFileSize / (1024 * 1024)));
    return bytes;
}

ImportReport importGuarded(Document& doc, const std::function<QByteArray()>& read)
{
    ImportReport report;
    StatusWindow* status = doc.statusWindow();
    if (status)
        status->Show(QStringLiteral("Import"), QStringLiteral("Import..."));
    {
        const Document::ImportScope scope(doc);
        try {
            const QoSFileTable file(read());
            QoSImport(doc, file, report).run();
        } catch (const QoSError& e) {
            // Ends the import where it stands; what was created stays, and the report says why.
            report.stopped = true;
            report.reason = e.message();
            if (!report.reason.endsWith(u'.'))
                report.reason += u'.';
        }
    }
    if (status)
        status->Close();
    report.complete = !report.stopped && report.refusals.isEmpty() && report.warnings.isEmpty();
    return report;
}

} // namespace

bool ReadQoSFile(const QString& path, QByteArray& bytes, QString& error)
{
    try {
        bytes = readFile(path);
        return true;
    } catch (const QoSError& e) {
        error = e.message();
        return false;
    }
}

ImportReport ImportQoSText(Document& doc, const QString& path)
{
    return importGuarded(doc, [&path] { return readFile(path); });
}

ImportReport ImportQoSBytes(Document& doc, const QByteArray& bytes)
{
    return importGuarded(doc, [&bytes] { return bytes; });
}
