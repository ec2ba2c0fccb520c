#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// The one way the core asks or tells the user something. The editor answers with
// dialogs; tests and the command-line tool answer with a script.
class UserPrompt
{
public:
    enum class Icon { None, Information, Question, Warning, Critical };
    enum class Answer { Yes, No, Cancel };

    virtual ~UserPrompt() = default;

    virtual void Message(const QString& text, Icon icon = Icon::None) = 0;
    virtual bool AskYesNo(const QString& text, Icon icon = Icon::Question) = 0;
    virtual Answer AskYesNoCancel(const QString& text, Icon icon = Icon::Question) = 0;
    // The entered text; an empty text when the user cancels, as an input box does.
    virtual QString InputBox(const QString& prompt, const QString& defaultText) = 0;
    // A file name, or nothing when the user cancels the dialog.
    virtual std::optional<QString> OpenFileName(const QString& title, const QString& initialName,
                                                const QString& filter) = 0;
    virtual std::optional<QString> SaveFileName(const QString& title, const QString& initialName,
                                                const QString& filter) = 0;
};

// The first panel of the main window's status bar.
class StatusLine
{
public:
    virtual ~StatusLine() = default;
    virtual void SetStatusText(const QString& text) = 0;
    // Empties the line, but only while it still says ifShowing: a notice that is no longer
    // true goes, a later message stays.
    virtual void ClearStatusText(const QString& ifShowing) = 0;
};

// The small progress window shown during long loops (reading a file, clearing).
class StatusWindow
{
public:
    virtual ~StatusWindow() = default;
    virtual void Show(const QString& caption, const QString& message) = 0;
    virtual void SetCaption(const QString& caption) = 0;
    virtual void SetMessage(const QString& message) = 0;
    virtual void SetProgress(int value, int maximum) = 0;
    virtual void Close() = 0;
};
