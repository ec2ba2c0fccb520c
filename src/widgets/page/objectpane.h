#pragma once

#include <QWidget>

class ObjectPageView;

// The visible part of a page's surface. It draws the cells (the class rows a shade apart
// from the filter rows) only where they are exposed, holds the boxes and lines that the view
// made for this part, and takes what lands on the empty page: a click clears the selection,
// the wheel scrolls (sideways with Shift), the context menu adds boxes or sets the page size.
class ObjectPane final : public QWidget
{
    Q_OBJECT
public:
    explicit ObjectPane(ObjectPageView* view);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    ObjectPageView* m_view;
};
