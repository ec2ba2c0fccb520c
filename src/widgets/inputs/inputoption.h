#pragma once

#include "inputs/optionfield.h"

#include <QPointer>
#include <QWidget>

class QLineEdit;
class QMenu;
class QToolButton;

// A filter's option, chosen from a menu below the box or stepped with the arrow keys. Shows
// and edits an OptionField, its own or the one a filter owns.
class InputOption final : public QWidget
{
    Q_OBJECT
public:
    explicit InputOption(QWidget* parent = nullptr);
    explicit InputOption(OptionField* field, QWidget* parent = nullptr);

    OptionField* field() const { return m_field; }
    // Binds to a field owned elsewhere; nullptr returns to the widget's own field.
    void setField(OptionField* field);

    void OpenMenu();

signals:
    void Change();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showText();

    OptionField m_own;
    QPointer<OptionField> m_field;
    QLineEdit* m_txtOption;
    QToolButton* m_cmdOption;
    QMenu* m_mnuOptions;
};
