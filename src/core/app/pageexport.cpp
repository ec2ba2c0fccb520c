#include "pageexport.h"

#include "base/atomicfile.h"
#include "model/document.h"
#include "model/objectpage.h"

#include <QDir>
#include <QFileInfo>

PageExport::Format PageExport::FormatOf(const QString& fileName)
{
    // Only the last ending counts: "bild.svg.png" is a PNG picture, "svg" alone no picture.
    const QString suffix = QFileInfo(fileName).suffix();
    if (suffix.compare(u"svg", Qt::CaseInsensitive) == 0)
        return Format::Svg;
    if (suffix.compare(u"png", Qt::CaseInsensitive) == 0)
        return Format::Png;
    return Format::Unknown;
}

QString PageExport::InitialName(const QString& currentFile, const ObjectPage* page)
{
    const QString direction = page ? page->Direction() : QString();
    const QString suffix = (direction.isEmpty() ? QString() : u'-' + direction) + QStringLiteral(".svg");
    if (currentFile.isEmpty())
        return QStringLiteral("qos") + suffix;
    const QFileInfo info(currentFile);
    QString base = info.fileName();
    // "qos.txt" and "home.qos.txt" lose their ending; a name without one keeps it all.
    for (const QString& ending : {QStringLiteral(".qos.txt"), QStringLiteral(".txt")}) {
        if (base.endsWith(ending, Qt::CaseInsensitive) && base.size() > ending.size()) {
            base.chop(ending.size());
            break;
        }
    }
    return info.absoluteDir().filePath(base + suffix);
}

bool PageExport::Run(Document& document, const ObjectPage* page, const QString& currentFile, const Draw& draw)
{
    const QString notExported = QStringLiteral("Seite nicht exportiert.");
    const auto name = document.prompt().SaveFileName(Title(), InitialName(currentFile, page), Filter());
    if (!name) {
        document.SetStatusText(QStringLiteral("Seite exportieren abgebrochen."));
        return false;
    }
    const QString shown = QDir::toNativeSeparators(*name);
    const Format format = FormatOf(*name);
    if (format == Format::Unknown) {
        document.prompt().Message(
            QStringLiteral("Die Seite wurde nicht exportiert: \"%1\" endet weder auf .svg (SVG-Bild) noch "
                           "auf .png (PNG-Bild). Bitte einen Namen mit einer dieser Endungen wählen.")
                .arg(shown),
            UserPrompt::Icon::Warning);
        document.SetStatusText(notExported);
        return false;
    }
    QString reason;
    const QByteArray bytes = draw(format, &reason);
    QString failure;
    if (bytes.isEmpty())
        failure = reason.isEmpty() ? QStringLiteral("Die Seite konnte nicht gezeichnet werden.") : reason;
    else if (!WriteFileAtomically(*name, bytes, &failure) && failure.isEmpty())
        failure = QStringLiteral("Die Datei kann nicht geschrieben werden.");
    if (!failure.isEmpty()) {
        document.prompt().Message(
            QStringLiteral("Die Seite wurde nicht nach \"%1\" exportiert. %2").arg(shown, failure),
            UserPrompt::Icon::Critical);
        document.SetStatusText(notExported);
        return false;
    }
    document.SetStatusText(QStringLiteral("Seite exportiert: %1").arg(shown));
    return true;
}
