#include "pagescroller.h"

#include "base/twips.h"
#include "model/objectpage.h"
#include "objectpageview.h"
#include "objectpane.h"

#include <QRegion>
#include <QScrollBar>

#include <algorithm>

PageScroller::PageScroller(ObjectPageView* view)
    : QObject(view), m_view(view), m_horizontal(new QScrollBar(Qt::Horizontal, view)),
      m_vertical(new QScrollBar(Qt::Vertical, view)), m_corner(new QWidget(view))
{
    m_horizontal->setObjectName(QStringLiteral("hscrPane"));
    m_horizontal->setAccessibleName(QStringLiteral("Seite waagerecht verschieben"));
    m_vertical->setObjectName(QStringLiteral("vscrPane"));
    m_vertical->setAccessibleName(QStringLiteral("Seite senkrecht verschieben"));
    connect(m_horizontal, &QScrollBar::valueChanged, this, &PageScroller::barMoved);
    connect(m_vertical, &QScrollBar::valueChanged, this, &PageScroller::barMoved);
}

QSize PageScroller::pageSize() const
{
    const ObjectPageProperties& prop = m_view->page()->prop();
    const qint64 width = std::min<qint64>(prop.Cols, MaxCells) * prop.ColWidth / Twips::PerPixel;
    const qint64 height = std::min<qint64>(prop.Rows, MaxCells) * prop.RowHeight / Twips::PerPixel;
    return QSize(int(std::clamp<qint64>(width, 0, MaxPixels)), int(std::clamp<qint64>(height, 0, MaxPixels)));
}

QRect PageScroller::visibleRect() const
{
    return QRect(m_offset, m_view->pane()->size());
}

void PageScroller::setBarsShown(bool shown)
{
    m_barsShown = shown;
    updateBars();
}

void PageScroller::fitToPage()
{
    const ObjectPageProperties& prop = m_view->page()->prop();
    m_shownPitch = QSize(prop.ColWidth, prop.RowHeight);
    m_shownSize = pageSize();
    updateBars();
}

void PageScroller::updateBars()
{
    const QSize page = pageSize();
    const QSize view = m_view->pane()->size();
    m_updatingBars = true;
    m_horizontal->setRange(0, std::max(0, page.width() - view.width()));
    m_horizontal->setPageStep(std::max(1, view.width()));
    m_horizontal->setSingleStep(20);
    m_vertical->setRange(0, std::max(0, page.height() - view.height()));
    m_vertical->setPageStep(std::max(1, view.height()));
    m_vertical->setSingleStep(20);
    m_horizontal->setVisible(m_barsShown && page.width() > view.width());
    m_vertical->setVisible(m_barsShown && page.height() > view.height());
    m_corner->setVisible(m_horizontal->isVisibleTo(m_view) && m_vertical->isVisibleTo(m_view));
    m_updatingBars = false;
    barMoved();
}

void PageScroller::barMoved()
{
    if (m_updatingBars)
        return;
    const QPoint offset(m_horizontal->value(), m_vertical->value());
    if (offset == m_offset)
        return;
    const QPoint delta = m_offset - offset;
    m_offset = offset;
    // Moves the children and the pixels already drawn; only what comes into view is painted.
    m_view->pane()->scroll(delta.x(), delta.y());
    emit scrolled();
}

void PageScroller::setPosition(const QPoint& position)
{
    m_horizontal->setValue(position.x());
    m_vertical->setValue(position.y());
}

bool PageScroller::scrollBy(const QPoint& delta)
{
    const QPoint before = m_offset;
    setPosition(m_offset + delta);
    return m_offset != before;
}

void PageScroller::ensureVisible(const QRect& rect)
{
    const QRect box = rect.adjusted(-12, -12, 12, 12);
    const QRect view = visibleRect();
    QPoint position = m_offset;
    if (box.right() > view.right())
        position.rx() += box.right() - view.right();
    if (box.left() < position.x())
        position.setX(box.left());
    if (box.bottom() > view.bottom())
        position.ry() += box.bottom() - view.bottom();
    if (box.top() < position.y())
        position.setY(box.top());
    setPosition(position);
}

bool PageScroller::gridChanged()
{
    // A page growing by a column at a time (a file read box by box) repaints only the strip
    // that changed, and only where it can be seen; other cell sizes repaint everything.
    const ObjectPageProperties& prop = m_view->page()->prop();
    const QSize pitch(prop.ColWidth, prop.RowHeight);
    const QSize size = pageSize();
    updateBars();
    QWidget* pane = m_view->pane();
    bool changed = true;
    if (pitch != m_shownPitch) {
        pane->update();
    } else {
        const QRegion strip = QRegion(QRect(QPoint(), m_shownSize)).xored(QRegion(QRect(QPoint(), size)));
        const QRegion visible = strip.translated(-m_offset).intersected(pane->rect());
        changed = !visible.isEmpty();
        if (changed)
            pane->update(visible);
    }
    m_shownPitch = pitch;
    m_shownSize = size;
    return changed;
}
