#include "leavecheck.h"

#include <QWidget>

bool LeaveCheck::FocusedFieldLetsGo(const QWidget* window)
{
    // The window's own focus child: the application may not count the window as active (just
    // after a message box, or without a window manager), while the field still takes the keys.
    for (QWidget* w = window->focusWidget(); w; w = w->parentWidget()) {
        if (auto* field = dynamic_cast<LeaveCheck*>(w))
            return field->CheckLeave();
        if (w == window)
            break;
    }
    return true;
}
