#pragma once

#include "inputs/bandwidthfield.h"

#include <QPointer>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QMenu;
class StatusLine;
class UserPrompt;

// A bandwidth: number box, unit label with its unit menu, and the lock check box.
// Shows and edits a BandwidthField, its own or one that a class or the common page owns.
//
// The unit menu opens with a right click on the unit, or from the keyboard with the menu key
// or Shift+F10 on the unit, which Tab reaches. A locked field takes no edits and has no menu.
class InputBandwidth final : public QWidget
{
    Q_OBJECT
public:
    explicit InputBandwidth(QWidget* parent = nullptr);
    explicit InputBandwidth(BandwidthField* field, QWidget* parent = nullptr);

    BandwidthField* field() const { return m_field; }
    // Binds to a field owned elsewhere; nullptr returns to the widget's own field.
    void setField(BandwidthField* field);
    // Asks the precision question; without one the question comes as a dialog.
    void setPrompt(UserPrompt* prompt) { m_prompt = prompt; }
    // Where a number refused while typing is explained; without one, in the status bar of the
    // main window. The number box's tooltip says it too.
    void setStatusLine(StatusLine* line) { m_status = line; }
    // The name a screen reader gives the number box, as the label beside the field says.
    void setLabel(const QString& label);
    // How many digits the number box shows without scrolling.
    void setNumberDigits(int digits);
    // A host that has no use for the lock box hides it, whatever the field's ShowLock says.
    void setLockAllowed(bool allowed);
    // Why the field is marked invalid, empty while it is not: the number box's tooltip and
    // the description a screen reader gives. A number refused while typing still comes first.
    void setExplanation(const QString& text);
    QString explanation() const { return m_explanation; }

signals:
    void Change();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenu();
    void showValue();
    void showUnit();
    void showBackground();
    void showLock();
    void showEditable();
    void showUnitFocus(bool focused);
    void openUnitMenu(const QPoint& globalPos);
    void edited(const QString& text);
    void pasteNumber(const QString& text);
    void clearRangeNotice();
    // The refusal, else the explanation, else the tooltip the number box had before either.
    void showTip();
    void keepOrdinaryTip();
    void convertTo(const QString& unit);

    BandwidthField m_own;
    QPointer<BandwidthField> m_field;
    UserPrompt* m_prompt = nullptr;
    StatusLine* m_status = nullptr;
    bool m_lockAllowed = true;
    bool m_pasting = false; // the number arrives whole, not key by key
    QString m_rangeNotice;  // the refusal the status line and the tooltip show
    QString m_explanation;  // why the field is red
    QString m_numberTip;    // the number box's tooltip before either of them
    QLineEdit* m_txtMin;
    QLabel* m_lblMinUnit;
    QCheckBox* m_chkLocked;
    QMenu* m_mnuUnits;
};
