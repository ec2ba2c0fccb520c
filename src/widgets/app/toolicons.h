#pragma once

#include <QIcon>

// The editor's own drawings for the page tools and its window: class boxes with a title
// bar, a filter funnel, a calculator, the two directions, a box with a warning sign, and the program's own
// icon. Drawn at run time, so they stay sharp at any scale.
namespace ToolIcons {

enum class Picture {
    NewMainClass,
    NewSubClass,
    NewFilter,
    DeleteObject,
    DefaultClass,
    Calc,
    Down,
    Up,
    Problems,
    Program
};

QIcon icon(Picture picture);

} // namespace ToolIcons
