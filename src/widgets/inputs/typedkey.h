#pragma once

#include <QChar>

class QKeyEvent;

// The character a key press types, as the key filters of the input boxes judge it:
// Backspace is 8 and Ctrl with a letter is its control code (Ctrl+C 3, Ctrl+V 22, Ctrl+X 24).
// Keys that type nothing (arrows, Delete, Tab, Return, function keys) give a null QChar
// and are left to the box.
QChar TypedCharacter(const QKeyEvent* event);
