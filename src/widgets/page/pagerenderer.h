#pragma once

#include "app/pageexport.h"

#include <QByteArray>
#include <QFont>
#include <QImage>
#include <QList>
#include <QRect>
#include <QString>

#include <memory>

class ObjectPage;
class ObjectPageView;
class QPainter;
class QWidget;

// The picture of a page as the editor shows it, at one pixel per 15 twips, drawn with the
// editor's own widgets (with the bandwidth colours checked as the editor keeps them) onto any
// painter: an image, an SVG file, a printer.
//
// A page may hold thousands of boxes, far more than fit in memory as widgets at once. So the
// renderer keeps one page view off screen, the size of a tile, and walks the part to be
// drawn tile by tile: the view makes the widgets of the boxes near the tile and drops the
// ones it left behind, as it does when the user scrolls. Each tile draws the page's surface
// (cells and lines) and then its boxes, clipped to the tile.
class PageRenderer final
{
public:
    // font: the one the page is shown with; the boxes' size depends on it, and the view made
    // here must not resize the boxes of the page on screen.
    explicit PageRenderer(ObjectPage* page, const QFont& font = QFont());
    ~PageRenderer();
    PageRenderer(const PageRenderer&) = delete;
    PageRenderer& operator=(const PageRenderer&) = delete;

    ObjectPage* page() const { return m_page; }
    // The whole page in pixels.
    QSize pageSize() const;
    // Draws a part of the page (page pixels) with its top-left corner at the painter's origin;
    // what it cuts is cut at its edges. On an image or an SVG file the widgets draw themselves (in SVG their
    // texts stay text); on a printer they come as pictures at the printer's finer scale.
    void paint(QPainter& painter, const QRect& area);

    // The whole page as an image; a page too large for one gives a null image and the reason.
    QImage image(QString* error = nullptr);
    // The whole page as an SVG document of the same size in pixels, its texts as text.
    QByteArray svg();
    // The page as a file of that format; empty, with a German reason, when it cannot be made.
    QByteArray picture(PageExport::Format format, QString* error = nullptr);

    // Tiles are at most this large a side (pixels): a tile's widgets are all that exist at once.
    static constexpr int TileSide = 2048;
    // On a printer: the resolution of the pictures on paper, their finest scale (pixels per
    // page pixel) and the largest side of one picture.
    static constexpr double PrintDpi = 300;
    static constexpr double MaxPrintScale = 3;
    static constexpr int PrintTileSide = 2048;

private:
    // The tiles of at most side pixels (or one cell) that cover a part of the page, row by row.
    QList<QRect> tiles(const QRect& part, int side) const;
    void paintTile(QPainter& painter, const QRect& tile);
    void paintOnPrinter(QPainter& painter, const QRect& part);

    ObjectPage* m_page;
    std::unique_ptr<QWidget> m_holder; // gives the view its font, off screen
    ObjectPageView* m_view;
};

// "Seite exportieren...": asks for a file name and writes the page there, as SVG or PNG by the
// name's ending (see PageExport). currentFile names the picture's first suggestion.
bool ExportObjectPage(ObjectPage* page, const QString& currentFile, const QFont& font);

// The picture of a whole page at the application's font (see PageRenderer::image).
QImage RenderObjectPage(ObjectPage* page, QString* error = nullptr);

// The largest picture: each side, and the whole in pixels (4 bytes each).
constexpr int MaxRenderSide = 32767;
constexpr qint64 MaxRenderPixels = 50'000'000;
