#pragma once

#include "inputs/ipfield.h"
#include "leavecheck.h"

#include <QPointer>
#include <QWidget>

class QLineEdit;
class QMenu;
class UserPrompt;

// An IPv4 address with optional mask bits: the address box and the mask box side by side,
// with an edit menu that copies and pastes both as one text ("10.0.0.0/8"). Every paste goes
// through the menu's rule, so a pasted address is split into address and mask bits.
class InputIP final : public QWidget, public LeaveCheck
{
    Q_OBJECT
public:
    explicit InputIP(QWidget* parent = nullptr);
    explicit InputIP(IpField* field, QWidget* parent = nullptr);

    IpField* field() const { return m_field; }
    void setField(IpField* field);
    // Shows the message about a bad address; without one it comes as a dialog.
    void setPrompt(UserPrompt* prompt) { m_prompt = prompt; }

    // The commands of the edit menu.
    void Copy();
    void Cut();
    void Paste();
    void Delete();
    // The paste rule: a text the writer would refuse is refused with its reason; any other
    // is split into address and mask bits, and the focus goes to the address.
    void PasteText(const QString& text);

    // The address check, as when the focus leaves the address box.
    bool CheckLeave() override;

signals:
    void Change();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenu();
    void showMenu(QLineEdit* box, const QPoint& globalPos);
    void showText();
    void checkAddress() { CheckLeave(); }
    QString combinedText() const;

    IpField m_own;
    QPointer<IpField> m_field;
    UserPrompt* m_prompt = nullptr;
    QLineEdit* m_txtIP;
    QLineEdit* m_txtMaskBits;
    QMenu* m_mnuEdit;
    QPointer<QLineEdit> m_menuBox; // the box the edit menu was opened on
    bool m_complaining = false;
};
