#include "pageprinter.h"

#include "app/sheetlayout.h"
#include "model/objectpage.h"

#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QWidget>

PagePrinter::PagePrinter(ObjectPage* page, const QString& fileName, const QFont& font)
    : m_renderer(page, font), m_fileName(fileName), m_font(font)
{}

int PagePrinter::paintSheets(QPainter& painter, const QSizeF& paper, double dpi,
                             const std::function<void()>& nextSheet)
{
    // The header in the page's font at 9 points, measured on the device itself.
    QFont headerFont(m_font, painter.device());
    headerFont.setPointSizeF(9);
    painter.setFont(headerFont);
    const QFontMetricsF metrics(headerFont, painter.device());
    const double lineHeight = metrics.height();
    const double headerHeight = lineHeight * 1.75;
    const SheetLayout layout =
        SheetLayout::For(m_renderer.pageSize(), QSizeF(paper.width(), paper.height() - headerHeight), dpi);
    const ObjectPage* page = m_renderer.page();
    for (int sheet = 0; sheet < layout.count(); ++sheet) {
        if (sheet > 0)
            nextSheet();
        painter.setPen(Qt::black);
        painter.drawText(QRectF(0, 0, paper.width(), lineHeight), Qt::AlignLeft | Qt::AlignVCenter,
                         SheetLayout::Header(m_fileName, page->Direction(), sheet, layout.count()));
        const double rule = lineHeight * 1.25;
        painter.drawLine(QLineF(0, rule, paper.width(), rule));
        painter.save();
        painter.translate(0, headerHeight);
        painter.scale(layout.scale(), layout.scale());
        m_renderer.paint(painter, layout.area(sheet));
        painter.restore();
    }
    return layout.count();
}

int PagePrinter::print(QPrinter* printer)
{
    QPainter painter;
    if (!painter.begin(printer))
        return 0;
    return paintSheets(painter, QSizeF(printer->width(), printer->height()), printer->logicalDpiX(),
                       [printer] { printer->newPage(); });
}

void PagePrinter::Preview(ObjectPage* page, const QString& fileName, const QFont& font, QWidget* parent)
{
    PagePrinter sheets(page, fileName, font);
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(SheetLayout::PageName(fileName, page->Direction()));
    // A wide page reads better across the paper.
    const QSize size = sheets.m_renderer.pageSize();
    printer.setPageOrientation(size.width() > size.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
    QPrintPreviewDialog dialog(&printer, parent);
    const QString title =
        QStringLiteral("Druckvorschau: ") + SheetLayout::PageName(fileName, page->Direction());
    dialog.setWindowTitle(title);
    dialog.setAccessibleName(title);
    // Sheets are hard to judge in a small window: the preview takes most of the main window.
    if (QWidget* window = parent ? parent->window() : nullptr)
        dialog.resize(window->size() * 0.9);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&sheets](QPrinter* target) { sheets.print(target); });
    dialog.exec();
}
