#pragma once

#include <QPointer>
#include <QWidget>

class QoSClass;

// The plug at the bottom of a class box. Dragging it onto another box hangs that box under
// the class: the drag carries the class's name, and the box it is dropped on links itself.
class PlugBottom final : public QWidget
{
    Q_OBJECT
public:
    explicit PlugBottom(QoSClass* owner, QWidget* parent = nullptr);

    // The data of a plug drag: the name of the class whose plug was dragged.
    static QString MimeType();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QPointer<QoSClass> m_owner;
    QPoint m_pressPos;
    bool m_pressed = false;
};
