#pragma once

#include "base/userprompt.h"

#include <QList>
#include <QPair>

// A UserPrompt that answers from a script and remembers what it was asked.
// Used by the tests and by the command-line tool, where nobody sits at a dialog.
// Without a scripted answer: yes/no gives Yes, yes/no/cancel gives No, an input box
// gives "" (cancel) and a file dialog is cancelled.
class ScriptedPrompt : public UserPrompt
{
public:
    struct Entry
    {
        QString kind; // "message", "yesno", "yesnocancel", "input", "open", "save"
        QString text;
        Icon icon = Icon::None;
    };

    void Message(const QString& text, Icon icon = Icon::None) override;
    bool AskYesNo(const QString& text, Icon icon = Icon::Question) override;
    Answer AskYesNoCancel(const QString& text, Icon icon = Icon::Question) override;
    QString InputBox(const QString& prompt, const QString& defaultText) override;
    std::optional<QString> OpenFileName(const QString& title, const QString& initialName,
                                        const QString& filter) override;
    std::optional<QString> SaveFileName(const QString& title, const QString& initialName,
                                        const QString& filter) override;

    // Answers, taken in order by the questions of their kind.
    QList<bool> yesNo;
    QList<Answer> yesNoCancel;
    QStringList inputs;
    QList<std::optional<QString>> fileNames;

    QList<Entry> log;
    QStringList inputDefaults;

    QStringList messages() const; // texts of the message boxes, in order
    void clear()
    {
        log.clear();
        inputDefaults.clear();
    }
};

class RecordingStatus : public StatusLine, public StatusWindow
{
public:
    void SetStatusText(const QString& text) override { statusTexts << text; }
    void ClearStatusText(const QString& ifShowing) override
    {
        if (!statusTexts.isEmpty() && statusTexts.last() == ifShowing)
            statusTexts << QString();
    }
    void Show(const QString& caption, const QString& message) override;
    void SetCaption(const QString& caption) override { captions << caption; }
    void SetMessage(const QString& message) override { this->messages << message; }
    void SetProgress(int value, int maximum) override { progress << qMakePair(value, maximum); }
    void Close() override
    {
        ++closed;
        visible = false;
    }

    QStringList statusTexts;
    QStringList captions;
    QStringList messages;
    QList<QPair<int, int>> progress;
    int shown = 0;
    int closed = 0;
    bool visible = false;
};
