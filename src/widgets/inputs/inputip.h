#pragma once

#include "inputs/ipfield.h"

#include <QPointer>
#include <QWidget>

class QLineEdit;
class QMenu;
class UserPrompt;

// An IPv4 address with optional mask bits: the address box and the mask box side by side,
// with an edit menu that copies and pastes both as one text ("10.0.0.0/8").
class InputIP final : public QWidget
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

signals:
    void Change();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenu();
    void showMenu(QLineEdit* box, const QPoint& globalPos);
    void showText();
    void checkAddress();
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
