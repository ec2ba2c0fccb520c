#pragma once

#include "inputs/colors.h"

#include <QColor>

class QPalette;

// A core colour on screen: plain RGB as it is, a system colour from the widget's palette.
QColor PaletteColor(Colors::Rgb color, const QPalette& palette);
