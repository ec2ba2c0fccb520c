#include "palettecolor.h"

#include <QPalette>

QColor PaletteColor(Colors::Rgb color, const QPalette& palette)
{
    if (!Colors::IsSystem(color))
        return QColor((color >> 16) & 0xFF, (color >> 8) & 0xFF, color & 0xFF);
    switch (color & ~Colors::SystemColorFlag) {
    case 2: // active caption
        return palette.color(QPalette::Active, QPalette::Highlight);
    case 3: // inactive caption
        // Many schemes give inactive selections the active colour; a caption must still
        // tell active from inactive, so such a scheme gets its quiet mid tone instead.
        if (palette.color(QPalette::Inactive, QPalette::Highlight) !=
            palette.color(QPalette::Active, QPalette::Highlight))
            return palette.color(QPalette::Inactive, QPalette::Highlight);
        return palette.color(QPalette::Mid);
    case 5: // window background: the background of text boxes
        return palette.color(QPalette::Base);
    case 8: // window text
        return palette.color(QPalette::Text);
    case 9: // caption text
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    case 15: // button face
        return palette.color(QPalette::Button);
    case 18: // button text
        return palette.color(QPalette::ButtonText);
    case 19: // inactive caption text
        if (palette.color(QPalette::Inactive, QPalette::Highlight) !=
            palette.color(QPalette::Active, QPalette::Highlight))
            return palette.color(QPalette::Inactive, QPalette::HighlightedText);
        return palette.color(QPalette::WindowText);
    default:
        return palette.color(QPalette::Window);
    }
}
