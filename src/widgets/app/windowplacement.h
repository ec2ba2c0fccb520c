#pragma once

#include "app/appproperties.h"

#include <QList>
#include <QRect>

class QWidget;

// Where a window stands, in the form config.ini keeps it: the normal rectangle, also while the
// window is maximised or minimised, and the state.
namespace WindowPlacement {

// The available geometry of every screen, the primary first.
QList<QRect> Screens();
// The window's place and state; the other settings keep their defaults.
WindowSettings Of(const QWidget* window);
// Puts the window into its normal rectangle, then maximises it if it was.
void Restore(QWidget* window, const WindowSettings& settings);

} // namespace WindowPlacement
