#pragma once

#include <QHash>
#include <QPointer>
#include <QSet>
#include <QWidget>

class MoveObject;
class ObjectPage;
class ObjectPane;
class QMenu;
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
// Boxes and lines are child widgets of the pane, not items of a graphics scene: a box is a
// handful of ordinary input fields that must take the keyboard focus and the accessibility
// tree as they are, and the widgets map one to one onto the controls the boxes are made of.
// A page may hold thousands of boxes and be read as millions of cells wide, so the view
// never builds what cannot be seen: it keeps a record of every box and line of the page and
// makes widgets only for those in or near the visible part, dropping them again as the page
// scrolls (never one that has the focus or is being dragged). The core objects hold every
// value, so nothing is lost when a widget goes. The pane itself is only as large as the
// window; the page is drawn into it at the scroll position.
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

    ObjectPane* pane() const { return m_pane; }
    QScrollBar* horizontalScrollBar() const { return m_hscrPane; }
    QScrollBar* verticalScrollBar() const { return m_vscrPane; }
    void setScrollBarsShown(bool shown);

    // The page in pixels (15 twips to a pixel): Cols × ColWidth by Rows × RowHeight, up to
    // the last cell that a box can stand in.
    QSize pageSize() const;
    QPoint scrollPosition() const { return m_offset; }
    void setScrollPosition(const QPoint& position);
    // Returns whether the page moved.
    bool scrollBy(const QPoint& delta);
    // A screen position in page pixels.
    QPointF pagePosition(const QPointF& globalPos) const;

    // The widget of a box or line while it exists (in or near the visible part).
    QoSObjectBox* box(const QString& name) const;
    QoSConnectorView* connectorView(const QString& name) const;
    int boxWidgetCount() const;
    int connectorWidgetCount() const;
    // Makes and drops widgets for the visible part now rather than when the events are done.
    void realize();
    // Makes widgets for every box and line of the page, visible or not (for a picture of it).
    void realizeAll();

    void ensureVisible(const QoSObject* object);
    // Scrolls to a box, gives it the keyboard focus and so selects it.
    void focusObject(QoSObject* object);

    // The page's context menu and its commands.
    QMenu* createPageMenu(QWidget* parent);
    void NewClassCommand();
    void NewFilterCommand();
    void PageSizeCommand();

    // Used by the boxes.
    MoveObject* mover() const { return m_mover; }
    void setPinned(QWidget* widget, bool pinned);
    // Lines lie behind every box; a selected line comes to the front of the lines, but not
    // over a box, whose plug and edges must stay within reach.
    void stackLine(QWidget* line, bool selected);
    int typePosition(const QString& filterName) const { return m_typePositions.value(filterName); }
    void setTypePosition(const QString& filterName, int position) { m_typePositions.insert(filterName, position); }
    // Called by the pane when its size changed.
    void paneResized();

signals:
    // The page's selection changed (a box or a line).
    void selectionChanged();

protected:
    void changeEvent(QEvent* event) override;

private:
    struct BoxRecord {
        QPointer<QoSObject> object;
        QPointer<QoSObjectBox> widget;
    };
    struct LineRecord {
        QPointer<QoSConnector> connector;
        QPointer<QoSConnectorView> widget;
    };

    void fitCells();
    void sizeBox(QoSObject* object);
    void adopt(QoSObject* object);
    void adoptConnector(QoSConnector* connector);
    void removeBox(const QString& name);
    void removeLine(const QString& name);
    void objectMoved(QoSObject* object);
    void connectorMoved(QoSConnector* connector);
    void objectSelected(QoSObject* object, bool selected);
    void focusChanged(QWidget* old, QWidget* now);
    QoSObjectBox* boxAround(QWidget* widget) const;
    void gridChanged();
    void updateScrollBars();
    void scrollBarMoved();
    void scheduleRealize();
    void realizeIn(const QRect& makeArea, const QRect& keepArea);
    QoSObjectBox* makeBox(QoSObject* object);
    QoSConnectorView* makeLine(QoSConnector* connector);
    void dropWidget(QWidget* widget);
    bool isPinned(QWidget* widget) const;
    QRect boxRect(const QoSObject* object) const;       // page pixels
    QRect lineRect(const QoSConnector* connector) const; // page pixels
    QRect visibleRect() const;                            // page pixels
    QRect makeArea() const;
    QRect keepArea() const;

    ObjectPage* m_page;
    ObjectPane* m_pane;
    QScrollBar* m_hscrPane;
    QScrollBar* m_vscrPane;
    QWidget* m_corner;
    MoveObject* m_mover;
    ValidationWatcher* m_watcher;
    UserPrompt* m_prompt = nullptr;
    StatusLine* m_statusLine = nullptr;
    QHash<QString, BoxRecord> m_boxes;
    QHash<QString, LineRecord> m_lines;
    QHash<QString, int> m_typePositions;
    QSet<QWidget*> m_pinned;
    QPoint m_offset;
    QSize m_shownPitch; // cell size and page size as last drawn
    QSize m_shownSize;
    bool m_scrollBarsShown = true;
    bool m_realizeScheduled = false;
    bool m_updatingScrollBars = false;
};
