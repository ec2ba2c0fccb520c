#pragma once

#include <QRect>
#include <QSize>
#include <QSizeF>
#include <QString>

// How a printed page is spread over sheets of paper. The page is printed at its size on
// screen (a twip is a twip on paper too) when it fits one sheet; a larger page is shrunk to
// fit, but never below a readable share of that size: beyond it, the page is tiled across as
// many sheets as it needs, across first, then down, rather than shrunk to a dot.
class SheetLayout
{
public:
    // The smallest share of the page's size on screen that is still printed.
    static constexpr double ReadableShare = 0.6;

    // page: the page in pixels (15 twips each); sheet: the part of a sheet the page may use,
    // in the printer's units; dpi: the printer's units per inch.
    static SheetLayout For(const QSize& page, const QSizeF& sheet, double dpi);

    // Printer units per page pixel.
    double scale() const { return m_scale; }
    int columns() const { return m_columns; }
    int rows() const { return m_rows; }
    int count() const { return m_columns * m_rows; }
    // The part of the page on a sheet (0 is the first), in page pixels.
    QRect area(int sheet) const;

    // The file and the page: "home.qos.txt – Down", "Unbenannt – Up".
    static QString PageName(const QString& fileName, const QString& direction);
    // The line over every sheet: the file, the page, the sheet's number.
    static QString Header(const QString& fileName, const QString& direction, int sheet, int count);

private:
    QSize m_page;
    QSize m_cell; // page pixels a sheet holds
    double m_scale = 1;
    int m_columns = 0;
    int m_rows = 0;
};
