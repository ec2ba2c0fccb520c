#pragma once

#include "inputs/priofield.h"

#include <QPointer>
#include <QWidget>

class QLineEdit;
class QToolButton;

// A class priority between a decrement and an increment button. Shows and edits a PrioField,
// its own or the one a class owns.
class InputPrio final : public QWidget
{
    Q_OBJECT
public:
    explicit InputPrio(QWidget* parent = nullptr);
    explicit InputPrio(PrioField* field, QWidget* parent = nullptr);

    PrioField* field() const { return m_field; }
    // Binds to a field owned elsewhere; nullptr returns to the widget's own field.
    void setField(PrioField* field);

signals:
    void Change();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showValue();
    void showAppearance();

    PrioField m_own;
    QPointer<PrioField> m_field;
    QToolButton* m_cmdPrioDec;
    QLineEdit* m_txtPrio;
    QToolButton* m_cmdPrioInc;
};
