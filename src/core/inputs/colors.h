#pragma once

#include <QtGlobal>

// Colours as 0xRRGGBB. The core cannot use QColor (it does not link QtGui); a value with
// the top bit set names a system colour by its index, as the desktop scheme defines it.
namespace Colors {
using Rgb = quint32;
constexpr Rgb SystemColorFlag = 0x80000000u;
constexpr Rgb System(quint32 index)
{
    return SystemColorFlag | index;
}
constexpr bool IsSystem(Rgb c)
{
    return (c & SystemColorFlag) != 0;
}

constexpr Rgb White = 0xFFFFFF;
constexpr Rgb Black = 0x000000;
constexpr Rgb LightRed = 0xFF8080;
constexpr Rgb Silver = 0xC0C0C0;
constexpr Rgb WindowBackground = System(5);
constexpr Rgb WindowText = System(8);
constexpr Rgb ActiveCaption = System(2);
constexpr Rgb CaptionText = System(9);
constexpr Rgb InactiveCaption = System(3);
constexpr Rgb InactiveCaptionText = System(19);
} // namespace Colors
