#pragma once

#include "droptarget.h"
#include "model/dropplan.h"

#include <QLine>
#include <QWidget>

class MoveObject;
class PageBoxes;
class PageFocus;
class PageLines;
class PageScroller;
class ObjectPage;
class ObjectPane;
class QMenu;
class QPainter;
class QScrollBar;
class QoSConnector;
class QoSConnectorView;
class QoSObject;
class QoSObjectBox;
class StatusLine;
class UserPrompt;
class ValidationWatcher;

// One object page on screen: its pane with the class and filter boxes and the connector
// lines, and the two scroll bars.
//
// Boxes are child widgets of the pane, not items of a graphics scene: a box is a handful of
// ordinary input fields that must take the keyboard focus and the accessibility tree as they
// are, and the widgets map one to one onto the controls the boxes are made of. A page may
// hold thousands of boxes and be read as millions of cells wide, so the view never builds
// what cannot be seen: it keeps a record of every box and line of the page and makes widgets
// only for the boxes in or near the visible part, dropping them again as the page scrolls
// (never one that has the focus or is being dragged). The core objects hold every value, so
// nothing is lost when a widget goes. The pane itself is only as large as the window; the
// page is drawn into it at the scroll position. The records sit in a spatial index, so that
// finding the visible part costs what is visible, not what the page holds.
//
// Lines are not widgets: the pane draws the lines of the exposed part in one layer, under
// the boxes. A class with thousands of filters has thousands of lines that all run through
// the same screen; as widgets, each masked to its band and each overlapping all the others,
// they made every paint and every scroll step clip every line against every other. Drawn by
// the pane, lines that cover the same pixels are drawn once. Everything a line does as a
// control stays: the pane finds the line under the mouse on the empty page (a box over a
// line takes the click first, being a widget above the pane), a click selects it and a click
// elsewhere deselects it, the hover highlight lasts until its timer runs out, and its context
// menu is the line's own. The selected line alone has a small widget (QoSConnectorView)
// that takes the keyboard focus: it is what a screen reader announces ("Verbindung"), and it
// cuts the relation on Delete or Ctrl+X. The end marks of the selected line are drawn in the
// gap just off the two box edges, where no box covers them.
//
// Tab walks the boxes in the order of the picture (ObjectPage::NextInPictureOrder), making
// and scrolling to a box's widget when it comes to its turn; within a box it goes through the
// box's fields first.
//
// The view is the page's face to the boxes, the pane and the tests; the work is done by its
// parts: PageBoxes keeps the records and widgets of the boxes, PageLines those of the lines,
// PageScroller the page's size and scroll position, PageFocus the keyboard's walk, and
// DropTarget the cell shown under a dragged box.
//
// The view follows the core by its signals alone: boxes added, moved, resized, deleted,
// linked, the grid grown, the document cleared. A view must go before the document it shows.
class ObjectPageView : public QWidget
{
    Q_OBJECT
public:
    explicit ObjectPageView(ObjectPage* page, QWidget* parent = nullptr);
    ~ObjectPageView() override;

    ObjectPage* page() const { return m_page; }

    // Where the fields of the boxes ask (the precision question of a unit conversion, a bad
    // address or port range) and where the port field reports "Zuviele Ports".
    void setPrompt(UserPrompt* prompt);
    UserPrompt* prompt() const { return m_prompt; }
    void setStatusLine(StatusLine* line);
    StatusLine* statusLine() const { return m_statusLine; }
    // Keeps the bandwidth colours of the page's classes true as the user works.
    ValidationWatcher* validationWatcher() const { return m_watcher; }

    ObjectPane* pane() const { return m_pane; }
    QScrollBar* horizontalScrollBar() const;
    QScrollBar* verticalScrollBar() const;
    void setScrollBarsShown(bool shown);

    // The page in pixels (15 twips to a pixel): Cols × ColWidth by Rows × RowHeight, up to
    // the last cell that a box can stand in.
    QSize pageSize() const;
    QPoint scrollPosition() const;
    void setScrollPosition(const QPoint& position);
    // Returns whether the page moved.
    bool scrollBy(const QPoint& delta);
    // A screen position in page pixels.
    QPointF pagePosition(const QPointF& globalPos) const;

    // The widget of a box while it exists (in or near the visible part).
    QoSObjectBox* box(const QString& name) const;
    // The focus widget of a line, while the line is selected or has the focus.
    QoSConnectorView* connectorView(const QString& name) const;
    int boxWidgetCount() const;
    int connectorWidgetCount() const;
    // How many box widgets were dropped and are not yet gone.
    int droppedWidgetCount() const;
    // Makes and drops widgets for the visible part now rather than when the events are done.
    void realize();
    // Makes widgets for every box of the page, visible or not (for a picture of it).
    void realizeAll();

    void ensureVisible(const QoSObject* object);
    // Scrolls to a box, gives it the keyboard focus and so selects it: its focus control, or
    // with `lastField` the last field that Tab reaches in it.
    void focusObject(QoSObject* object, bool lastField = false);

    // Lines, as the pane draws them and the mouse finds them.
    // The line at a place of the pane (pane coordinates), the nearest of several.
    QoSConnector* connectorAt(const QPoint& panePos) const;
    // The line as drawn, in pane coordinates; null when the page has no such line.
    QLine lineOnPane(const QString& name) const;
    bool isLineHighlighted(const QString& name) const;
    // The mouse moved over a line: it lights up until its timer runs out.
    void hoverLine(QoSConnector* connector);
    // A press on a line: it takes the focus and so is selected.
    void pressLine(QoSConnector* connector);
    // The line's context menu at a screen position, with the line selected.
    void lineMenu(QoSConnector* connector, const QPoint& globalPos);
    // Draws the lines that meet the exposed part (pane coordinates).
    void paintLines(QPainter& painter, const QRect& exposed) const;
    // Draws the cell a dragged box would land in, if it meets the exposed part.
    void paintDropTarget(QPainter& painter, const QRect& exposed) const;

    // While a box is dragged: the cell it would land in and what the drop would do there.
    void showDropTarget(const DropPlan& plan);
    void hideDropTarget();
    // The cell of the shown drop, in page pixels, and how it is drawn; empty when none.
    using DropLook = DropTarget::Look;
    QRect dropTargetRect() const { return m_drop.rect(); }
    DropLook dropTargetLook() const { return m_drop.look(); }

    // Tab leaving a box forward or backward, or the page itself (from == nullptr): the next
    // box in the order of the picture, or out of the page past either end.
    void focusNextBox(const QoSObject* from, bool forward);
    // The keyboard leaves the page for the widget before or after it.
    void leavePage(bool forward);

    // The page's context menu and its commands.
    QMenu* createPageMenu(QWidget* parent);
    void NewClassCommand();
    void NewFilterCommand();
    void PageSizeCommand();

    // Used by the boxes and the lines.
    MoveObject* mover() const { return m_mover; }
    // A widget of a box or line goes: hidden at once, deleted once its events are done.
    void dropWidget(QWidget* widget);
    // Repaints a part of the page (page pixels) where it can be seen.
    void updatePageRect(const QRect& rect);
    void setPinned(QWidget* widget, bool pinned);
    // Called by the pane when its size changed.
    void paneResized();

signals:
    // The page's selection changed (a box or a line).
    void selectionChanged();

protected:
    void changeEvent(QEvent* event) override;

private:
    void adopt(QoSObject* object);
    void adoptConnector(QoSConnector* connector);
    void gridChanged();
    void realizeScrolled();

    ObjectPage* m_page;
    ObjectPane* m_pane;
    PageScroller* m_scroller;
    MoveObject* m_mover;
    ValidationWatcher* m_watcher;
    PageLines* m_lines;
    PageBoxes* m_boxes;
    PageFocus* m_focus;
    DropTarget m_drop;
    UserPrompt* m_prompt = nullptr;
    StatusLine* m_statusLine = nullptr;
};
