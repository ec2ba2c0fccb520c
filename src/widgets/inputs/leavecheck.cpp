#include "leavecheck.h"

#include <QApplication>
#include <QWidget>

bool LeaveCheck::FocusedFieldLetsGo()
{
    for (QWidget* w = QApplication::focusWidget(); w; w = w->parentWidget()) {
        if (auto* field = dynamic_cast<LeaveCheck*>(w))
            return field->CheckLeave();
        if (w->isWindow())
            break;
    }
    return true;
}
