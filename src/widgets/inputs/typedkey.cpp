#include "typedkey.h"

#include <QKeyEvent>
#include <QLineEdit>

QChar TypedCharacter(const QKeyEvent* event)
{
    const int key = event->key();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (key == Qt::Key_Backspace)
        return QChar(8);
    // AltGr arrives as Ctrl+Alt on some systems and types ordinary characters.
    if ((modifiers & Qt::ControlModifier) && !(modifiers & Qt::AltModifier) && key >= Qt::Key_A &&
        key <= Qt::Key_Z)
        return QChar(key - Qt::Key_A + 1);
    const QString text = event->text();
    if (text.isEmpty() || !text.at(0).isPrint())
        return QChar();
    return text.at(0);
}

void RevertEdit(QLineEdit* edit, const QString& before)
{
    const qsizetype caret = edit->cursorPosition() - (edit->text().size() - before.size());
    edit->setText(before);
    edit->setCursorPosition(int(qBound(qsizetype(0), caret, before.size())));
}
