#pragma once

#include "inputs/portfield.h"
#include "leavecheck.h"

#include <QPointer>
#include <QWidget>

class QLabel;
class QLineEdit;
class StatusLine;
class UserPrompt;

// A filter's port list with the count of single ports it stands for beside it.
class InputPort final : public QWidget, public LeaveCheck
{
    Q_OBJECT
public:
    explicit InputPort(QWidget* parent = nullptr);
    explicit InputPort(PortField* field, QWidget* parent = nullptr);

    PortField* field() const { return m_field; }
    void setField(PortField* field);
    // Where "Zuviele Ports" goes; without one, to the status bar of the main window.
    void setStatusLine(StatusLine* status) { m_status = status; }
    // Shows the range message; without one it comes as a dialog.
    void setPrompt(UserPrompt* prompt) { m_prompt = prompt; }

    // The check on leaving: too many ports, or a first port out of range.
    bool CheckLeave() override;

signals:
    void Change();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showPort();
    void checkPorts() { CheckLeave(); }
    void showTooManyPorts();
    void clearTooManyPorts();

    PortField m_own;
    QPointer<PortField> m_field;
    StatusLine* m_status = nullptr;
    UserPrompt* m_prompt = nullptr;
    QLineEdit* m_txtPort;
    QLabel* m_lblFilterCount;
    bool m_complaining = false;
};
