#include "sheetlayout.h"

#include "base/twips.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

SheetLayout SheetLayout::For(const QSize& page, const QSizeF& sheet, double dpi)
{
    SheetLayout out;
    out.m_page = page;
    if (page.isEmpty() || sheet.isEmpty() || dpi <= 0)
        return out;
    // A page pixel is 15 twips, and 1440 twips are an inch.
    const double natural = dpi * Twips::PerPixel / 1440.0;
    const double fit = std::min(sheet.width() / page.width(), sheet.height() / page.height());
    out.m_scale = std::min(natural, std::max(fit, natural * ReadableShare));
    // What one sheet holds; a page that fits is never split over a rounding error.
    const auto held = [&](double room, int length) {
        const int cell = std::max(1, int(std::floor(room / out.m_scale + 1e-6)));
        return std::min(cell, length);
    };
    out.m_cell = QSize(held(sheet.width(), page.width()), held(sheet.height(), page.height()));
    out.m_columns = (page.width() + out.m_cell.width() - 1) / out.m_cell.width();
    out.m_rows = (page.height() + out.m_cell.height() - 1) / out.m_cell.height();
    return out;
}

QRect SheetLayout::area(int sheet) const
{
    if (sheet < 0 || sheet >= count())
        return {};
    const QPoint corner(sheet % m_columns * m_cell.width(), sheet / m_columns * m_cell.height());
    return QRect(corner, m_cell).intersected(QRect(QPoint(), m_page));
}

QString SheetLayout::PageName(const QString& fileName, const QString& direction)
{
    const QString file = fileName.isEmpty() ? QStringLiteral("Unbenannt") : QFileInfo(fileName).fileName();
    const QString page =
        direction.compare(u"up", Qt::CaseInsensitive) == 0 ? QStringLiteral("Up") : QStringLiteral("Down");
    return file + QStringLiteral(" – ") + page;
}

QString SheetLayout::Header(const QString& fileName, const QString& direction, int sheet, int count)
{
    return QStringLiteral("%1 – Blatt %2 von %3")
        .arg(PageName(fileName, direction))
        .arg(sheet + 1)
        .arg(count);
}
