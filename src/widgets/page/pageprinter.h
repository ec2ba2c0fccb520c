#pragma once

#include "pagerenderer.h"

#include <QFont>
#include <QSizeF>
#include <QString>

#include <functional>

class ObjectPage;
class QPainter;
class QPrinter;
class QWidget;

// A page on paper: the sheets of its SheetLayout, each under a header line that names the
// file, the page and the sheet. The page is drawn by a PageRenderer, sheet by sheet, so a
// page of thousands of boxes prints without ever holding its widgets at once.
class PagePrinter final
{
public:
    // fileName: the file the page was opened from or saved to ("Unbenannt" when none).
    PagePrinter(ObjectPage* page, const QString& fileName, const QFont& font = QFont());

    // Draws every sheet with a painter on a paged device: paper is a sheet's printable part and
    // dpi the device's units per inch; nextSheet turns to a new sheet between two. Returns the
    // number of sheets.
    int paintSheets(QPainter& painter, const QSizeF& paper, double dpi,
                    const std::function<void()>& nextSheet);
    // Prints onto a printer (a PDF file, a print preview). Returns the number of sheets.
    int print(QPrinter* printer);

    // "Drucken...": the print preview of the page, from which it is printed.
    static void Preview(ObjectPage* page, const QString& fileName, const QFont& font, QWidget* parent);

private:
    PageRenderer m_renderer;
    QString m_fileName;
    QFont m_font;
};
