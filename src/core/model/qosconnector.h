#pragma once

#include "base/watched.h"

#include <QObject>
#include <QPointer>

class Document;
class ObjectPage;
class QoSObject;

// The line from a parent's bottom edge to a child's top edge: the child's upper connector,
// named "LineTop" followed by the child's name. Deleting it cuts the relation.
class QoSConnector final : public QObject
{
    Q_OBJECT
    TARNWICK_WATCHED
public:
    QoSConnector(Document* document, QoSObject* bottom);

    QString Name() const { return m_name; }
    ObjectPage* GetObjectPage() const { return m_page; }
    QoSObject* BottomQosObject() const { return m_bottom; }

    int x1() const { return m_x1; }
    int y1() const { return m_y1; }
    int x2() const { return m_x2; }
    int y2() const { return m_y2; }
    // The control's rectangle in twips after Move.
    int Left() const { return m_left; }
    int Top() const { return m_top; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    // Sets the end points, snapped down to whole pixels (15 twips), and lays the control out
    // with a margin around the line and a minimum size.
    void Move(int x1, int y1, int x2, int y2);

    bool Selected() const { return m_selected; }
    void SetSelected(bool selected);

    // Cuts the relation: the lower box leaves its parent's children and loses this connector;
    // it stays on the page without a parent.
    void EditCut();

    static constexpr int MarginX = 60;
    static constexpr int MarginY = 60;
    static constexpr int MinWidth = 135;
    static constexpr int MinHeight = 135;

signals:
    void geometryChanged();
    void selectedChanged(bool selected);

private:
    Document* m_document;
    QString m_name;
    ObjectPage* m_page; // pages live as long as the document
    QPointer<QoSObject> m_bottom;
    int m_x1 = 0, m_y1 = 0, m_x2 = 0, m_y2 = 0;
    int m_left = 0, m_top = 0, m_width = MinWidth, m_height = MinHeight;
    bool m_selected = false;
};
