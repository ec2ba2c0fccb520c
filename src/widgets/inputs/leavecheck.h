#pragma once

class QWidget;

// A field whose value is checked when the focus leaves it (the address, the port list). The
// check also holds when the user leaves the field by switching the page or by a command of the
// window that acts on the value: the window asks the field that holds the focus first.
class LeaveCheck
{
public:
    virtual ~LeaveCheck() = default;

    // Runs the check as leaving the field would. When it fails the field says why, keeps the
    // focus, and false is returned.
    virtual bool CheckLeave() = 0;

    // The check of the field that holds the focus in window; true when that is no such field.
    static bool FocusedFieldLetsGo(const QWidget* window);
};
