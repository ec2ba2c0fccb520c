#pragma once

#include <QPointer>
#include <QString>

class QoSClass;
class QoSObject;

// What letting a dragged box go with its top-left corner at (left, top) would do, worked out
// without doing anything: the drop itself (QoSObject::MoveObject) carries out exactly this
// plan, and the page view shows it while the box is still being dragged.
//
// The box lands in the cell under its top-left corner. A free cell takes it; a cell with
// another box in it hangs it under that box, if that box is a class that can take it. Every
// reason to refuse is one entry of an ordered list (dropplan.cpp): the first entry that
// refuses decides, and its message is the one the user reads.
struct DropPlan
{
    enum class Outcome {
        Stay,    // let go over its own cell: it stays where it is
        Move,    // goes to the free cell
        Link,    // goes back to its cell and hangs under Parent
        Refused, // goes back to its cell; nothing else changes
    };

    Outcome outcome = Outcome::Refused;
    // The cell under the top-left corner. Not valid when the place is no cell at all (beyond
    // 32 bits, or a page without a grid): the box then goes back without a word.
    bool hasCell = false;
    int x = 0;
    int y = 0;
    // The box found in that cell, if any (the first one added, when a cell holds several).
    QPointer<QoSObject> found;
    // For Link: the class the box would hang under, and whether that class stands in the
    // dragged class's own subtree, so that it is cut loose first and the two swap places in
    // the tree.
    QPointer<QoSClass> parent;
    bool swap = false;
    // For Link: the box already hangs under Parent, so the drop puts it back and changes
    // nothing; it must not mark the document modified.
    bool alreadyLinked = false;
    // For Refused: what the user is told; empty for a drop that is put back without a word.
    QString message;

    bool IsRefused() const { return outcome == Outcome::Refused; }

    static DropPlan For(const QoSObject& dragged, double left, double top);
};
