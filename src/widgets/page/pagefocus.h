#pragma once

#include <QObject>

class ObjectPageView;
class PageBoxes;
class QoSObject;
class QoSObjectBox;
class QWidget;

// The keyboard on one page. Tab walks the boxes in the order of the picture
// (ObjectPage::NextInPictureOrder), making and scrolling to a box's widget when it comes to
// its turn; within a box it goes through the box's fields first. A box that takes the focus
// becomes the page's selection.
class PageFocus final : public QObject
{
    Q_OBJECT
public:
    PageFocus(ObjectPageView* view, PageBoxes* boxes);

    // Scrolls to a box, gives it the keyboard focus and so selects it: its focus control, or
    // with `lastField` the last field that Tab reaches in it.
    void focusObject(QoSObject* object, bool lastField);
    // Tab leaving a box forward or backward, or the page itself (from == nullptr).
    void focusNextBox(const QoSObject* from, bool forward);
    // The keyboard leaves the page for the widget before or after it.
    void leavePage(bool forward);
    // The box whose widget holds the keyboard focus, if any.
    QoSObject* focusedObject() const;

private:
    void focusChanged(QWidget* old, QWidget* now);
    QoSObjectBox* boxAround(QWidget* widget) const;

    ObjectPageView* m_view;
    PageBoxes* m_boxes;
};
