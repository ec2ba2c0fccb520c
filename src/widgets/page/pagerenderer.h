#pragma once

#include <QImage>
#include <QString>

class ObjectPage;

// The picture of a page as the editor shows it, at one pixel per 15 twips, drawn with the
// editor's own widgets (with the bandwidth colours checked as the editor keeps them).
// A page too large for one image gives an empty image and a German explanation instead of
// asking for memory without bound.
QImage RenderObjectPage(ObjectPage* page, QString* error = nullptr);

// The largest picture: each side, and the whole in pixels (4 bytes each).
constexpr int MaxRenderSide = 32767;
constexpr qint64 MaxRenderPixels = 50'000'000;
