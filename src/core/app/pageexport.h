#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class Document;
class ObjectPage;

// "Seite exportieren": the object page shown, as a picture file. The file name's ending
// chooses the format. The core has no painter, so whoever shows the page hands in a function
// that draws it; the rest is decided here: the name is asked through the document's prompt,
// the ending checked, the file written through a temporary file, and every outcome told (a
// message that names the file for what went wrong, the status line always).
class PageExport
{
public:
    enum class Format { Unknown, Svg, Png };
    // The page drawn in a format; empty, with a German reason, when it cannot be.
    using Draw = std::function<QByteArray(Format format, QString* reason)>;

    // By the ending, in any case: ".svg" and ".png"; anything else is unknown.
    static Format FormatOf(const QString& fileName);
    // Where the dialog starts: beside the current file and named after it and the page
    // ("home-router.qos.txt" on Down gives "home-router-down.svg").
    static QString InitialName(const QString& currentFile, const ObjectPage* page);
    static QString Title() { return QStringLiteral("Seite exportieren"); }
    static QString Filter()
    {
        return QStringLiteral("SVG-Bild (*.svg)|*.svg|PNG-Bild (*.png)|*.png|Alle Dateien (*)|*");
    }

    // Asks for the name and writes the picture there. False when cancelled or when nothing
    // was written; an existing file of that name then stays as it was.
    static bool Run(Document& document, const ObjectPage* page, const QString& currentFile, const Draw& draw);
};
