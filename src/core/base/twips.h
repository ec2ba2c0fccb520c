#pragma once

#include <QtGlobal>
#include <cmath>

// Positions and sizes in the model are twips, as in the file and config.ini: 15 to a pixel.
namespace Twips {

inline constexpr int PerPixel = 15;

// Exact, for drawing and dragging at fractions of a pixel.
constexpr double ToPixelsF(double twips)
{
    return twips / PerPixel;
}

// A position in whole pixels, rounded down: -7 twips is pixel -1, not 0.
inline int ToPixels(double twips)
{
    return int(std::floor(twips / PerPixel));
}

// A length in whole pixels, cut like an integer division.
template <typename T> constexpr T LengthToPixels(T twips)
{
    return twips / PerPixel;
}

template <typename T> constexpr T FromPixels(T pixels)
{
    return pixels * PerPixel;
}

// A point on the pixel grid, so that lines are drawn where the model says they are.
constexpr int SnapToPixel(int twips)
{
    return twips / PerPixel * PerPixel;
}

} // namespace Twips
