#pragma once

#include <QWidget>

class ObjectPageView;

// The visible part of a page's surface. It draws the cells (the class rows a shade apart
// from the filter rows) and the connector lines only where they are exposed, holds the boxes
// that the view made for this part, and takes what lands on the empty page: a click on a
// line selects it and a click elsewhere clears the selection, the mouse lights lines up, the
// wheel scrolls (sideways with Shift), the context menu is the line's own or adds boxes and
// sets the page size. Tab on the page goes to the first box.
class ObjectPane final : public QWidget
{
    Q_OBJECT
public:
    explicit ObjectPane(ObjectPageView* view);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    ObjectPageView* m_view;
};
