#pragma once

#include "inputs/directionfield.h"

#include <QPointer>
#include <QWidget>

class QLabel;

// A filter's direction as a clickable label. A click (or Space on the focused label) only
// reports Change; the host decides the new direction.
class InputDirection final : public QWidget
{
    Q_OBJECT
public:
    explicit InputDirection(QWidget* parent = nullptr);
    explicit InputDirection(DirectionField* field, QWidget* parent = nullptr);

    DirectionField* field() const { return m_field; }
    void setField(DirectionField* field);

signals:
    void Change();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showText();

    DirectionField m_own;
    QPointer<DirectionField> m_field;
    QLabel* m_lblDirection;
};
