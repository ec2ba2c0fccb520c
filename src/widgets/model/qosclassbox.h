#pragma once

#include "qosobjectbox.h"

#include <array>

class InputBandwidth;
class InputPrio;
class PlugBottom;
class QFrame;
class QLabel;
class QToolButton;
class QoSClass;

// The box of a class: caption, minimum and maximum, priority, direction, the check and
// calculator buttons, the default-class mark, and the plug from which a child is linked.
class QoSClassBox final : public QoSObjectBox
{
    Q_OBJECT
public:
    QoSClassBox(QoSClass* qosClass, ObjectPageView* view, QWidget* parent);

    QoSClass* qosClass() const;
    void setPrompt(UserPrompt* prompt) override;
    void setStatusLine(StatusLine* line) override;

protected:
    QString kindName() const override { return QStringLiteral("Klasse"); }
    QStringList rowLabels() const override;
    QColor background() const override;

private:
    void showProperty(const QString& name);
    void check();
    // The tooltips of a red minimum or maximum say why it is red.
    void showExplanations();
    void followExplanations();

    InputBandwidth* m_txtMin;
    InputBandwidth* m_txtMax;
    InputPrio* m_txtPrio;
    QLabel* m_lblDirection;
    QToolButton* m_cmdCheck;
    QToolButton* m_cmdCalc;
    PlugBottom* m_plug;
    std::array<QFrame*, 2> m_fraDefaultClass;
};
