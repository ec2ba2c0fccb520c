#pragma once

#include "model/qosobject.h"

#include <QPointer>
#include <QWidget>

class ObjectPageView;
class QLabel;
class QMenu;
class StatusLine;
class TittleBar;
class UserPrompt;
struct BoxMetrics;

// What the class box and the filter box share: the title bar, the surface label, the hidden
// focus control that takes the box's keys, the context menu, the frame that shows the
// selection, the mouse that drags the box and the drop of a plug that links it.
//
// A box is a view of its core object: every edit goes to the object, and the box repaints
// from the object's signals. The page view makes boxes only where they can be seen and drops
// them again; nothing is lost, because the object holds every value.
class QoSObjectBox : public QWidget
{
    Q_OBJECT
public:
    QoSObjectBox(QoSObject* object, ObjectPageView* view, QWidget* parent);

    QoSObject* object() const { return m_object; }
    TittleBar* titleBar() const { return m_title; }
    QWidget* focusControl() const { return m_dummy; }
    // What Tab reaches in the box, in order: the focus control, then the fields.
    QList<QWidget*> tabStops() const;

    virtual void setPrompt(UserPrompt* prompt) = 0;
    virtual void setStatusLine(StatusLine* line) = 0;

    // The object is about to go: the box stops talking to it.
    virtual void detach();

    // The context menu with the edit entries; the caller shows it and owns it.
    QMenu* createContextMenu(QWidget* parent);
    // The drop of a plug: hangs this box under the class of that name. Refused (no drop
    // effect) where the object refuses the plug.
    bool acceptsPlug(const QString& className) const;
    void dropPlug(const QString& className);

protected:
    const BoxMetrics& metrics() const;
    // The kind as a user names it: "Klasse" or "Filter".
    virtual QString kindName() const = 0;
    virtual void addMenuEntries(QMenu*) {}
    // Row labels painted in front of the fields.
    virtual QStringList rowLabels() const = 0;
    virtual QColor background() const;

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    // Tab past the last field (Shift+Tab before the first) goes on to the next box of the
    // picture.
    bool focusNextPrevChild(bool next) override;

    // Called by the derived box once its controls exist. Only the box itself takes drops:
    // the fields inside would swallow a plug otherwise.
    void finishChildren();

    QPointer<QoSObject> m_object;
    QPointer<ObjectPageView> m_view;
    QWidget* m_dummy;
    QLabel* m_label1;
    TittleBar* m_title;

private:
    void showSelection(bool selected);
    void showCaption(const QString& caption);
    bool handleKey(QKeyEvent* event);
};
