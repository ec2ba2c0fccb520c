#pragma once

#include <QList>

class QoSObject;

// The order in which a page's picture is read: row by row from the top, each row left to
// right, boxes that share a cell in the order they were added. The file is written in this
// order, and the keyboard walks the picture in it. The boxes' columns must be settled.
namespace PictureOrder {

// The boxes, given in the order they were added, sorted into the picture's order.
QList<QoSObject*> Sorted(const QList<QoSObject*>& boxes);
// The box after `from` in that order, or before it when not going forward; nothing past
// either end or for a box not among them. Without `from`, the first box (forward) or the last.
QoSObject* Next(const QList<QoSObject*>& boxes, const QoSObject* from, bool forward);

} // namespace PictureOrder
