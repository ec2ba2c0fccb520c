#pragma once

#include <QIcon>
#include <QString>

// The editor's own drawings for the page tools and its window: class boxes with a title
// bar, a filter funnel, a calculator. Drawn at run time, so they stay sharp at any scale.
namespace ToolIcons {

// By toolbar key: "NewMainClass", "NewSubClass", "NewFilter", "DeleteObject", "DefaultClass",
// "Calc", "optDown", "optUp"; the program's own icon for "Tarnwick".
QIcon icon(const QString& key);

} // namespace ToolIcons
