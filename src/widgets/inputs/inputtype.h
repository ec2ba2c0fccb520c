#pragma once

#include "inputs/typefield.h"

#include <QPointer>
#include <QWidget>

class QLineEdit;
class QMenu;
class QToolButton;

// A filter's type: the box steps through "", "client" and "server" on the button or a
// double click; its context menu chooses one directly. Shows and edits a TypeField, its own
// or the one a filter owns, which also keeps the step counter.
class InputType final : public QWidget
{
    Q_OBJECT
public:
    explicit InputType(QWidget* parent = nullptr);
    explicit InputType(TypeField* field, QWidget* parent = nullptr);

    TypeField* field() const { return m_field; }
    // Binds to a field owned elsewhere; nullptr returns to the widget's own field.
    void setField(TypeField* field);

signals:
    void Change();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showText();

    TypeField m_own;
    QPointer<TypeField> m_field;
    QLineEdit* m_txtType;
    QToolButton* m_cmdType;
    QMenu* m_mnuType;
};
