#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>

class ObjectPageView;
class QScrollBar;
class QWidget;

// The page's size on screen and where it is scrolled to. The page is drawn into a pane only
// as large as the window, at the scroll position: scrolling moves the pane's children and
// the pixels already drawn, and only what comes into view is painted.
class PageScroller final : public QObject
{
    Q_OBJECT
public:
    // A box's column and row are 16-bit: cells beyond these can never hold one.
    static constexpr qint64 MaxCells = 32768;
    // Scroll positions and pixel sizes stay well inside int.
    static constexpr qint64 MaxPixels = 1 << 30;

    // Makes the scroll bars and the corner between them as children of the view.
    explicit PageScroller(ObjectPageView* view);

    QScrollBar* horizontal() const { return m_horizontal; }
    QScrollBar* vertical() const { return m_vertical; }
    QWidget* corner() const { return m_corner; }
    void setBarsShown(bool shown);

    // The page in pixels, up to the last cell that a box can stand in.
    QSize pageSize() const;
    QPoint position() const { return m_offset; }
    // The visible part of the page, in page pixels.
    QRect visibleRect() const;
    void setPosition(const QPoint& position);
    // Returns whether the page moved.
    bool scrollBy(const QPoint& delta);
    // Scrolls as little as brings a part of the page (page pixels) into view with a margin.
    void ensureVisible(const QRect& rect);

    // Takes the page's size and cell size as now shown, and sets the scroll bars to them.
    void fitToPage();
    // The pane's size or the page's size changed.
    void updateBars();
    // The page's grid changed: repaints what changed where it can be seen. Returns whether
    // anything visible changed, so that the boxes there are looked at again.
    bool gridChanged();

signals:
    // The scroll position changed; the pane has moved its children already.
    void scrolled();

private:
    void barMoved();

    ObjectPageView* m_view;
    QScrollBar* m_horizontal;
    QScrollBar* m_vertical;
    QWidget* m_corner;
    QPoint m_offset;
    QSize m_shownPitch; // cell size and page size as last drawn
    QSize m_shownSize;
    bool m_barsShown = true;
    bool m_updatingBars = false;
};
