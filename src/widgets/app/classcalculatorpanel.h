#pragma once

#include <QWidget>

class ClassCalculator;
class InputBandwidth;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;
class StatusLine;
class UserPrompt;

// The class calculator as a panel of the main window: shows the calculator's figures for
// the selected class and forwards the clicks. Empty and disabled while no class is selected.
class ClassCalculatorPanel final : public QWidget
{
    Q_OBJECT
public:
    explicit ClassCalculatorPanel(ClassCalculator* calculator, QWidget* parent = nullptr);

    void setPrompt(UserPrompt* prompt);
    void setStatusLine(StatusLine* line);
    ClassCalculator* calculator() const { return m_calc; }

private:
    void showFigures();

    ClassCalculator* m_calc;
    QLabel* m_lblClass;
    QLineEdit* m_txtParentMax;
    QLineEdit* m_txtUsesMin;
    QPushButton* m_lblAvailMin;
    QLineEdit* m_txtAvailableMin;
    QPushButton* m_lblFreeMin;
    QLineEdit* m_txtFreeMin;
    InputBandwidth* m_txtNewMin;
    QLineEdit* m_txtNewMinAfter;
    QCheckBox* m_chlAutoApply;
    QPushButton* m_cmdApply;
    QToolButton* m_cmdMoveUp;
    QToolButton* m_cmdMoveDown;
    QToolButton* m_cmdMoveLeft;
    QToolButton* m_cmdMoveRight;
    QList<QWidget*> m_figures;
};
