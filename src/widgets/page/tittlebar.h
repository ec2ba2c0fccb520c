#pragma once

#include "inputs/colors.h"

#include <QLineEdit>
#include <QPointer>
#include <QWidget>

class QLabel;
class UserPrompt;

// The title strip of a class or filter box: the caption in the colours of an active or an
// inactive window caption, edited in place. Its mouse presses go on to the box, so that a box
// is selected and dragged by its title.
//
// The colours default to references to the desktop's caption colours, resolved against the
// current palette whenever they are painted, so they follow the colour scheme.
class TittleBar final : public QWidget
{
    Q_OBJECT
public:
    explicit TittleBar(QWidget* parent = nullptr);

    QString Caption() const { return m_caption; }
    void SetCaption(const QString& caption);

    Colors::Rgb ActiveTitleBarColor() const { return m_activeBack; }
    void SetActiveTitleBarColor(Colors::Rgb color);
    Colors::Rgb ActiveTitleBarTextColor() const { return m_activeText; }
    void SetActiveTitleBarTextColor(Colors::Rgb color);
    Colors::Rgb InactiveTitleBarColor() const { return m_inactiveBack; }
    void SetInactiveTitleBarColor(Colors::Rgb color);
    Colors::Rgb InactiveTitleBarTextColor() const { return m_inactiveText; }
    void SetInactiveTitleBarTextColor(Colors::Rgb color);

    bool CaptionEditable() const { return m_captionEditable; }
    void SetCaptionEditable(bool editable) { m_captionEditable = editable; }

    void SetActive(bool active);
    bool IsActive() const { return m_active; }

    // In-place editing: Enter or leaving the field commits and raises Change once, Escape
    // cancels and raises nothing.
    void Edit();
    bool IsEditing() const { return m_edit != nullptr; }
    // Refuses a pasted caption that could not be written; without one the refusal is a dialog.
    void setPrompt(UserPrompt* prompt) { m_prompt = prompt; }
    QLineEdit* editor() const { return m_edit; }

    QSize sizeHint() const override;

signals:
    void DblClick();
    void Change();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void applyColors();
    void showCaption();
    void endEdit(bool commit);

    QLabel* m_label;            // Label2
    QPointer<QLineEdit> m_edit; // Text1, made only while editing
    QString m_caption;
    UserPrompt* m_prompt = nullptr;
    Colors::Rgb m_activeBack = Colors::ActiveCaption;
    Colors::Rgb m_activeText = Colors::CaptionText;
    Colors::Rgb m_inactiveBack = Colors::InactiveCaption;
    Colors::Rgb m_inactiveText = Colors::InactiveCaptionText;
    bool m_captionEditable = false;
    bool m_active = false;
};
