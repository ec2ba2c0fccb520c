#pragma once

#include <QFont>
#include <QSize>

// Places and sizes of the controls inside the class and filter boxes, in pixels, measured
// once for a font. The controls have fixed places; the box sizes follow from them:
//   class box:  width = 2 × title offset + title width, height = bottom of the plug;
//   filter box: width = title width + title offset + 1, height = bottom of the option field + 6.
// Both kinds share one title width, so that the boxes of a column line up and every line
// runs straight down the middle.
struct BoxMetrics
{
    int titleOffset = 3; // left and top offset of the title bar
    int gap = 2;         // between rows and between controls of a row
    int titleWidth = 0;
    int titleHeight = 0;
    int rowHeight = 0;   // height of a row of input fields
    int labelWidth = 0;  // the row labels ("Min", "Port", ...) in front of the fields
    int buttonWidth = 0; // the small check and calculator buttons
    int directionWidth = 0;
    int bandwidthDigits = 7;
    int typeWidth = 0; // the type field in the filter's last row; the option takes the rest
    int plugWidth = 18;
    int plugHeight = 7;

    // Top of input row 0, 1 or 2.
    int rowTop(int row) const { return titleOffset + titleHeight + gap + row * (rowHeight + gap); }
    // Left edge and width of the field behind a row label.
    int fieldLeft() const { return titleOffset + labelWidth + gap; }
    int fieldWidth() const { return titleWidth - labelWidth - gap; }

    QSize classBox() const;
    QSize filterBox() const;
    // The larger of the two: what one cell must hold.
    QSize largestBox() const;

    // The metrics for a font, measured on first use.
    static const BoxMetrics& For(const QFont& font);
};
