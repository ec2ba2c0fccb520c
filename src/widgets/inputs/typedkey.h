#pragma once

#include <QChar>

class QKeyEvent;
class QLineEdit;
class QString;

// The character a key press types, as the key filters of the input boxes judge it:
// Backspace is 8 and Ctrl with a letter is its control code (Ctrl+C 3, Ctrl+V 22, Ctrl+X 24).
// Keys that type nothing (arrows, Delete, Tab, Return, function keys) give a null QChar
// and are left to the box.
QChar TypedCharacter(const QKeyEvent* event);

// Puts a refused edit back to the text the box had, with the caret where it stood before the
// edit, so that the next key goes where the user expects.
void RevertEdit(QLineEdit* edit, const QString& before);
