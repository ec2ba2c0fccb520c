#pragma once

#include <QtGlobal>

// Classes stand in rows 0 to ClassRows - 1 of a page, filters below them: a class in a lower
// row could not be read back from qos.txt.
inline constexpr qint32 ClassRows = 4;

// Geometry of a page in twips (15 twips to a pixel) and its size in cells.
struct ObjectPageProperties
{
    qint32 ObjectWidth = 1755;
    qint32 ObjectHeight = 1275;
    qint32 Rows = 5;
    qint32 Cols = 6;
    qint32 RowHeight = 1785;
    qint32 ColWidth = 1931;

    // Height first: callers pass the height, then the width. The pitches are 40 % taller
    // and 10 % wider than a box; the room between boxes is where connectors run.
    void SetObjectDimensions(qint32 height, qint32 width);
};
