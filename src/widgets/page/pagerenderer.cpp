#include "pagerenderer.h"

#include "base/twips.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "objectpageview.h"
#include "objectpane.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace {

// What the view leaves to the event loop and a picture needs: the bandwidth checks (queued
// calls), the polish and layouts of new boxes. Their repaint goes: nobody looks at the view
// itself. Nothing of the view may stay queued either, or every widget dropped later would
// search the whole queue for its own events.
void settle(QWidget* holder)
{
    for (const QEvent::Type type :
         {QEvent::MetaCall, QEvent::PolishRequest, QEvent::LayoutRequest, QEvent::UpdateLater})
        QCoreApplication::sendPostedEvents(nullptr, type);
    QCoreApplication::removePostedEvents(holder, QEvent::UpdateRequest);
}

// How many cells of a pitch (twips) a tile spans: as many as fit its side, at least one.
qint64 cellsPerTile(qint32 pitch, int side = PageRenderer::TileSide)
{
    return std::max<qint64>(1, qint64(side) * Twips::PerPixel / std::max(1, pitch));
}

} // namespace

PageRenderer::PageRenderer(ObjectPage* page, const QFont& font)
    : m_page(page), m_holder(std::make_unique<QWidget>())
{
    m_holder->setAttribute(Qt::WA_DontShowOnScreen);
    m_holder->setFont(font);
    // Made as a child of the holder, the view has the font from the start: the boxes are sized
    // by it once, as on screen.
    m_view = new ObjectPageView(page, m_holder.get());
    m_view->setScrollBarsShown(false);
    // As large as the largest tile: a tile is drawn from one scroll position.
    const ObjectPageProperties& prop = page->prop();
    const QSize tile(int(cellsPerTile(prop.ColWidth) * prop.ColWidth / Twips::PerPixel) + 1,
                     int(cellsPerTile(prop.RowHeight) * prop.RowHeight / Twips::PerPixel) + 1);
    const QSize size = pageSize().boundedTo(tile).expandedTo(QSize(1, 1));
    m_view->setGeometry(QRect(QPoint(), size));
    m_holder->resize(size);
    m_holder->show();
    settle(m_holder.get());
}

PageRenderer::~PageRenderer()
{
    // The view goes before the holder's other parts, and its dropped widgets with it.
    delete m_view;
}

QSize PageRenderer::pageSize() const
{
    return m_view->pageSize();
}

QList<QRect> PageRenderer::tiles(const QRect& part, int side) const
{
    // Tile edges lie on cell edges, which no box crosses: each box is drawn whole in one tile
    // (a painter without clipping, as an SVG file's, then holds it once).
    const ObjectPageProperties& prop = m_page->prop();
    const auto edges = [](int from, int to, qint64 step) {
        QList<int> out{from};
        for (qint64 k = 1;; ++k) {
            const int edge = Twips::ToPixels(double(k * step));
            if (edge > to)
                break;
            if (edge > from)
                out << edge;
        }
        out << to + 1;
        return out;
    };
    const QList<int> xs = edges(part.left(), part.right(), cellsPerTile(prop.ColWidth, side) * prop.ColWidth);
    const QList<int> ys =
        edges(part.top(), part.bottom(), cellsPerTile(prop.RowHeight, side) * prop.RowHeight);
    QList<QRect> out;
    for (qsizetype j = 0; j + 1 < ys.size(); ++j)
        for (qsizetype i = 0; i + 1 < xs.size(); ++i)
            out << QRect(QPoint(xs[i], ys[j]), QPoint(xs[i + 1] - 1, ys[j + 1] - 1));
    return out;
}

void PageRenderer::paintTile(QPainter& painter, const QRect& tile)
{
    m_view->setScrollPosition(tile.topLeft());
    m_view->realize();
    settle(m_holder.get());
    // The surface with the cells and the lines, and the boxes over it that meet the tile.
    m_view->pane()->render(&painter, tile.topLeft(), QRegion(tile.translated(-m_view->scrollPosition())));
}

void PageRenderer::paintOnPrinter(QPainter& painter, const QRect& part)
{
    // Qt draws widgets onto a printer as a picture of their screen pixels, which blurs when
    // it is scaled to the paper. Drawn here at print resolution instead (at most MaxPrintScale
    // pixels a page pixel, so that the pictures stay small), tile by tile, they stay sharp.
    const QTransform& t = painter.worldTransform();
    const double dpi = std::max(1, painter.device()->logicalDpiX());
    const double scale = std::clamp(std::hypot(t.m11(), t.m12()) * PrintDpi / dpi, 1.0, MaxPrintScale);
    for (const QRect& tile : tiles(part, int(PrintTileSide / scale))) {
        QImage image(QSize(int(std::ceil(tile.width() * scale)), int(std::ceil(tile.height() * scale))),
                     QImage::Format_RGB32);
        image.fill(Qt::white);
        {
            QPainter onImage(&image);
            onImage.scale(scale, scale);
            onImage.translate(-tile.topLeft());
            paintTile(onImage, tile);
        }
        painter.drawImage(QRectF(tile), image);
    }
}

void PageRenderer::paint(QPainter& painter, const QRect& area)
{
    const QRect part = area.intersected(QRect(QPoint(), pageSize()));
    if (part.isEmpty())
        return;
    painter.save();
    painter.translate(-area.topLeft());
    if (painter.device()->devType() == QInternal::Printer) {
        paintOnPrinter(painter, part);
    } else {
        for (const QRect& tile : tiles(part, TileSide))
            paintTile(painter, tile);
    }
    painter.restore();
}

QImage PageRenderer::image(QString* error)
{
    const QSize size = pageSize();
    if (size.width() > MaxRenderSide || size.height() > MaxRenderSide ||
        qint64(size.width()) * size.height() > MaxRenderPixels) {
        if (error)
            *error =
                QStringLiteral("Die Seite ist mit %1 × %2 Pixeln zu groß für ein Bild (höchstens %3 Pixel je "
                               "Seite und %4 Millionen Pixel). Als SVG lässt sie sich schreiben.")
                    .arg(size.width())
                    .arg(size.height())
                    .arg(MaxRenderSide)
                    .arg(MaxRenderPixels / 1'000'000);
        return {};
    }
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter, QRect(QPoint(), size));
    return image;
}

QByteArray PageRenderer::svg()
{
    const QSize size = pageSize();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    generator.setResolution(96);
    generator.setTitle(m_page->Direction() == u"up" ? QStringLiteral("Up") : QStringLiteral("Down"));
    {
        QPainter painter(&generator);
        paint(painter, QRect(QPoint(), size));
    }
    // The size is written in millimetres, which viewers turn into pixels at 90 or at 96 dots
    // an inch; in pixels, every viewer shows the page at the size of the PNG picture.
    QByteArray svg = buffer.data();
    const qsizetype root = svg.indexOf("<svg");
    for (const char* attribute : {" width=\"", " height=\""}) {
        const qsizetype from = svg.indexOf(attribute, root);
        const qsizetype value = from + qsizetype(qstrlen(attribute));
        const qsizetype to = svg.indexOf('"', value);
        if (root < 0 || from < 0 || to < 0 || svg.mid(to - 2, 2) != "mm")
            continue;
        const int pixels = attribute[1] == 'w' ? size.width() : size.height();
        svg.replace(value, to - value, QByteArray::number(pixels));
    }
    return svg;
}

QByteArray PageRenderer::picture(PageExport::Format format, QString* error)
{
    switch (format) {
    case PageExport::Format::Svg:
        return svg();
    case PageExport::Format::Png: {
        const QImage picture = image(error);
        if (picture.isNull())
            return {};
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        if (!picture.save(&buffer, "PNG")) {
            if (error)
                *error = QStringLiteral("Das PNG-Bild konnte nicht erzeugt werden.");
            return {};
        }
        return buffer.data();
    }
    case PageExport::Format::Unknown:
        break;
    }
    if (error)
        *error = QStringLiteral("Unbekanntes Bildformat.");
    return {};
}

bool ExportObjectPage(ObjectPage* page, const QString& currentFile, const QFont& font)
{
    return PageExport::Run(*page->document(), page, currentFile,
                           [page, &font](PageExport::Format format, QString* reason) {
                               QGuiApplication::setOverrideCursor(Qt::WaitCursor);
                               const QByteArray bytes = PageRenderer(page, font).picture(format, reason);
                               QGuiApplication::restoreOverrideCursor();
                               return bytes;
                           });
}

QImage RenderObjectPage(ObjectPage* page, QString* error)
{
    return PageRenderer(page).image(error);
}
